#pragma once

#include "bench/desktop/Stopwatch.h"
#include "tests/support/desktop/XClient.h"

#include <cstddef>
#include <optional>

namespace glimmerly::bench {

/// Another program that waits for a new picture on the clipboard and takes it, without the start of a
/// process in the time.
class ClipboardReader {
public:
    struct Times {
        double owned = 0; ///< milliseconds, until the clipboard is the program's
        double read = 0;  ///< milliseconds, until the whole image/png has arrived here
        std::size_t bytes = 0;
    };

    explicit ClipboardReader(const XClient& client);
    ~ClipboardReader();
    ClipboardReader(const ClipboardReader&) = delete;
    ClipboardReader& operator=(const ClipboardReader&) = delete;

    /// Forgets what happened on the clipboard so far.
    void arm() const;
    /// Waits for the clipboard's next owner and reads its picture; none when there is none.
    [[nodiscard]] std::optional<Times> waitForPicture(const Stopwatch& watch) const;

private:
    [[nodiscard]] std::optional<std::size_t> readPicture() const;
    /// The size of what arrived in the property, which is then deleted; `type` is set to its type.
    [[nodiscard]] std::size_t takeProperty(xcb_atom_t& type) const;
    template <typename Condition>
    [[nodiscard]] bool waitForEvent(Condition matches) const;

    const XClient& client_;
    std::uint8_t selectionEvent_;
    xcb_window_t window_;
    xcb_atom_t clipboard_;
    xcb_atom_t png_;
    xcb_atom_t property_;
};

} // namespace glimmerly::bench
