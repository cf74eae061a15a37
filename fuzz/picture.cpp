/* Text art: what is taken comes back from its bitmap file, pixel by pixel. */
#include "tools/picture.h"

#include "fuzz/fuzz.h"
#include "gfx/frame_buffer.h"
#include "tools/problems.h"

#include <sstream>

void fuzz(Input &in)
{
    const std::string art = in.rest();
    const MemoryFile file(art);
    std::ostringstream out;
    Problems problems(out);
    const std::optional<Picture> picture = read_text_art(file.path(), problems);
    require(picture.has_value() != problems.failed(), "a drawing is taken, or its fault is told");
    if (!picture)
        return;
    const int width = picture->width(), height = picture->height();
    require(width > 0 && width <= LCD_WIDTH && height > 0 && height <= LCD_HEIGHT, "a picture fits on the screen");
    const std::string bytes = bitmap_file(*picture);
    const size_t row_bytes = static_cast<size_t>(width + 7) / 8;
    require(bytes.size() == 4 + row_bytes * static_cast<size_t>(height), "a bitmap file has its size");
    std::string drawn;
    for (size_t row = 0; row < static_cast<size_t>(height); row++) {
        for (size_t column = 0; column < static_cast<size_t>(width); column++)
            drawn += bytes[4 + row * row_bytes + column / 8] & 0x80 >> column % 8 ? '#' : '.';
        drawn += '\n';
    }
    require(art == drawn || art + '\n' == drawn, "the picture is the drawing");
}
