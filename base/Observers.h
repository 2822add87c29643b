#pragma once

#include <functional>
#include <memory>
#include <vector>

namespace glimmerly {

/// An observation under way; it ends with the last copy.
using Observation = std::shared_ptr<void>;

/// Who hears of a change. Main thread only.
class Observers {
public:
    /// `observer` runs at each announcement for as long as the observation lives, which it may itself end.
    [[nodiscard]] Observation add(std::function<void()> observer);
    /// In the order in which they came; who comes meanwhile hears the next one.
    void announce();

private:
    std::vector<std::weak_ptr<std::function<void()>>> observers_;
};

} // namespace glimmerly
