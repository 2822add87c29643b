#pragma once

#include "platform/Application.h"

#include <vector>

namespace glimmerly {

/// Counts what it is asked for; a test starts the program "again" with `reopen`.
class FakeApplication : public Application {
public:
    void setActivationPolicy(ActivationPolicy policy) override { policies.push_back(policy); }
    void activateIgnoringOtherApps() override { ++activations; }
    void terminate() override { ++terminations; }
    void onReopen(std::function<void()> handler) override { reopen = std::move(handler); }
    void openNewInstance(std::function<void(std::optional<Error>)> completion) override {
        newInstances.push_back(std::move(completion));
    }
    void openSuccessor(const std::filesystem::path& program,
                       std::function<void(std::optional<Error>)> completion) override {
        successors.push_back(program);
        newInstances.push_back(std::move(completion));
    }

    std::vector<ActivationPolicy> policies;
    int activations = 0;
    int terminations = 0;
    std::function<void()> reopen;
    std::vector<std::filesystem::path> successors;
    std::vector<std::function<void(std::optional<Error>)>> newInstances; ///< that wait for their completion
};

} // namespace glimmerly
