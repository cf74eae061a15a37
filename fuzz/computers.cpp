/* The files of the attached computers: the list of their speeds or amounts, and the records of the DHCP server. */
#include "status/computers.h"
#include "fuzz/fuzz.h"
#include "fuzz/router.h"
#include "gfx/text.h"
#include "lang/language.h"

#include <algorithm>
#include <cstring>
#include <span>

static constexpr int ROW_WIDTH = 118;

void fuzz(Input &in)
{
    FuzzRouter router;
    use_language(in.number(0, 1) ? LANGUAGE_TC : LANGUAGE_EN);
    const ComputerKind kind = in.number(0, 1) ? COMPUTER_USAGE : COMPUTER_SPEED;
    const std::string list = in.text();
    router.files["/tmp/lcd/network_status/speed/pcs"] = list;
    router.files["/tmp/lcd/network_status/speed/total_pc_data"] = list;
    router.files["/var/udhcpd.leases"] = in.rest();
    build_computer_rows(kind);

    const auto end = std::ranges::find(computer_rows, '\0', [](const InfoRow &row) { return *row.label; });
    require(end != std::end(computer_rows) && !*end->value && !*end->prefix, "the rows end with an empty one");
    for (const InfoRow &row : std::span(computer_rows, end)) {
        require(*row.value && strcmp(row.prefix, "  ") == 0, "a row has a figure");
        const int width = getStringWidth(1, row.label, 0) + getStringWidth(1, row.prefix, 0);
        require(width + getStringWidth(1, row.value, 0) <= ROW_WIDTH || std::string_view(row.label).starts_with("0."),
                "a name is cut to its room");
    }
}
