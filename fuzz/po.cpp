/* PO files, read with gettext's library. */
#include "tools/po_file.h"

#include "fuzz/fuzz.h"
#include "tools/problems.h"

#include <csetjmp>
#include <cstdlib>
#include <sstream>
#include <unistd.h>

/* Where a fatal fault of the file leads in place of the program's end. */
static jmp_buf fatal;
static bool reading;

/* The library keeps what it has read, and what a fatal fault cuts short is not tidied up. */
extern "C" int __lsan_is_turned_off()
{
    return 1;
}

extern "C" [[noreturn]] void __real_exit(int status);
extern "C" [[noreturn]] void __wrap_exit(int status)
{
    if (reading)
        longjmp(fatal, 1);
    __real_exit(status);
}

static void check_entries(const std::vector<PoEntry> &entries, const std::string &bytes)
{
    for (const PoEntry &entry : entries) {
        require(!entry.context.empty() || !entry.id.empty(), "an entry is not the header");
        require(!entry.place.empty(), "an entry has a place");
        require(entry.id.size() <= 4 * bytes.size(), "an entry is a part of its file");
    }
}

void fuzz(Input &in)
{
    static std::string bytes;
    static int first_free;
    bytes = in.rest();
    const MemoryFile file(bytes);
    std::ostringstream out;
    Problems problems(out);
    first_free = dup(0);
    close(first_free);
    reading = true;
    if (setjmp(fatal) == 0) {
        const std::vector<PoEntry> entries = read_po_file(file.path(), problems);
        reading = false;
        check_entries(entries, bytes);
        require(!entries.empty() || problems.failed(), "a file without texts is a fault");
    } else {
        /* The files that were being read are still open. */
        for (int fd = first_free; fd < first_free + 4; fd++)
            close(fd);
    }
    reading = false;
}
