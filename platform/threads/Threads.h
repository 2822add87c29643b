#pragma once

#include <string>

namespace glimmerly {

/// Gives the calling thread the last dotted part of `label` as its name, and the priority of background work
/// that nobody waits for. A queue's `ThreadSetup`.
void becomeUtilityThread(const std::string& label);

/// What the log calls the calling thread: "main", "worker:" and its name, or "worker" when it has none.
[[nodiscard]] std::string threadLabel();

} // namespace glimmerly
