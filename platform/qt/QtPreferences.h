#pragma once

#include "platform/Preferences.h"

#include <QSettings>

#include <filesystem>

namespace glimmerly {

/// Where the user's preferences lie: "app.glimmerly.Glimmerly/preferences.ini" in the configuration
/// directory; none without a home directory.
[[nodiscard]] std::optional<std::filesystem::path> preferencesFile();

/// Preferences in an INI file that only its owner can read, whatever the umask; it and its directory are made
/// when missing. What cannot be written there lasts as long as this object; without a file nothing does.
class QtPreferences : public Preferences {
public:
    explicit QtPreferences(const std::optional<std::filesystem::path>& file);

    [[nodiscard]] std::optional<std::string> data(std::string_view key) const override;
    void setData(std::string_view key, std::string_view bytes) override;
    void setBool(std::string_view key, bool value) override;
    void remove(std::string_view key) override;

private:
    std::optional<QSettings> settings_;
};

} // namespace glimmerly
