#include "platform/desktop/DescriptorPassing.h"

#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace glimmerly {

namespace {

constexpr std::size_t mostDescriptors = 4;

/// Room for a message's descriptors, aligned as the kernel wants it.
struct alignas(cmsghdr) ControlBuffer {
    std::array<char, CMSG_SPACE(mostDescriptors * sizeof(int))> bytes{};
};

} // namespace

bool sendWithDescriptors(int socket, char message, std::span<const int> descriptors) {
    iovec content{&message, 1};
    ControlBuffer control;
    msghdr header{};
    header.msg_iov = &content;
    header.msg_iovlen = 1;
    header.msg_control = control.bytes.data();
    header.msg_controllen = CMSG_SPACE(descriptors.size_bytes());
    cmsghdr* part = CMSG_FIRSTHDR(&header);
    part->cmsg_level = SOL_SOCKET;
    part->cmsg_type = SCM_RIGHTS;
    part->cmsg_len = CMSG_LEN(descriptors.size_bytes());
    std::memcpy(CMSG_DATA(part), descriptors.data(), descriptors.size_bytes());
    return ::sendmsg(socket, &header, MSG_NOSIGNAL) == 1;
}

std::optional<PassedDescriptors> receiveWithDescriptors(int socket) {
    PassedDescriptors received;
    iovec content{&received.message, 1};
    ControlBuffer control;
    msghdr header{};
    header.msg_iov = &content;
    header.msg_iovlen = 1;
    header.msg_control = control.bytes.data();
    header.msg_controllen = control.bytes.size();
    if (::recvmsg(socket, &header, MSG_CMSG_CLOEXEC) != 1)
        return std::nullopt;
    for (cmsghdr* part = CMSG_FIRSTHDR(&header); part; part = CMSG_NXTHDR(&header, part)) {
        if (part->cmsg_level != SOL_SOCKET || part->cmsg_type != SCM_RIGHTS)
            continue;
        for (std::size_t at = 0; CMSG_LEN(at + sizeof(int)) <= part->cmsg_len; at += sizeof(int)) {
            int descriptor = -1;
            std::memcpy(&descriptor, CMSG_DATA(part) + at, sizeof descriptor);
            received.descriptors.emplace_back(descriptor);
        }
    }
    return received;
}

} // namespace glimmerly
