#include "core/display.h"

#include "gfx/frame_buffer.h"
#include "platform/router.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <linux/netlink.h>
#include <unistd.h>

struct FrameMessage {
    nlmsghdr header;
    uint8_t frame[LCD_FRAME_BYTES];
};
static_assert(sizeof(FrameMessage) == 1040, "the driver takes messages of this size alone");

/* Whether this program's own lock has been left behind, where removing it failed. */
static bool lock_left;

static void remove_lock()
{
    lock_left = router_remove(LCD_LOCK_FILE) < 0 && errno != ENOENT;
}

static bool create_lock()
{
    /* O_EXCL: no link that somebody has planted is followed. */
    const int fd = router_open(LCD_LOCK_FILE, O_WRONLY | O_CREAT | O_EXCL);
    if (fd < 0)
        return false;
    close(fd);
    if (router_exists(LCD_LOCK_FILE))
        return true;
    /* It may be there and only not be seen, for want of memory. */
    remove_lock();
    return false;
}

static bool send_frame(int fd, const uint8_t *frame)
{
    const auto port = static_cast<uint32_t>(getpid());
    if (router_display_bind(fd, port) < 0) {
        printf("write_lcd_data: bind() error\n");
        return false;
    }
    FrameMessage *message = static_cast<FrameMessage *>(malloc(sizeof *message));
    if (!message) {
        printf("write_lcd_data: malloc error\n");
        return false;
    }
    message->header = {};
    message->header.nlmsg_len = sizeof *message;
    message->header.nlmsg_type = LCD_MSG_TYPE;
    message->header.nlmsg_pid = port;
    memcpy(message->frame, frame, LCD_FRAME_BYTES);
    router_display_send(fd, message, sizeof *message);
    free(message);
    return true;
}

int write_lcd_data(const uint8_t *frame)
{
    /* It would keep away every picture from now on. */
    if (lock_left)
        remove_lock();
    if (router_exists(LCD_LOCK_FILE)) {
        printf("write_lcd_data: write protect check failed, return\n");
        return -1;
    }
    if (!create_lock()) {
        printf("write_lcd_data: write protect failed, return\n");
        return -1;
    }
    bool sent = false;
    const int fd = router_display_socket();
    if (fd < 0 || !frame)
        printf("write_lcd_data: can not create a netlink socket\n");
    else
        sent = send_frame(fd, frame);
    if (fd >= 0)
        close(fd);
    remove_lock();
    return sent ? 0 : -1;
}

int showScreen()
{
    setReverseDisplay(0, LCD_HEIGHT - 1, LCD_HEIGHT, LCD_WIDTH);
    return write_lcd_data(screenBuffer);
}
