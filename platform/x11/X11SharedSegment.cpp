#include "platform/x11/X11SharedSegment.h"

#include <sys/ipc.h>
#include <sys/shm.h>

#include <cerrno>

namespace glimmerly {

Result<std::unique_ptr<X11SharedSegment>> X11SharedSegment::create(const X11Connection& connection,
                                                                   std::size_t size) {
    xcb_connection_t* const x = connection.get();
    const auto* extension = xcb_get_extension_data(x, &xcb_shm_id);
    if (extension == nullptr || !extension->present)
        return failure(Error::posix(ENOTSUP, "Memory shared with the X server"));
    const int key = ::shmget(IPC_PRIVATE, size, IPC_CREAT | 0600);
    if (key < 0)
        return failure(Error::posix(errno, "Making memory to share with the X server"));
    void* memory = ::shmat(key, nullptr, 0);
    if (memory == reinterpret_cast<void*>(-1)) {
        const int reason = errno;
        ::shmctl(key, IPC_RMID, nullptr);
        return failure(Error::posix(reason, "Mapping memory to share with the X server"));
    }
    std::unique_ptr<X11SharedSegment> segment(
        new X11SharedSegment(connection, {static_cast<std::byte*>(memory), size}));
    const xcb_shm_seg_t id = xcb_generate_id(x);
    const XcbOwned<xcb_generic_error_t> error(
        xcb_request_check(x, xcb_shm_attach_checked(x, id, static_cast<std::uint32_t>(key), 0)));
    ::shmctl(key, IPC_RMID, nullptr); // it stays for as long as someone has it mapped
    if (error || xcb_connection_has_error(x))
        return failure(x11Error(error.get(), "Sharing memory with the X server"));
    segment->id_ = id;
    return segment;
}

X11SharedSegment::~X11SharedSegment() {
    if (id_ != XCB_NONE) {
        xcb_shm_detach(connection_.get(), id_);
        xcb_flush(connection_.get());
    }
    ::shmdt(bytes_.data());
}

} // namespace glimmerly
