#include "bench/desktop/ScreenFloor.h"

#include "bench/desktop/Stopwatch.h"

#include <xcb/shm.h>

#include <sys/ipc.h>
#include <sys/shm.h>

#include <stdexcept>

namespace glimmerly::bench {

namespace {

/// Memory that the server and this process share.
class SharedSegment {
public:
    SharedSegment(xcb_connection_t* connection, std::size_t bytes)
        : connection_(connection), memory_(shmget(IPC_PRIVATE, bytes, IPC_CREAT | 0600)) {
        if (memory_ < 0)
            throw std::runtime_error("no shared memory");
        xcb_shm_attach(connection_, segment_ = xcb_generate_id(connection_),
                       static_cast<std::uint32_t>(memory_), 0);
    }
    ~SharedSegment() {
        xcb_shm_detach(connection_, segment_);
        shmctl(memory_, IPC_RMID, nullptr);
    }
    SharedSegment(const SharedSegment&) = delete;
    SharedSegment& operator=(const SharedSegment&) = delete;

    [[nodiscard]] xcb_shm_seg_t get() const { return segment_; }

private:
    xcb_connection_t* connection_;
    int memory_;
    xcb_shm_seg_t segment_ = XCB_NONE;
};

class CoveringWindow {
public:
    explicit CoveringWindow(const XClient& client)
        : connection_(client.get()), window_(xcb_generate_id(connection_)) {
        const std::uint32_t overrideRedirect = 1;
        xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, client.root(), 0, 0,
                          static_cast<std::uint16_t>(client.size().width),
                          static_cast<std::uint16_t>(client.size().height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                          XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, &overrideRedirect);
    }
    ~CoveringWindow() { xcb_destroy_window(connection_, window_); }
    CoveringWindow(const CoveringWindow&) = delete;
    CoveringWindow& operator=(const CoveringWindow&) = delete;

    [[nodiscard]] xcb_window_t get() const { return window_; }

private:
    xcb_connection_t* connection_;
    xcb_window_t window_;
};

} // namespace

ScreenFloor measureScreenFloor(const XClient& client) {
    auto* connection = client.get();
    const auto width = static_cast<std::uint16_t>(client.size().width);
    const auto height = static_cast<std::uint16_t>(client.size().height);
    const SharedSegment segment(connection, std::size_t{4} * width * height);
    const auto grab = [&] {
        const auto cookie = xcb_shm_get_image(connection, client.root(), 0, 0, width, height, ~0U,
                                              XCB_IMAGE_FORMAT_Z_PIXMAP, segment.get(), 0);
        const Reply<xcb_shm_get_image_reply_t> done(xcb_shm_get_image_reply(connection, cookie, nullptr));
    };
    grab(); // maps the pages

    ScreenFloor floor;
    const Stopwatch watch;
    grab();
    floor.grab = watch.milliseconds();
    const CoveringWindow window(client);
    xcb_map_window(connection, window.get());
    const xcb_gcontext_t context = xcb_generate_id(connection);
    xcb_create_gc(connection, context, window.get(), 0, nullptr);
    xcb_shm_put_image(connection, window.get(), context, width, height, 0, 0, width, height, 0, 0, 24,
                      XCB_IMAGE_FORMAT_Z_PIXMAP, 0, segment.get(), 0);
    client.sync();
    floor.total = watch.milliseconds();
    xcb_free_gc(connection, context);
    return floor;
}

} // namespace glimmerly::bench
