#pragma once

#include "platform/x11/X11Connection.h"

#include <xcb/shm.h>

#include <cstddef>
#include <span>

namespace glimmerly {

/// Memory shared with the X server, which gets it back when either side lets go, however that ends.
class X11SharedSegment {
public:
    /// `connection` must outlive the segment. Fails where the server has no such extension or is not on this
    /// machine.
    [[nodiscard]] static Result<std::unique_ptr<X11SharedSegment>> create(const X11Connection& connection,
                                                                          std::size_t size);
    ~X11SharedSegment();
    X11SharedSegment(const X11SharedSegment&) = delete;
    X11SharedSegment& operator=(const X11SharedSegment&) = delete;

    [[nodiscard]] xcb_shm_seg_t id() const { return id_; }
    [[nodiscard]] std::span<const std::byte> bytes() const { return bytes_; }

private:
    X11SharedSegment(const X11Connection& connection, std::span<std::byte> bytes)
        : connection_(connection), bytes_(bytes) {}

    const X11Connection& connection_;
    std::span<std::byte> bytes_;
    xcb_shm_seg_t id_ = XCB_NONE;
};

} // namespace glimmerly
