#pragma once

#include <string>
#include <vector>

namespace glimmerly::bench {

/// The times of one step over all rounds, and what is hoped of it.
class Measurements {
public:
    void add(const std::string& step, double milliseconds);
    /// `step` should take no more than `floors` times the step "floor".
    void setGoal(const std::string& step, double floors);
    [[nodiscard]] double median(const std::string& step) const;

    /// A table in the order in which the steps were first added: median, ratio to the median of "floor",
    /// goal.
    [[nodiscard]] std::string table() const;

private:
    struct Step {
        std::string name;
        std::vector<double> times;
        double goal = 0;
    };

    [[nodiscard]] Step& step(const std::string& name);

    std::vector<Step> steps_;
};

} // namespace glimmerly::bench
