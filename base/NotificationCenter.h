#pragma once

#include "base/Observers.h"

#include <map>
#include <string>
#include <string_view>

namespace glimmerly {

/// Broadcasts within the process. Main thread only; observers run inside `post`, in the order in which
/// they registered.
class NotificationCenter {
public:
    /// `observer` hears every notification of that name from any sender.
    [[nodiscard]] Observation observe(std::string_view name, std::function<void()> observer);
    void post(std::string_view name);

private:
    std::map<std::string, Observers, std::less<>> observers_;
};

} // namespace glimmerly
