#include "core/AppSettingsStore.h"

#include "base/MemoryUserDefaults.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace fadewell {
namespace {

class AppSettingsStoreTest : public testing::Test {
protected:
    // The store as it is after loading this text.
    AppSettingsStore loaded(const std::string& text)
    {
        defaults->set(AppSettingsStore::defaultKey, UserDefaults::Data{text});
        return AppSettingsStore(defaults);
    }

    std::optional<std::string> stored() const
    {
        const auto data = defaults->get<UserDefaults::Data>(AppSettingsStore::defaultKey);
        return data ? std::optional(data->bytes) : std::nullopt;
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
         {"", "{", "[]", "3", "{\"a\":1-2}", "\xff", R"({"com.quiet":{"volume":0.5},"com.b":7})"})
    {
        auto store = loaded(text);
        EXPECT_TRUE(store.all().empty()) << text;
        store.remove("com.quiet");
        store.set(AppAudioSettings::default_(), "com.quiet");
        EXPECT_EQ(stored(), text);
        store.set(quiet, "com.a");
        EXPECT_EQ(AppSettingsStore(defaults).all(), store.all()) << text;
    }
}

TEST_F(AppSettingsStoreTest, IgnoresAValueOfAnotherType)
{
    defaults->set(AppSettingsStore::defaultKey, std::string(R"({"com.quiet":{"volume":0.5}})"));
    EXPECT_TRUE(AppSettingsStore(defaults).all().empty());
}

TEST_F(AppSettingsStoreTest, WritesOnlyWhenSomethingChanged)
{
    AppSettingsStore store(defaults);
    store.set(quiet, "com.a");
    const int writes = defaults->writes();
    store.set(quiet, "com.a");
    store.set(quiet, "pid:12");
    store.set(quiet, "");
    store.remove("com.b");
    store.set(AppAudioSettings::default_(), "com.b");
    EXPECT_EQ(defaults->writes(), writes);
    EXPECT_EQ(store.settings("com.a"), quiet);
    EXPECT_EQ(store.settings("pid:12"), AppAudioSettings::default_());

    AppAudioSettings named = quiet; // Differs in the one field that no constructor can set.
    named.outputDeviceName = "Speakers";
    store.set(named, "com.a");
    EXPECT_EQ(defaults->writes(), writes + 1);
}

TEST_F(AppSettingsStoreTest, ForgettingTheLastAppRemovesTheKey)
{
    AppSettingsStore store(defaults);
    store.set(quiet, "com.a");
    store.set(quiet, "com.b");
    store.set(AppAudioSettings::default_(), "com.a");
    EXPECT_EQ(stored(), R"({"com.b":{"isMuted":false,"volume":0.5}})");
    store.remove("com.b");
    EXPECT_FALSE(stored());

    defaults->set(AppSettingsStore::defaultKey, UserDefaults::Data{"unreadable"});
    store.removeAll();
    EXPECT_FALSE(stored());
}

} // namespace
} // namespace fadewell
