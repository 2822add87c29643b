#include "platform/x11/X11Grabber.h"

#include "platform/memory/DisplayBitmap.h"

#include <algorithm>
#include <cerrno>
#include <new>

namespace glimmerly {

namespace {

constexpr std::string_view purpose = "Copying the display's pixels";
constexpr std::size_t stripBytes = std::size_t{512} << 10;
constexpr std::uint32_t allPlanes = ~0U;

const xcb_visualtype_t* rootVisual(const xcb_screen_t& screen) {
    for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem > 0; xcb_depth_next(&depth)) {
        for (auto visual = xcb_depth_visuals_iterator(depth.data); visual.rem > 0;
             xcb_visualtype_next(&visual)) {
            if (visual.data->visual_id == screen.root_visual)
                return visual.data;
        }
    }
    return nullptr;
}

Result<PixelFormat> rootFormat(const X11Connection& connection) {
    const xcb_setup_t* setup = xcb_get_setup(connection.get());
    const xcb_visualtype_t* visual = rootVisual(connection.screen());
    if (visual == nullptr ||
        (visual->_class != XCB_VISUAL_CLASS_TRUE_COLOR && visual->_class != XCB_VISUAL_CLASS_DIRECT_COLOR))
        return failure(Error::posix(ENOTSUP, "A display with a palette"));
    for (auto it = xcb_setup_pixmap_formats_iterator(setup); it.rem > 0; xcb_format_next(&it)) {
        if (it.data->depth == connection.screen().root_depth)
            return PixelFormat::of({.bitsPerPixel = it.data->bits_per_pixel,
                                    .byteOrder = setup->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST
                                                     ? ByteOrder::leastSignificantFirst
                                                     : ByteOrder::mostSignificantFirst,
                                    .redMask = visual->red_mask,
                                    .greenMask = visual->green_mask,
                                    .blueMask = visual->blue_mask,
                                    .rowAlignment = it.data->scanline_pad / std::size_t{8}});
    }
    return failure(Error::posix(ENOTSUP, "The display's depth"));
}

Result<Bitmap> roomFor(PixelSize size) {
    try {
        return makeDisplayBitmap(size);
    } catch (const std::bad_alloc&) {
        return failure(Error::posix(ENOMEM, purpose));
    }
}

/// Keeps every other client waiting.
class ServerGrab {
public:
    explicit ServerGrab(xcb_connection_t* x) : x_(x) { xcb_grab_server(x_); }
    ~ServerGrab() {
        xcb_ungrab_server(x_);
        xcb_flush(x_);
    }
    ServerGrab(const ServerGrab&) = delete;
    ServerGrab& operator=(const ServerGrab&) = delete;

private:
    xcb_connection_t* x_;
};

/// An area cut into strips of so many rows.
struct Strips {
    PixelRect area;
    int rows;

    [[nodiscard]] int count() const { return (area.height + rows - 1) / rows; }
    [[nodiscard]] PixelRect at(int index) const {
        const int start = index * rows;
        return {area.x, area.y + start, area.width, std::min(rows, area.height - start)};
    }
};

} // namespace

Result<Bitmap> X11Grabber::grab(PixelRect area) {
    if (area.width < 1 || area.height < 1) // monitors can be defined without any
        return failure(Error::posix(ENODATA, purpose));
    if (auto prepared = prepare(); !prepared)
        return failure(prepared.error());
    auto bitmap = roomFor(area.size());
    if (!bitmap)
        return bitmap;
    const ServerGrab oneMoment(connection_.get());
    auto copied = segment_ ? copyThroughSegment(area, *bitmap) : copyThroughSocket(area, *bitmap);
    if (!copied)
        return failure(copied.error());
    return bitmap;
}

Result<void> X11Grabber::prepare() {
    if (!format_) {
        auto format = rootFormat(connection_);
        if (!format)
            return failure(format.error());
        format_ = std::move(*format);
    }
    if (!segment_ && sharesMemory_) {
        auto segment = X11SharedSegment::create(connection_, 2 * stripBytes);
        sharesMemory_ = segment.has_value();
        if (segment)
            segment_ = std::move(*segment);
    }
    return {};
}

xcb_shm_get_image_cookie_t X11Grabber::requestStrip(PixelRect strip, std::size_t offset) const {
    return xcb_shm_get_image(connection_.get(), connection_.root(), static_cast<std::int16_t>(strip.x),
                             static_cast<std::int16_t>(strip.y), static_cast<std::uint16_t>(strip.width),
                             static_cast<std::uint16_t>(strip.height), allPlanes, XCB_IMAGE_FORMAT_Z_PIXMAP,
                             segment_->id(), static_cast<std::uint32_t>(offset));
}

Result<void> X11Grabber::copyThroughSegment(PixelRect area, Bitmap& bitmap) {
    const std::size_t rowBytes = format_->bytesPerRow(area.width);
    const Strips strips{area, static_cast<int>(std::max<std::size_t>(1, stripBytes / rowBytes))};
    const auto offset = [](int index) { return static_cast<std::size_t>(index % 2) * stripBytes; };
    auto awaited = requestStrip(strips.at(0), offset(0));
    for (int index = 0; index < strips.count(); ++index) {
        const bool isLast = index + 1 == strips.count();
        const auto next = isLast ? awaited : requestStrip(strips.at(index + 1), offset(index + 1));
        xcb_generic_error_t* problem = nullptr;
        const XcbOwned<xcb_shm_get_image_reply_t> reply(
            xcb_shm_get_image_reply(connection_.get(), awaited, &problem));
        const XcbOwned<xcb_generic_error_t> error(problem);
        if (!reply) {
            if (!isLast)
                xcb_discard_reply(connection_.get(), next.sequence);
            return failure(x11Error(error.get(), purpose));
        }
        const PixelRect strip = strips.at(index);
        const std::byte* row = segment_->bytes().data() + offset(index);
        for (int y = strip.y - area.y; y < strip.y - area.y + strip.height; ++y, row += rowBytes)
            format_->convert(row, bitmap.row(y));
        awaited = next;
    }
    return {};
}

Result<void> X11Grabber::copyThroughSocket(PixelRect area, Bitmap& bitmap) {
    const std::size_t rowBytes = format_->bytesPerRow(area.width);
    const Strips strips{area, static_cast<int>(std::max<std::size_t>(1, stripBytes / rowBytes))};
    for (int index = 0; index < strips.count(); ++index) {
        const PixelRect strip = strips.at(index);
        const auto cookie = xcb_get_image(
            connection_.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, connection_.root(),
            static_cast<std::int16_t>(strip.x), static_cast<std::int16_t>(strip.y),
            static_cast<std::uint16_t>(strip.width), static_cast<std::uint16_t>(strip.height), allPlanes);
        xcb_generic_error_t* problem = nullptr;
        const XcbOwned<xcb_get_image_reply_t> reply(xcb_get_image_reply(connection_.get(), cookie, &problem));
        const XcbOwned<xcb_generic_error_t> error(problem);
        if (!reply)
            return failure(x11Error(error.get(), purpose));
        const auto length = static_cast<std::size_t>(xcb_get_image_data_length(reply.get()));
        if (length < rowBytes * static_cast<std::size_t>(strip.height))
            return failure(Error::posix(EPROTO, purpose));
        const auto* row = reinterpret_cast<const std::byte*>(xcb_get_image_data(reply.get()));
        for (int y = strip.y - area.y; y < strip.y - area.y + strip.height; ++y, row += rowBytes)
            format_->convert(row, bitmap.row(y));
    }
    return {};
}

} // namespace glimmerly
