#include "core/AppSettingsStore.h"

#include "base/LenientJson.h"
#include "base/MemoryUserDefaults.h"
#include "core/AppAudioSettings.h"

#include <gtest/gtest.h>

namespace fadewell {
namespace {

AppAudioSettings decoded(const std::string& text)
{
    const auto json = parseJson(text);
    const auto settings = json ? AppAudioSettings::fromJson(*json) : std::nullopt;
    return settings.value_or(AppAudioSettings(0.123, true, "unreadable", {}));
}

TEST(AppAudioSettingsTest, DecodesMemberByMember)
{
    const std::pair<const char*, AppAudioSettings> cases[] = {
        {R"({})", {}},
        {R"({"volume":2.5})", {}},
        {R"({"volume":-0.3})", {0, false, {}, {}}},
        {R"({"volume":1e999,"isMuted":true})", {1, true, {}, {}}},
        {R"({"volume":-1e999,"x\"1e999":2})", {}},
        {R"({"volume":"0.5","isMuted":1,"outputDeviceUID":7})", {}},
        {R"({"volume":null,"isMuted":null,"outputDeviceUID":null,"outputDeviceName":"S"})", {}},
        {R"({"outputDeviceUID":"","outputDeviceName":"S"})", {}},
        {R"({"outputDeviceUID":"u","outputDeviceName":9,"new":[]})", {1, false, "u", {}}},
        {R"( {"outputDeviceName":"Küche", "outputDeviceUID":"u" })", {1, false, "u", "Küche"}},
    };
    for (const auto& [text, settings] : cases) {
        EXPECT_EQ(decoded(text), settings) << text;
        EXPECT_EQ(decoded(dumpJson(settings.toJson())), settings) << text;
    }
    EXPECT_TRUE(AppAudioSettings(1, false, {}, "Speakers").isDefault());
    const AppAudioSettings exact(0.1 + 0.2, false, {}, {});
    EXPECT_EQ(dumpJson(exact.toJson()), R"({"isMuted":false,"volume":0.30000000000000004})");
}

class AppSettingsStoreTest : public testing::Test {
protected:
    AppSettingsStore loaded(const std::string& text)
    {
        defaults->set(AppSettingsStore::defaultKey, UserDefaults::Data{text});
        return AppSettingsStore(defaults);
    }

    std::string stored() const
    {
        const auto data = defaults->get<UserDefaults::Data>(AppSettingsStore::defaultKey);
        return data ? data->bytes : "nothing";
    }

    std::shared_ptr<MemoryUserDefaults> defaults = std::make_shared<MemoryUserDefaults>();
    const AppAudioSettings quiet{0.5, false, {}, {}};
};

TEST_F(AppSettingsStoreTest, DropsWhatMustNotBeRememberedAndWritesNothingBack)
{
    const std::string text = R"({"pid:4711":{"volume":0.5},"":{"volume":0.5},
        "com.unity":{"volume":1,"isMuted":false},"com.quiet":{"volume":0.5}})";
    auto store = loaded(text);
    EXPECT_EQ(store.all(), (std::map<std::string, AppAudioSettings>{{"com.quiet", quiet}}));
    EXPECT_EQ(stored(), text);
    store.set(AppAudioSettings(0.25, true, {}, {}), "com.quiet");
    EXPECT_EQ(stored(), R"({"com.quiet":{"isMuted":true,"volume":0.25}})");
}

TEST_F(AppSettingsStoreTest, KeepsAnUnreadableValueUntilTheNextSave)
{
    for (const std::string text :
         {"", "{", "[]", "{\"a\":1-2}", "\xff", R"({"com.quiet":{"volume":0.5},"com.b":7})"})
    {
        auto store = loaded(text);
        EXPECT_TRUE(store.all().empty()) << text;
        store.remove("com.quiet");
        store.set(AppAudioSettings::default_(), "com.quiet");
        EXPECT_EQ(stored(), text);
        store.set(quiet, "com.a");
        EXPECT_EQ(AppSettingsStore(defaults).all(), store.all()) << text;
    }
    loaded("unreadable").removeAll();
    EXPECT_EQ(stored(), "nothing");
}

TEST_F(AppSettingsStoreTest, WritesOnlyWhenSomethingChanged)
{
    AppSettingsStore store(defaults);
    store.set(quiet, "com.a");
    store.set(quiet, "com.a");
    store.set(quiet, "pid:12");
    store.set(quiet, "");
    store.remove("com.b");
    store.set(AppAudioSettings::default_(), "com.b");
    EXPECT_EQ(defaults->writes(), 1);
    EXPECT_EQ(store.settings("com.a"), quiet);
    EXPECT_EQ(store.settings("pid:12"), AppAudioSettings::default_());

    AppAudioSettings named; // No constructor makes this, and it isn't the default record.
    named.outputDeviceName = "Speakers";
    store.set(named, "com.a");
    EXPECT_EQ(defaults->writes(), 2);
    store.set(AppAudioSettings::default_(), "com.a");
    EXPECT_EQ(stored(), "nothing");
}

} // namespace
} // namespace fadewell
