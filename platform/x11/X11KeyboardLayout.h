#pragma once

#include "platform/KeyboardLayout.h"
#include "platform/x11/X11EventSource.h"
#include "platform/x11/X11KeyboardExtension.h"
#include "platform/x11/X11KeyboardSymbols.h"

namespace glimmerly {

/// The layout of the X server's keyboard, read when it is first asked for and again after it has changed.
class X11KeyboardLayout : public KeyboardLayout {
public:
    [[nodiscard]] static Result<std::unique_ptr<X11KeyboardLayout>> open();

    [[nodiscard]] std::optional<std::string> translate(std::int64_t keyCode) const override;
    [[nodiscard]] std::optional<std::string> translateShifted(std::int64_t keyCode) const override;
    [[nodiscard]] Observation observe(std::function<void()> observer) override;

private:
    X11KeyboardLayout(std::unique_ptr<X11Connection> connection, XkbContext context,
                      X11KeyboardExtension extension);
    [[nodiscard]] std::optional<std::string> textOn(std::int64_t keyCode, KeyLevel level) const;
    [[nodiscard]] X11KeyboardSymbols readSymbols() const;
    void handle(const xcb_generic_event_t& event);
    void announce();

    std::unique_ptr<X11Connection> connection_;
    XkbContext context_;
    X11KeyboardExtension extension_;
    X11EventSource events_;
    mutable std::optional<X11KeyboardSymbols> symbols_;
    Observers observers_;
    enum class Announcement { none, queued } announcement_ = Announcement::none;
    QObject announcer_; ///< drops a queued announcement when it goes
};

} // namespace glimmerly
