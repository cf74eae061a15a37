#include "bench/bench_platform.h"

#include "platform/nvram.h"
#include "platform/router.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

static constexpr int OPEN_FLAGS = O_CLOEXEC | O_NONBLOCK;
static constexpr size_t FRAME_MESSAGE_BYTES = 1040;
static constexpr size_t READ_BYTES = 4 + 1024; // what the daemon asks of a picture file

/* The root folder, the display's socket and its address, and where calls are written down (null: nowhere). */
static int root = -1;
static int display = -1;
static sockaddr_un display_address;
static socklen_t display_address_size = sizeof display_address;
static std::vector<RouterCall> *recording;

static void record(RouterCall::Kind kind, const char *path = "", int flags = 0)
{
    if (recording)
        recording->push_back({kind, path, flags});
}

/* Binds to a name that the kernel chooses and that leaves no file. */
static int bind_anywhere(int fd)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    return bind(fd, reinterpret_cast<const sockaddr *>(&address), sizeof address.sun_family);
}

static int open_socket()
{
    return socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
}

static ssize_t send_frame(int fd, const void *message, size_t size)
{
    return sendto(fd, message, size, 0, reinterpret_cast<const sockaddr *>(&display_address), display_address_size);
}

void bench_open_root(const std::filesystem::path &dir)
{
    root = open(dir.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
    display = open_socket();
    if (root < 0 || display < 0 || bind_anywhere(display) < 0 ||
        getsockname(display, reinterpret_cast<sockaddr *>(&display_address), &display_address_size) < 0) {
        perror("the bench's router");
        exit(2);
    }
}

void bench_take_frames()
{
    char message[FRAME_MESSAGE_BYTES];
    while (recv(display, message, sizeof message, MSG_DONTWAIT) >= 0)
        continue;
}

std::vector<RouterCall> recorded_calls(const std::function<void()> &code)
{
    std::vector<RouterCall> calls;
    recording = &calls;
    code();
    recording = nullptr;
    return calls;
}

/* An OPEN, and what the daemon does with the file. */
static void use_file(const RouterCall &call)
{
    const int fd = openat(root, call.path.c_str(), call.flags | OPEN_FLAGS, 0644);
    char bytes[READ_BYTES];
    if ((call.flags & O_ACCMODE) == O_RDONLY && read(fd, bytes, sizeof bytes) < 0)
        perror(call.path.c_str());
    close(fd);
}

void make_bare_calls(const std::vector<RouterCall> &calls)
{
    static constexpr char message[FRAME_MESSAGE_BYTES] = {};
    int fd = -1;
    for (const RouterCall &call : calls) {
        switch (call.kind) {
        case RouterCall::OPEN:
            use_file(call);
            break;
        case RouterCall::EXISTS:
            faccessat(root, call.path.c_str(), F_OK, 0);
            break;
        case RouterCall::REMOVE:
            unlinkat(root, call.path.c_str(), 0);
            break;
        case RouterCall::DISPLAY_SOCKET:
            fd = open_socket();
            break;
        case RouterCall::DISPLAY_BIND:
            bind_anywhere(fd);
            break;
        case RouterCall::DISPLAY_SEND:
            send_frame(fd, message, sizeof message);
            close(fd);
            break;
        }
    }
}

int router_open(const char *path, int flags)
{
    record(RouterCall::OPEN, path + 1, flags);
    return openat(root, path + 1, flags | OPEN_FLAGS, 0644);
}

bool router_exists(const char *path)
{
    record(RouterCall::EXISTS, path + 1);
    return faccessat(root, path + 1, F_OK, 0) == 0;
}

int router_remove(const char *path)
{
    record(RouterCall::REMOVE, path + 1);
    return unlinkat(root, path + 1, 0);
}

int router_display_socket()
{
    record(RouterCall::DISPLAY_SOCKET);
    return open_socket();
}

int router_display_bind(int fd, uint32_t)
{
    record(RouterCall::DISPLAY_BIND);
    return bind_anywhere(fd);
}

ssize_t router_display_send(int fd, const void *message, size_t size)
{
    record(RouterCall::DISPLAY_SEND);
    return send_frame(fd, message, size);
}

int router_system(const char *)
{
    return 0;
}

FILE *router_popen(const char *)
{
    errno = ENOSYS;
    return nullptr;
}

int router_pclose(FILE *)
{
    return 0;
}

time_t router_time()
{
    return time(nullptr);
}

tm *router_local_time(time_t t, tm *local)
{
    return gmtime_r(&t, local);
}

int router_start_tick(const itimerval *)
{
    return 0;
}

int router_interface_socket()
{
    errno = ENOSYS;
    return -1;
}

int router_interface_query(int, unsigned long, ifreq *)
{
    errno = ENOSYS;
    return -1;
}

char *nvram_get(const char *)
{
    return nullptr;
}

char *nvram_safe_get(const char *)
{
    return strdup("");
}

int nvram_set(const char *, const char *)
{
    return 0;
}

int nvram_commit()
{
    return 0;
}
