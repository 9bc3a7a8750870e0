/* CAN interfaces of Linux; see live_can.h.
 * A socket hears what others send on its interface, not what it sends itself. */
#ifdef __linux__
#define _GNU_SOURCE
#include "live_can.h"

#include "channel.h"
#include "live.h"
#include "tornem.h"

#include <errno.h>
#include <linux/can.h>
#include <linux/can/error.h>
#include <linux/can/raw.h>
#include <net/if.h>
#include <stdio.h>
#include <string.h>
#include <sys/socket.h>
#include <unistd.h>

/* Frames that are taken from one interface before the others have their turn. */
enum { turn = 64 };

typedef struct Interface {
    char name[IF_NAMESIZE];
    int file;
    uchar channel;
} Interface;

static Interface interfaces[kit_can_limit];
static size_t opened;

static void complain(const char* name, const char* what) {
    fprintf(stderr, "%s: %s: %s\n", name, what, strerror(errno));
}

/* Opens a socket for all frames and errors of an interface; -1 when that fails. */
static int open_socket(const char* name) {
    const int yes = 1;
    const can_err_mask_t errors = CAN_ERR_MASK;
    struct sockaddr_can address;
    int file = socket(PF_CAN, SOCK_RAW | SOCK_NONBLOCK | SOCK_CLOEXEC, CAN_RAW);
    if (file < 0)
        return -1;
    memset(&address, 0, sizeof address);
    address.can_family = AF_CAN;
    address.can_ifindex = (int)if_nametoindex(name);
    /* An interface without FD frames is fine. */
    setsockopt(file, SOL_CAN_RAW, CAN_RAW_FD_FRAMES, &yes, sizeof yes);
    setsockopt(file, SOL_CAN_RAW, CAN_RAW_ERR_FILTER, &errors, sizeof errors);
    if (address.can_ifindex != 0 && bind(file, (struct sockaddr*)&address, sizeof address) == 0)
        return file;
    int reason = errno;
    close(file);
    errno = reason;
    return -1;
}

static bool open_interface(const char* name, size_t length, uchar channel) {
    Interface* interface = &interfaces[opened];
    errno = ENODEV;
    interface->file = -1;
    if (length < sizeof interface->name) {
        memcpy(interface->name, name, length);
        interface->name[length] = '\0';
        interface->file = open_socket(interface->name);
    }
    if (interface->file < 0) {
        fprintf(stderr, "%.*s: cannot open the CAN interface: %s\n", (int)length, name, strerror(errno));
        return false;
    }
    interface->channel = channel;
    ++opened;
    return true;
}

/* Opens what is called can and a number, which is its channel. */
static bool open_all(void) {
    bool done = true;
    struct if_nameindex* list = if_nameindex();
    for (struct if_nameindex* each = list; each != NULL && each->if_index != 0 && opened < kit_can_limit; ++each) {
        uchar channel = 0;
        const char* name = each->if_name;
        bool is_can = strncmp(name, "can", 3) == 0 && strspn(name + 3, "0123456789") == strlen(name + 3);
        if (is_can && kit_channel_find(name, strlen(name), &channel))
            done = open_interface(name, strlen(name), channel) && done;
    }
    if (list != NULL)
        if_freenameindex(list);
    return done;
}

bool kit_can_open(void) {
    const KitChannelName* names = NULL;
    size_t given = kit_channel_names(&names);
    for (size_t i = 0; i < given; ++i)
        if (!open_interface(names[i].name, names[i].length, names[i].channel))
            return false;
    return given > 0 || open_all();
}

size_t kit_can_files(int files[kit_can_limit]) {
    for (size_t i = 0; i < opened; ++i)
        files[i] = interfaces[i].file;
    return opened;
}

static void hand_over(const struct canfd_frame* from, bool is_fd, uchar channel) {
    DataFrame frame;
    memset(&frame, 0, sizeof frame);
    kit_live_advance();
    if ((from->can_id & CAN_ERR_FLAG) != 0) {
        /* The low byte of the error class; that the interface is back again is no error. */
        if ((from->can_id & 0xFFU) != 0)
            OnError(channel, (uchar)(from->can_id & 0xFFU));
        return;
    }
    frame.extended = (from->can_id & CAN_EFF_FLAG) != 0;
    frame.id = from->can_id & (frame.extended ? CAN_EFF_MASK : CAN_SFF_MASK);
    frame.remote = !is_fd && (from->can_id & CAN_RTR_FLAG) != 0;
    frame.fd = is_fd;
    frame.brs = is_fd && (from->flags & CANFD_BRS) != 0;
    frame.esi = is_fd && (from->flags & CANFD_ESI) != 0;
    frame.length = from->len;
    if (!frame.remote)
        memcpy(frame.data, from->data, from->len);
    OnFrame(&frame, channel);
}

bool kit_can_read(size_t file) {
    const Interface* interface = &interfaces[file];
    for (int i = 0; i < turn && !kit_live_is_over(); ++i) {
        struct canfd_frame frame;
        memset(&frame, 0, sizeof frame);
        ssize_t size = read(interface->file, &frame, sizeof frame);
        if (size < 0 && (errno == EAGAIN || errno == EINTR))
            return true;
        if (size < 0) {
            complain(interface->name, "cannot read");
            return errno == ENETDOWN; /* it may come up again */
        }
        bool is_fd = size == CANFD_MTU;
        if ((is_fd && frame.len <= CANFD_MAX_DLEN) || (size == CAN_MTU && frame.len <= CAN_MAX_DLEN))
            hand_over(&frame, is_fd, interface->channel);
    }
    return true;
}

void kit_can_send(const DataFrame* frame, int channel) {
    struct canfd_frame to;
    memset(&to, 0, sizeof to);
    to.can_id = frame->id | (frame->extended ? CAN_EFF_FLAG : 0U) | (frame->remote ? CAN_RTR_FLAG : 0U);
    to.len = frame->length;
    if (frame->fd)
        to.flags = (__u8)((frame->brs ? CANFD_BRS : 0) | (frame->esi ? CANFD_ESI : 0));
    if (!frame->remote)
        memcpy(to.data, frame->data, frame->length);
    size_t size = frame->fd ? CANFD_MTU : CAN_MTU;
    for (size_t i = 0; i < opened; ++i)
        if (interfaces[i].channel == channel && write(interfaces[i].file, &to, size) != (ssize_t)size)
            complain(interfaces[i].name, "cannot send");
}

#else
typedef int kit_live_can_is_not_there;
#endif
