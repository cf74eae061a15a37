// SPDX-License-Identifier: GPL-2.0
/*
 * An LCD driver without an LCD: it takes the panel's frames from netlink protocol 18 as the router's driver does,
 * checks them and hands each accepted message, header included, to whoever reads /dev/lcd_frames.
 *
 * A frame never makes its sender wait: when nobody reads, the oldest frame is lost.
 *
 * /sys/module/lcd_sink/parameters/present takes the driver out of the kernel and puts it back (at boot:
 * lcd_sink.present=0); "accepted" beside it counts the frames.
 */
#include <linux/init.h>
#include <linux/miscdevice.h>
#include <linux/moduleparam.h>
#include <linux/mutex.h>
#include <linux/netlink.h>
#include <linux/uaccess.h>
#include <linux/wait.h>
#include <net/net_namespace.h>

#define LCD_NETLINK_PROTOCOL 18
#define LCD_MSG_TYPE 18
#define LCD_FRAME_BYTES 1024
#define LCD_MESSAGE_BYTES (NLMSG_HDRLEN + LCD_FRAME_BYTES)
#define KEPT_FRAMES 256

static u8 frames[KEPT_FRAMES][LCD_MESSAGE_BYTES];
static unsigned int accepted, taken; /* counts; a frame lies at its count modulo KEPT_FRAMES */
module_param(accepted, uint, 0444);
static DEFINE_MUTEX(frames_lock);
static DECLARE_WAIT_QUEUE_HEAD(frame_came);

/* Called in the sender's own system call. */
static void accept_frame(struct sk_buff *skb)
{
	const struct nlmsghdr *header = nlmsg_hdr(skb);

	if (skb->len != LCD_MESSAGE_BYTES || header->nlmsg_len != LCD_MESSAGE_BYTES ||
	    header->nlmsg_type != LCD_MSG_TYPE) {
		pr_warn("lcd: refused %u bytes\n", skb->len);
		return;
	}
	/* The kernel knows the sender; the header only claims one. */
	if (header->nlmsg_pid != NETLINK_CB(skb).portid) {
		pr_warn("lcd: port id %u claims to be %u\n", NETLINK_CB(skb).portid, header->nlmsg_pid);
		return;
	}
	mutex_lock(&frames_lock);
	memcpy(frames[accepted++ % KEPT_FRAMES], skb->data, LCD_MESSAGE_BYTES);
	if (accepted - taken > KEPT_FRAMES)
		taken = accepted - KEPT_FRAMES;
	mutex_unlock(&frames_lock);
	wake_up_interruptible(&frame_came);
}

/* One message a call. */
static ssize_t read_frame(struct file *file, char __user *buffer, size_t size, loff_t *offset)
{
	ssize_t result = LCD_MESSAGE_BYTES;

	if (size < LCD_MESSAGE_BYTES)
		return -EINVAL;
	do {
		if (wait_event_interruptible(frame_came, READ_ONCE(taken) != READ_ONCE(accepted)))
			return -ERESTARTSYS;
		mutex_lock(&frames_lock);
		if (taken == accepted)
			result = 0;
		else if (copy_to_user(buffer, frames[taken % KEPT_FRAMES], LCD_MESSAGE_BYTES))
			result = -EFAULT;
		else
			taken++;
		mutex_unlock(&frames_lock);
	} while (result == 0);
	return result;
}

static const struct file_operations frames_operations = {
	.owner = THIS_MODULE,
	.read = read_frame,
	.llseek = noop_llseek,
};

static struct miscdevice frames_device = {
	.minor = MISC_DYNAMIC_MINOR,
	.name = "lcd_frames",
	.fops = &frames_operations,
};

static struct sock *driver;
static bool present = true;
static bool booted;

/* Makes the kernel have the protocol, or not. */
static int follow_present(void)
{
	struct netlink_kernel_cfg configuration = { .input = accept_frame };

	if (present && !driver) {
		driver = netlink_kernel_create(&init_net, LCD_NETLINK_PROTOCOL, &configuration);
		return driver ? 0 : -ENOMEM;
	}
	if (!present && driver) {
		netlink_kernel_release(driver);
		driver = NULL;
	}
	return 0;
}

/* The command line is read before there is any netlink. */
static int set_present(const char *value, const struct kernel_param *parameter)
{
	int result = param_set_bool(value, parameter);

	return result || !booted ? result : follow_present();
}

static const struct kernel_param_ops present_operations = {
	.set = set_present,
	.get = param_get_bool,
};
module_param_cb(present, &present_operations, &present, 0644);

static int __init lcd_init(void)
{
	int result;

	booted = true;
	result = follow_present();
	return result ? result : misc_register(&frames_device);
}
device_initcall(lcd_init);
