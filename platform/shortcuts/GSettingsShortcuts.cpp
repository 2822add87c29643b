#include "platform/shortcuts/GSettingsShortcuts.h"

#include <gio/gio.h>

#include <memory>
#include <string>

namespace glimmerly {

namespace {

template <auto release>
struct Release {
    template <typename T>
    void operator()(T* object) const {
        release(object);
    }
};
using Schema = std::unique_ptr<GSettingsSchema, Release<g_settings_schema_unref>>;
using Settings = std::unique_ptr<GSettings, Release<g_object_unref>>;
using Variant = std::unique_ptr<GVariant, Release<g_variant_unref>>;
using Strings = std::unique_ptr<char*, Release<g_strfreev>>;

constexpr const char* gnomeSchemas[] = {
    "org.gnome.desktop.wm.keybindings",
    "org.gnome.shell.keybindings",
    "org.gnome.mutter.keybindings",
    "org.gnome.settings-daemon.plugins.media-keys",
};
constexpr const char* cinnamonSchemas[] = {
    "org.cinnamon.desktop.keybindings.wm",
    "org.cinnamon.desktop.keybindings.media-keys",
    "org.cinnamon.desktop.keybindings",
};
constexpr const char* mateSchemas[] = {
    "org.mate.Marco.global-keybindings",
    "org.mate.Marco.window-keybindings",
    "org.mate.SettingsDaemon.plugins.media-keys",
};

/// Asking for one that is not installed ends the process, so it is looked up first.
Schema installedSchema(const char* name) {
    GSettingsSchemaSource* const source = g_settings_schema_source_get_default();
    return Schema(source ? g_settings_schema_source_lookup(source, name, TRUE) : nullptr);
}

/// The settings of `schema`, at `path` where they have no place of their own; none when that does not fit.
Settings settingsOf(const Schema& schema, const char* path) {
    if (!schema || (g_settings_schema_get_path(schema.get()) == nullptr) != (path != nullptr))
        return {};
    return Settings(g_settings_new_full(schema.get(), nullptr, path));
}

/// The texts of a value that is one text or several.
std::vector<std::string> textsOf(GSettings& settings, const char* key) {
    const Variant value(g_settings_get_value(&settings, key));
    if (g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING))
        return {g_variant_get_string(value.get(), nullptr)};
    std::vector<std::string> texts;
    if (g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING_ARRAY)) {
        const Strings strings(g_variant_dup_strv(value.get(), nullptr));
        for (char** text = strings.get(); *text != nullptr; ++text)
            texts.emplace_back(*text);
    }
    return texts;
}

void addShortcuts(const char* schemaName, const char* path, std::vector<DesktopShortcut>& shortcuts) {
    const Schema schema = installedSchema(schemaName);
    const Settings settings = settingsOf(schema, path);
    if (!settings)
        return;
    const Strings keys(g_settings_schema_list_keys(schema.get()));
    for (char** key = keys.get(); *key != nullptr; ++key) {
        for (const std::string& text : textsOf(*settings, *key)) {
            if (const auto parsed = parseGtkAccelerator(text))
                shortcuts.push_back({*parsed});
        }
    }
}

/// A path that GSettings takes; it ends the process over any other.
bool isPath(const std::string& text) {
    return text.starts_with('/') && text.ends_with('/') && text.find("//") == std::string::npos;
}

void addCustomShortcuts(const CustomShortcuts& custom, std::vector<DesktopShortcut>& shortcuts) {
    const Schema schema = installedSchema(custom.listSchema);
    const Settings settings = settingsOf(schema, nullptr);
    if (!settings || !g_settings_schema_has_key(schema.get(), custom.listKey))
        return;
    for (const std::string& place : textsOf(*settings, custom.listKey)) {
        const std::string path = *custom.listPath ? custom.listPath + place + "/" : place;
        if (isPath(path))
            addShortcuts(custom.schema, path.c_str(), shortcuts);
    }
}

} // namespace

const ShortcutSchemas gnomeShortcutSchemas{
    gnomeSchemas,
    {.listSchema = "org.gnome.settings-daemon.plugins.media-keys",
     .listKey = "custom-keybindings",
     .schema = "org.gnome.settings-daemon.plugins.media-keys.custom-keybinding"}};
const ShortcutSchemas cinnamonShortcutSchemas{
    cinnamonSchemas,
    {.listSchema = "org.cinnamon.desktop.keybindings",
     .listKey = "custom-list",
     .listPath = "/org/cinnamon/desktop/keybindings/custom-keybindings/",
     .schema = "org.cinnamon.desktop.keybindings.custom-keybinding"}};
const ShortcutSchemas mateShortcutSchemas{mateSchemas, {}};

std::vector<DesktopShortcut> gsettingsShortcuts(const ShortcutSchemas& schemas) {
    std::vector<DesktopShortcut> shortcuts;
    for (const char* schema : schemas.schemas)
        addShortcuts(schema, nullptr, shortcuts);
    if (schemas.custom.listSchema)
        addCustomShortcuts(schemas.custom, shortcuts);
    return shortcuts;
}

} // namespace glimmerly
