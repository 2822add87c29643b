#pragma once

#include "platform/Preferences.h"

#include <functional>
#include <map>
#include <string>

namespace glimmerly {

/// Preferences in memory.
class FakePreferences : public Preferences {
public:
    [[nodiscard]] std::optional<std::string> data(std::string_view key) const override {
        const auto found = entries.find(key);
        return found == entries.end() ? std::nullopt : std::optional(found->second);
    }
    void setData(std::string_view key, std::string_view bytes) override {
        entries.insert_or_assign(std::string(key), std::string(bytes));
        ++writes;
    }
    void setBool(std::string_view key, bool value) override { setData(key, value ? "true" : "false"); }
    void remove(std::string_view key) override {
        entries.erase(std::string(key));
        ++writes;
    }

    std::map<std::string, std::string, std::less<>> entries;
    int writes = 0; ///< calls that change an entry
};

} // namespace glimmerly
