/* Commands on their way to the shell of a workstation: only the root is added, quoted, before absolute paths. */
#include "platform/desk/command.h"

#include "fuzz/fuzz.h"

static constexpr std::string_view ROOT = "'/r'";

void fuzz(Input &in)
{
    const size_t room = static_cast<size_t>(in.number(1, 1000));
    const std::vector<char> command = exact(in.rest());
    std::vector<char> out(room, 'x');
    if (!root_command(out, "/r", command.data()))
        return;
    std::string rooted = out.data();
    const std::string original = command.data();
    require(rooted.size() < room, "the command ends");
    if (original.find(ROOT) != original.npos)
        return;
    for (size_t at = 0; (at = rooted.find(ROOT, at)) != rooted.npos;) {
        rooted.erase(at, ROOT.size());
        require(rooted.find('/', at) == rooted.find_first_not_of("\"'", at), "the root stands before an absolute path");
    }
    require(rooted == original, "the rest of the command stays");
}
