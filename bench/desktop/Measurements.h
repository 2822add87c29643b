#pragma once

#include <string>
#include <vector>

namespace glimmerly::bench {

/// The times of one step over all rounds, and what is hoped of it.
class Measurements {
public:
    void add(const std::string& name, double milliseconds);
    /// The step `name` should take no more than `floors` times the step "floor", and 99 of a hundred times no
    /// more than `nearlyAlways` times, if that is given.
    void setGoal(const std::string& name, double floors, double nearlyAlways = 0);
    [[nodiscard]] double median(const std::string& name) const;

    /// A table in the order in which the steps were first added: median and 99th percentile, with their
    /// ratios to the median of "floor", and goals.
    [[nodiscard]] std::string table() const;

private:
    struct Step {
        std::string name;
        std::vector<double> times;
        double goal = 0;
        double goalNearlyAlways = 0;
    };

    [[nodiscard]] Step& step(const std::string& name);

    std::vector<Step> steps_;
};

} // namespace glimmerly::bench
