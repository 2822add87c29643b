#include "bench/desktop/Measurements.h"

#include <fmt/format.h>

#include <algorithm>

namespace glimmerly::bench {

namespace {

/// That which `share` of `times` are no longer than.
double percentile(std::vector<double> times, double share) {
    if (times.empty())
        return 0;
    const auto index = static_cast<std::ptrdiff_t>(share * static_cast<double>(times.size()));
    const auto place = times.begin() + std::min(index, std::ssize(times) - 1);
    std::ranges::nth_element(times, place);
    return *place;
}

std::string verdict(double floors, double goal) {
    return goal > 0 ? fmt::format("{:g} floors: {}", goal, floors <= goal ? "met" : "MISSED") : std::string();
}

} // namespace

void Measurements::add(const std::string& name, double milliseconds) {
    step(name).times.push_back(milliseconds);
}

void Measurements::setGoal(const std::string& name, double floors, double nearlyAlways) {
    step(name).goal = floors;
    step(name).goalNearlyAlways = nearlyAlways;
}

double Measurements::median(const std::string& name) const {
    const auto found = std::ranges::find(steps_, name, &Step::name);
    return found == steps_.end() ? 0 : percentile(found->times, 0.5);
}

std::string Measurements::table() const {
    const double floor = median("floor");
    const auto inFloors = [floor](double time) { return floor > 0 ? time / floor : 0; };
    std::string text = fmt::format("  {:<52} {:>9} {:>7}  {:<17}  {:>8} {:>7}  {}\n", "", "median ms",
                                   "floors", "goal", "99 % ms", "floors", "goal");
    for (const auto& step : steps_) {
        const double time = percentile(step.times, 0.5);
        const double longest = percentile(step.times, 0.99);
        text += fmt::format("  {:<52} {:>9.2f} {:>7.2f}  {:<17}  {:>8.2f} {:>7.2f}  {}\n", step.name, time,
                            inFloors(time), verdict(inFloors(time), step.goal), longest, inFloors(longest),
                            verdict(inFloors(longest), step.goalNearlyAlways));
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
