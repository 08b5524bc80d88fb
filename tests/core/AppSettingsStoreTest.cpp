#include "core/AppSettingsStore.h"

#include "base/MemoryUserDefaults.h"

#include <gtest/gtest.h>

namespace fadewell {
namespace {

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

    AppAudioSettings named = quiet; // Differs in the one field that no constructor can set.
    named.outputDeviceName = "Speakers";
    store.set(named, "com.a");
    EXPECT_EQ(defaults->writes(), 2);
    store.set(AppAudioSettings::default_(), "com.a");
    EXPECT_EQ(stored(), "nothing");
}

} // namespace
} // namespace fadewell
