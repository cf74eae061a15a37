#include "status/computers.h"

#include "core/file.h"
#include "core/number.h"
#include "gfx/format.h"
#include "gfx/glyph.h"
#include "gfx/text.h"
#include "lang/language.h"
#include "lang/text_id.h"
#include "status/traffic.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

static constexpr const char *LEASE_FILE = "/var/udhcpd.leases";
static constexpr int ROW_WIDTH = 118; // pixels for name and figure together
static constexpr const char *PREFIX = "  ";
static constexpr const char *CUT_MARK = "...";

/* A record of the DHCP server, in network byte order. */
struct Lease {
    uint8_t hardware_address[16];
    uint8_t address[4];
    uint8_t unused[4];
    char host_name[40]; // ends with a NUL unless it fills the field
};
static_assert(sizeof(Lease) == 64);

struct ComputerSource {
    const char *file;
    void (*format)(std::span<char> out, const char *field);
};

InfoRow computer_rows[MAX_COMPUTERS + 1];

char *lookup_lease_name(int host, char *buffer, size_t size)
{
    if (host < 1 || host > 254 || !buffer || size == 0)
        return nullptr;
    const File file(LEASE_FILE);
    if (!file)
        return nullptr;
    std::array<Lease, 32> leases;
    /* Behind a short read there may be the rest of a record that is just being written. */
    for (size_t count = leases.size(); count == leases.size();) {
        count = file.read_once(leases.data(), sizeof leases) / sizeof(Lease);
        const auto end = leases.begin() + count;
        const auto lease = std::find_if(leases.begin(), end, [host](const Lease &l) { return l.address[3] == host; });
        if (lease == end)
            continue;
        const size_t length = std::min(strnlen(lease->host_name, sizeof lease->host_name), size - 1);
        memcpy(buffer, lease->host_name, length);
        buffer[length] = '\0';
        return buffer;
    }
    return nullptr;
}

bool is_plain_ascii(const char *name)
{
    return *name && std::all_of(name, name + strlen(name), [](char c) { return (c & 0x80) == 0; });
}

static void format_speed_field(std::span<char> out, const char *field)
{
    format_speed(out, static_cast<uint32_t>(std::max(parse_int(field), 0)));
}

/* Indexed by ComputerKind. */
static const ComputerSource sources[] = {
    {"/tmp/lcd/network_status/speed/pcs", format_speed_field},
    {"/tmp/lcd/network_status/speed/total_pc_data", format_amount},
};

/* Cuts `name` so that it fits in `width` pixels with the mark of a cut behind it. */
static void cut_name(std::span<char> label, const char *name, int width)
{
    const int room = width - getStringWidth(FONT_TEXT, CUT_MARK, 0);
    format_text(label, "%.*s%s", countFittingCharacters(FONT_TEXT, name, room), name, CUT_MARK);
}

static void write_label(InfoRow &row, int host)
{
    int width = ROW_WIDTH - getStringWidth(FONT_TEXT, row.value, 0);
    width -= getStringWidth(FONT_TEXT, row.prefix, 0);
    char name[sizeof Lease::host_name + 1];
    if (!lookup_lease_name(host, name, sizeof name) || !is_plain_ascii(name))
        format_text(row.label, "%s.%d", ml_str(TEXT_COMPUTER), host);
    else if (getStringWidth(FONT_TEXT, name, 0) <= width)
        format_text(row.label, "%s", name);
    else
        cut_name(row.label, name, width);
}

void build_computer_rows(ComputerKind kind)
{
    const ComputerSource &source = sources[kind];
    int count = 0;
    LineReader lines(source.file);
    char line[100];
    while (count < MAX_COMPUTERS && lines.next(line)) {
        const int host = parse_int(line);
        if (host < 1)
            continue;
        const char *blank = strchr(line, ' ');
        InfoRow &row = computer_rows[count++];
        source.format(std::span(row.value), blank ? blank + 1 : "");
        format_text(row.prefix, "%s", PREFIX);
        write_label(row, host);
    }
    computer_rows[count] = {};
}
