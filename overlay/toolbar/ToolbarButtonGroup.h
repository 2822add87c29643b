#pragma once

#include "overlay/toolbar/ToolbarIconButton.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace glimmerly {

/// Toggle buttons of which at most one is lit, each standing for a choice.
template <typename Choice>
class ToolbarButtonGroup {
public:
    void add(ToolbarIconButton& button, Choice choice) { entries_.push_back({&button, choice}); }

    [[nodiscard]] std::optional<Choice> litChoice() const {
        const auto lit =
            std::ranges::find_if(entries_, [](const Entry& entry) { return entry.button->isOn(); });
        return lit == entries_.end() ? std::nullopt : std::optional(lit->choice);
    }

    /// Leaves the button of `choice` as the only lit one; none: all dark. The choice that is lit then, which
    /// is none too when no button stands for `choice`.
    std::optional<Choice> light(const std::optional<Choice>& choice) {
        for (const Entry& entry : entries_)
            entry.button->setOn(choice && entry.choice == *choice);
        return litChoice();
    }
    std::optional<Choice> lightFirst() { return light(entries_.front().choice); }
    /// A press: lights the button of `choice` alone, or the whole group goes dark if it was lit.
    std::optional<Choice> toggle(const Choice& choice) {
        return light(litChoice() == choice ? std::nullopt : std::optional(choice));
    }

private:
    struct Entry {
        ToolbarIconButton* button;
        Choice choice;
    };
    std::vector<Entry> entries_;
};

} // namespace glimmerly
