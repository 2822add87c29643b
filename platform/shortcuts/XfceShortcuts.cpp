#include "platform/shortcuts/XfceShortcuts.h"

#include "platform/shortcuts/XmlElements.h"

#include <map>

namespace glimmerly {

namespace {

const std::string customSet = "custom";
const std::string overrideProperty = "override";

/// Who acts on shortcuts ("commands", "xfwm4"), and which of its sets ("default", "custom").
struct ShortcutSet {
    std::string provider;
    std::string name;

    auto operator<=>(const ShortcutSet&) const = default;
};

/// What each property of a set is: its action, empty for none.
using Properties = std::map<std::string, std::string>;

void readChannel(const std::string& xml, std::map<ShortcutSet, Properties>& sets) {
    std::vector<std::string> path; // of the properties around, in the channel
    readXmlElements(
        xml,
        [&](const XmlElement& element) {
            if (element.name != "property")
                return;
            path.push_back(element.attribute("name"));
            if (path.size() == 3)
                sets[{path[0], path[1]}].insert_or_assign(path[2], element.attribute("value"));
        },
        [&](const std::string& name) {
            if (name == "property" && !path.empty())
                path.pop_back();
        });
}

} // namespace

std::vector<DesktopShortcut> xfceShortcuts(std::span<const std::string> channels) {
    std::map<ShortcutSet, Properties> sets;
    for (const std::string& channel : channels)
        readChannel(channel, sets);
    std::vector<DesktopShortcut> shortcuts;
    for (const auto& [set, properties] : sets) {
        const auto custom = sets.find({set.provider, customSet});
        const bool hasCustom = custom != sets.end() && custom->second.contains(overrideProperty);
        const bool isInUse = hasCustom == (set.name == customSet);
        for (const auto& [name, action] : properties) {
            if (const auto keys = name == overrideProperty ? std::nullopt : parseGtkAccelerator(name))
                shortcuts.push_back({*keys, isInUse && !action.empty()});
        }
    }
    return shortcuts;
}

} // namespace glimmerly
