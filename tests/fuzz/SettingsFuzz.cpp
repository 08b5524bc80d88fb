// A settings file, or a record in it, as anybody may have edited it.

#include "base/MemoryUserDefaults.h"
#include "core/AppSettingsStore.h"
#include "core/CallModeSettings.h"
#include "platform/linux/SettingsFormat.h"
#include "platform/linux/identity/KnownApps.h"
#include "shortcuts/Shortcut.h"
#include "tests/fuzz/Fuzz.h"

namespace {

using namespace fadewell;
using fuzz::require;

void readFile(std::string_view text)
{
    const auto document = SettingsFormat::read(text);
    if (!document) {
        return;
    }
    require(SettingsFormat::read(SettingsFormat::write(*document)) == document,
            "what is written reads back equal");
    for (const auto& [key, entry] : *document) {
        if (const auto value = SettingsFormat::decode(entry)) {
            const auto encoded = SettingsFormat::encode(*value);
            const auto again = SettingsFormat::decode(encoded);
            require(again && SettingsFormat::encode(*again) == encoded, "a value keeps its type");
        }
    }
}

bool isFraction(double number)
{
    return number >= 0 && number <= 1;
}

void loadRecords(std::string_view text)
{
    const auto defaults = std::make_shared<MemoryUserDefaults>();
    defaults->set(AppSettingsStore::defaultKey, UserDefaults::Data{std::string(text)});
    defaults->set(CallModeSettings::defaultKey, UserDefaults::Data{std::string(text)});
    const AppSettingsStore store(defaults);
    AppSettingsStore copy(std::make_shared<MemoryUserDefaults>());
    for (const auto& [appID, settings] : store.all()) {
        require(!appID.empty() && !appID.starts_with("pid:"), "an app has an identifier");
        require(isFraction(settings.volume()), "a volume is a fraction");
        copy.set(settings, appID);
    }
    require(copy.all() == store.all(), "records can be set as they were loaded");
    const auto callMode = CallModeSettings::load(*defaults);
    require(isFraction(callMode.level()), "a level is a fraction");
    callMode.save(*defaults);
    require(CallModeSettings::load(*defaults) == callMode, "call settings are saved as loaded");
}

void readShortcut(std::string_view text)
{
    if (const auto shortcut = shortcuts::Shortcut::decoded(text)) {
        require(shortcuts::Shortcut::decoded(shortcut->encoded()) == shortcut,
                "a shortcut reads back equal");
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto text = fuzz::textOf(data, size);
    readFile(text);
    loadRecords(text);
    readShortcut(text);
    static_cast<void>(KnownApps(text).canonicalID("app"));
    return 0;
}
