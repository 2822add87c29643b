#include "tests/bench/desktop/Measurements.h"

#include <fmt/format.h>

#include <algorithm>

namespace glimmerly::bench {

namespace {

double medianOf(std::vector<double> times) {
    if (times.empty())
        return 0;
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::ranges::nth_element(times, middle);
    return *middle;
}

} // namespace

void Measurements::add(const std::string& name, double milliseconds) {
    step(name).times.push_back(milliseconds);
}

void Measurements::setGoal(const std::string& name, double floors) {
    step(name).goal = floors;
}

double Measurements::median(const std::string& name) const {
    const auto found = std::ranges::find(steps_, name, &Step::name);
    return found == steps_.end() ? 0 : medianOf(found->times);
}

std::string Measurements::table() const {
    const double floor = median("floor");
    std::string text = fmt::format("  {:<52} {:>9} {:>8}  {}\n", "", "median ms", "floors", "goal");
    for (const auto& step : steps_) {
        const double time = medianOf(step.times);
        const double floors = floor > 0 ? time / floor : 0;
        std::string goal;
        if (step.goal > 0)
            goal = fmt::format("{:g} floors: {}", step.goal, floors <= step.goal ? "met" : "MISSED");
        text += fmt::format("  {:<52} {:>9.1f} {:>8.1f}  {}\n", step.name, time, floors, goal);
    }
    return text;
}

Measurements::Step& Measurements::step(const std::string& name) {
    const auto found = std::ranges::find(steps_, name, &Step::name);
    if (found != steps_.end())
        return *found;
    return steps_.emplace_back(Step{.name = name, .times = {}});
}

} // namespace glimmerly::bench
