#include "sim/control.h"

#include "sim/local_socket.h"
#include "sim/router_files.h"

#include <sys/socket.h>
#include <utility>

namespace sim {

/* Takes the first word off `text`. */
static std::string take_word(std::string &text)
{
    std::string word = text.substr(0, text.find(' '));
    text.erase(0, word.size() + 1);
    return word;
}

Telling parse_telling(const std::string &message)
{
    Telling telling;
    telling.text = message;
    telling.kind = take_word(telling.text);
    const bool is_command = telling.kind == "runs" || telling.kind == "captures" || telling.kind == "output";
    telling.name = is_command ? std::exchange(telling.text, "") : take_word(telling.text);
    return telling;
}

bool tell_simulator(const std::filesystem::path &root, const std::string &message)
{
    const Fd simulator = connect_socket(root, CONTROL_SOCKET);
    return simulator && send(simulator.get(), message.data(), message.size(), 0) >= 0;
}

bool simulator_runs(const std::filesystem::path &root)
{
    return static_cast<bool>(connect_socket(root, CONTROL_SOCKET));
}

} // namespace sim
