#include "tests/netlink/private_root.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <sched.h>
#include <stdexcept>
#include <sys/mount.h>
#include <system_error>
#include <unistd.h>

namespace fs = std::filesystem;

static void mount_or_throw(const char *source, const fs::path &target, const char *type, unsigned long flags)
{
    if (mount(source, target.c_str(), type, flags, nullptr) < 0)
        throw std::system_error(errno, std::generic_category(), "mount " + target.string());
}

/* Makes the user root of the new namespace, where there is one. */
static void become_root(uid_t user, gid_t group)
{
    std::ofstream("/proc/self/setgroups") << "deny";
    std::ofstream("/proc/self/uid_map") << "0 " << user << " 1";
    std::ofstream("/proc/self/gid_map") << "0 " << group << " 1";
}

std::string enter_namespaces()
{
    const uid_t user = geteuid();
    const gid_t group = getegid();
    if (unshare(CLONE_NEWNS | CLONE_NEWNET | (user == 0 ? 0 : CLONE_NEWUSER)) < 0)
        return std::string("no namespaces: ") + strerror(errno);
    if (user != 0)
        become_root(user, group);
    if (mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) < 0)
        return std::string("no private mounts: ") + strerror(errno);
    return "";
}

PrivateRoot::PrivateRoot()
{
    char name[] = "/tmp/panel-netlink-XXXXXX";
    top_ = mkdtemp(name);
    mount_or_throw("none", top_, "tmpfs", 0);
    for (const char *folder : {"run/panel", "sbin", "tmp/lcd/network_status", "var"})
        fs::create_directories(top_ / folder);
    for (const char *folder : {"bin", "lib", "lib64"})
        fs::create_directory_symlink(fs::path("usr") / folder, top_ / folder);
    for (const char *folder : {"/usr", "/dev", "/proc"})
        bind(folder, folder);
}

PrivateRoot::~PrivateRoot()
{
    umount2(top_.c_str(), MNT_DETACH);
    std::error_code ignored;
    fs::remove(top_, ignored);
}

void PrivateRoot::bind(const std::string &folder, const std::string &router_path) const
{
    fs::create_directories(path(router_path));
    mount_or_throw(folder.c_str(), path(router_path), nullptr, MS_BIND | MS_REC);
}

void PrivateRoot::mount_memory(const std::string &router_path) const
{
    mount_or_throw("none", path(router_path), "tmpfs", 0);
}
