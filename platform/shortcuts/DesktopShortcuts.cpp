#include "platform/shortcuts/DesktopShortcuts.h"

#include "platform/files/Directories.h"
#include "platform/files/ReadFile.h"
#include "platform/shortcuts/GSettingsShortcuts.h"
#include "platform/shortcuts/KdeShortcuts.h"
#include "platform/shortcuts/OpenboxShortcuts.h"
#include "platform/shortcuts/XfceShortcuts.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <ranges>
#include <set>
#include <sstream>

namespace glimmerly {

namespace {

constexpr std::size_t largestFile = 1 << 20;
constexpr auto xfceChannel = "xfce4/xfconf/xfce-perchannel-xml/xfce4-keyboard-shortcuts.xml";

enum class ShortcutSource { gnome, cinnamon, mate, kde, xfce, openbox };

struct KnownName {
    std::string_view name; ///< of a desktop or of its window manager
    ShortcutSource source;
};
constexpr KnownName knownNames[] = {
    {"GNOME", ShortcutSource::gnome},
    {"GNOME-Flashback", ShortcutSource::gnome},
    {"Unity", ShortcutSource::gnome},
    {"Budgie", ShortcutSource::gnome},
    {"GNOME Shell", ShortcutSource::gnome},
    {"Mutter", ShortcutSource::gnome},
    {"Metacity", ShortcutSource::gnome},
    {"X-Cinnamon", ShortcutSource::cinnamon},
    {"Cinnamon", ShortcutSource::cinnamon},
    {"Mutter (Muffin)", ShortcutSource::cinnamon},
    {"MATE", ShortcutSource::mate},
    {"Marco", ShortcutSource::mate},
    {"Metacity (Marco)", ShortcutSource::mate},
    {"KDE", ShortcutSource::kde},
    {"KWin", ShortcutSource::kde},
    {"XFCE", ShortcutSource::xfce},
    {"Xfwm4", ShortcutSource::xfce},
    {"Openbox", ShortcutSource::openbox},
};

/// Where shortcuts are set on the desktop that runs.
std::set<ShortcutSource> sourcesOf(const std::string& windowManager) {
    const char* const set = std::getenv("XDG_CURRENT_DESKTOP");
    std::istringstream desktops(set ? set : "");
    std::vector names{windowManager};
    for (std::string name; std::getline(desktops, name, ':');)
        names.push_back(name);
    std::set<ShortcutSource> sources;
    for (const auto& known : knownNames) {
        if (std::ranges::count(names, known.name) > 0)
            sources.insert(known.source);
    }
    return sources;
}

/// The content of each file of that name on the search path, the most important first.
std::vector<std::string> configurationFiles(const std::filesystem::path& name) {
    std::vector<std::string> contents;
    for (const auto& directory : configurationSearchPath()) {
        if (auto content = readForeignFile(directory / name, largestFile))
            contents.push_back(std::move(*content));
    }
    return contents;
}

std::vector<DesktopShortcut> readOpenbox(const std::string& configurationFile) {
    if (!configurationFile.empty())
        return openboxShortcuts(readForeignFile(configurationFile, largestFile).value_or(""));
    const auto files = configurationFiles("openbox/rc.xml");
    return files.empty() ? std::vector<DesktopShortcut>{} : openboxShortcuts(files.front());
}

std::vector<DesktopShortcut> readKde() {
    const auto files = configurationFiles("kglobalshortcutsrc");
    return files.empty() ? std::vector<DesktopShortcut>{} : kdeShortcuts(files.front());
}

std::vector<DesktopShortcut> readXfce() {
    auto channels = configurationFiles(xfceChannel);
    std::ranges::reverse(channels);
    return xfceShortcuts(channels);
}

std::vector<DesktopShortcut> read(ShortcutSource source, const RunningWindowManager& windowManager) {
    switch (source) {
    case ShortcutSource::gnome:
        return gsettingsShortcuts(gnomeShortcutSchemas);
    case ShortcutSource::cinnamon:
        return gsettingsShortcuts(cinnamonShortcutSchemas);
    case ShortcutSource::mate:
        return gsettingsShortcuts(mateShortcutSchemas);
    case ShortcutSource::kde:
        return readKde();
    case ShortcutSource::xfce:
        return readXfce();
    case ShortcutSource::openbox:
        return readOpenbox(windowManager.configurationFile);
    }
    return {};
}

} // namespace

DesktopShortcuts::DesktopShortcuts(const KeyboardLayout& layout,
                                   std::function<RunningWindowManager()> windowManager)
    : layout_(layout), windowManager_(std::move(windowManager)) {}

std::vector<SymbolicHotKey> DesktopShortcuts::copySymbolicHotKeys() const {
    const RunningWindowManager windowManager = windowManager_();
    std::vector<SymbolicHotKey> hotKeys;
    for (const ShortcutSource source : sourcesOf(windowManager.name)) {
        for (const DesktopShortcut& shortcut : read(source, windowManager))
            std::ranges::copy(symbolicHotKeysOf(shortcut, layout_), std::back_inserter(hotKeys));
    }
    return hotKeys;
}

} // namespace glimmerly
