/* Files of worlds. */
#include "sim/world.h"

#include "fuzz/fuzz.h"

#include <set>
#include <stdexcept>

void fuzz(Input &in)
{
    const std::string bytes = in.rest();
    const MemoryFile file(bytes);
    try {
        std::set<std::string> ids;
        for (const sim::WorldLine &line : sim::read_world(file.path())) {
            const auto input = sim::find_input(line.id);
            require(input && sim::fault_of(*input, line.value).empty(), "what is taken has no fault");
            require(ids.insert(line.id).second, "an input has one value");
        }
    } catch (const std::runtime_error &error) {
        require(std::string_view(error.what()).starts_with(file.path() + ":"), "a fault has its place");
    }
}
