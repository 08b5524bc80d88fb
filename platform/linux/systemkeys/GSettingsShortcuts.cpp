#include "platform/linux/systemkeys/GSettingsShortcuts.h"

#include "platform/linux/systemkeys/GtkAccelerator.h"

#include <algorithm>
#include <array>
#include <gio/gio.h>
#include <memory>
#include <string_view>

namespace fadewell::GSettingsShortcuts {
namespace {

template <auto release>
struct Release {
    void operator()(auto* object) const { release(object); }
};
using Schema = std::unique_ptr<GSettingsSchema, Release<g_settings_schema_unref>>;
using Settings = std::unique_ptr<GSettings, Release<g_object_unref>>;
using Value = std::unique_ptr<GVariant, Release<g_variant_unref>>;
using Strings = std::unique_ptr<gchar*, Release<g_strfreev>>;

/// Commands that the user has bound, each with a place of its own.
struct Custom {
    const char* schema;
    const char* listKey; ///< the names or paths of the places
    const char* itemSchema;
    const char* itemKey;
    const char* folder; ///< of what is listed by its name
};

constexpr auto gnome = std::to_array<const char*>({"org.gnome.desktop.wm.keybindings",
                                                   "org.gnome.mutter.keybindings",
                                                   "org.gnome.mutter.wayland.keybindings",
                                                   "org.gnome.shell.keybindings",
                                                   "org.gnome.settings-daemon.plugins.media-keys"});
constexpr Custom gnomeCustom{"org.gnome.settings-daemon.plugins.media-keys",
                             "custom-keybindings",
                             "org.gnome.settings-daemon.plugins.media-keys.custom-keybinding",
                             "binding",
                             ""};
constexpr auto cinnamon =
    std::to_array<const char*>({"org.cinnamon.desktop.keybindings",
                                "org.cinnamon.desktop.keybindings.wm",
                                "org.cinnamon.desktop.keybindings.media-keys"});
constexpr Custom cinnamonCustom{"org.cinnamon.desktop.keybindings",
                                "custom-list",
                                "org.cinnamon.desktop.keybindings.custom-keybinding",
                                "binding",
                                "/org/cinnamon/desktop/keybindings/custom-keybindings/"};
constexpr auto mate = std::to_array<const char*>({"org.mate.Marco.global-keybindings",
                                                  "org.mate.Marco.window-keybindings",
                                                  "org.mate.SettingsDaemon.plugins.media-keys"});

Schema schemaNamed(const char* id)
{
    auto* source = g_settings_schema_source_get_default();
    return Schema(source ? g_settings_schema_source_lookup(source, id, TRUE) : nullptr);
}

/// A text, or each of a list of texts; none for any other value.
std::vector<std::string> textsOf(GSettings* settings, const char* key)
{
    const Value value(g_settings_get_value(settings, key));
    if (g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING)) {
        return {g_variant_get_string(value.get(), nullptr)};
    }
    std::vector<std::string> texts;
    if (g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING_ARRAY)) {
        for (gsize index = 0; index < g_variant_n_children(value.get()); ++index) {
            const Value text(g_variant_get_child_value(value.get(), index));
            texts.emplace_back(g_variant_get_string(text.get(), nullptr));
        }
    }
    return texts;
}

void add(const std::vector<std::string>& texts, std::vector<KeyBinding>& bindings)
{
    for (const auto& text : texts) {
        if (const auto binding = parseGtkAccelerator(text)) {
            bindings.push_back(*binding);
        }
    }
}

void readSchema(const char* id, std::vector<KeyBinding>& bindings)
{
    const auto schema = schemaNamed(id);
    if (!schema || !g_settings_schema_get_path(schema.get())) {
        return;
    }
    const Settings settings(g_settings_new_full(schema.get(), nullptr, nullptr));
    const Strings keys(g_settings_schema_list_keys(schema.get()));
    for (auto* const* key = keys.get(); *key != nullptr; ++key) {
        add(textsOf(settings.get(), *key), bindings);
    }
}

/// The library ends the program at any other.
bool isPath(std::string_view text)
{
    return text.starts_with('/') && text.ends_with('/') &&
           text.find("//") == std::string_view::npos;
}

void readCustom(const Custom& custom, std::vector<KeyBinding>& bindings)
{
    const auto schema = schemaNamed(custom.schema);
    const auto itemSchema = schemaNamed(custom.itemSchema);
    if (!schema || !itemSchema || !g_settings_schema_get_path(schema.get()) ||
        g_settings_schema_get_path(itemSchema.get()) ||
        !g_settings_schema_has_key(schema.get(), custom.listKey) ||
        !g_settings_schema_has_key(itemSchema.get(), custom.itemKey))
    {
        return;
    }
    const Settings settings(g_settings_new_full(schema.get(), nullptr, nullptr));
    for (const auto& listed : textsOf(settings.get(), custom.listKey)) {
        const auto path = listed.starts_with('/') ? listed : custom.folder + listed + '/';
        if (isPath(path)) {
            const Settings item(g_settings_new_full(itemSchema.get(), nullptr, path.c_str()));
            add(textsOf(item.get(), custom.itemKey), bindings);
        }
    }
}

} // namespace

std::vector<KeyBinding> read(const std::string& desktop)
{
    std::vector<KeyBinding> bindings;
    const auto readAll = [&bindings](const auto& schemas) {
        for (const char* schema : schemas) {
            readSchema(schema, bindings);
        }
    };
    constexpr std::array<std::string_view, 4> gnomes{"GNOME", "Unity", "Budgie", "Pantheon"};
    if (std::find(gnomes.begin(), gnomes.end(), desktop) != gnomes.end()) {
        readAll(gnome);
        readCustom(gnomeCustom, bindings);
    } else if (desktop == "X-Cinnamon" || desktop == "Cinnamon") {
        readAll(cinnamon);
        readCustom(cinnamonCustom, bindings);
    } else if (desktop == "MATE") {
        readAll(mate);
    }
    return bindings;
}

} // namespace fadewell::GSettingsShortcuts
