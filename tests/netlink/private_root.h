/* A machine of the test's own: mount and network namespaces, and in them a root folder where the daemon's real paths
 * lie. Nothing of it is seen outside, and it goes with the process. */
#pragma once

#include <filesystem>
#include <string>

/* Moves this process into namespaces of its own. The reason when that is not allowed, else "". */
std::string enter_namespaces();

class PrivateRoot
{
public:
    /* An empty router: /usr, /dev and /proc are this machine's, /sbin and /var are empty, /tmp has its two folders. */
    PrivateRoot();
    ~PrivateRoot();
    PrivateRoot(const PrivateRoot &) = delete;
    PrivateRoot &operator=(const PrivateRoot &) = delete;

    /* Shows a folder of this machine at a router path. */
    void bind(const std::string &folder, const std::string &router_path) const;
    /* Puts a fresh memory disk at a router path. */
    void mount_memory(const std::string &router_path) const;

    /* Where a router path lies for this process. */
    std::filesystem::path path(const std::string &router_path) const { return top_ / router_path.substr(1); }

private:
    std::filesystem::path top_;
};
