/* Whether the pages of a pack read well on the panel. */
#pragma once

#include "tools/language_pack.h"

class TrialPanel;

/* Reports each text with words that no page shows; a row that begins with punctuation or stands alone on its page is a
 * warning. */
void check_pages(const PackTexts &texts, const TrialPanel &panel, Problems &problems);
