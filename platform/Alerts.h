#pragma once

#include <cstddef>
#include <stop_token>
#include <string>
#include <vector>

namespace glimmerly {

enum class AlertStyle { warning, informational, critical };

struct Alert {
    AlertStyle style = AlertStyle::warning;
    std::string messageText;     ///< UTF-8
    std::string informativeText; ///< UTF-8
    std::vector<std::string> buttons;
    std::size_t preferredButton = 0; ///< the index of the one that Return chooses
    std::stop_token stop{};          ///< a request takes the alert down, as its last button does
};

/// What calls for the user's attention.
class Alerts {
public:
    virtual ~Alerts() = default;

    /// Shows `alert` and returns the index of the chosen button once it is dismissed; the main loop goes on
    /// meanwhile.
    virtual int runModal(const Alert& alert) = 0;
    /// The desktop's alert sound: what was just done is not possible.
    virtual void beep() = 0;
};

} // namespace glimmerly
