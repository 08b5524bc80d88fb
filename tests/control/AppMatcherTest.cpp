#include "control/values/AppMatcher.h"

#include <gmock/gmock.h>
#include <string>
#include <vector>

namespace fadewell {
namespace {

using testing::ElementsAre;

std::vector<std::string> ids(const std::vector<NamedItem>& items)
{
    std::vector<std::string> result;
    for (const auto& item : items) {
        result.push_back(item.id);
    }
    return result;
}

AppMatcher makeMatcher()
{
    return AppMatcher({{"org.mozilla.firefox", "Firefox"},
                       {"com.google.Chrome", "Google Chrome"},
                       {"mpv", "mpv Media Player"},
                       {"io.mpv.Other", "MPV"},
                       {"com.spotify.Client", "Spotify"},
                       {"app.zen", "Übung"},
                       {"org.gnome.Music", "Music"},
                       {"com.apple.Music", "Music"},
                       {"mpv", "shown twice"}});
}

TEST(AppMatcherTest, FindsTheOneThatIsMeant)
{
    const struct {
        const char* query;
        const char* id;
    } cases[] = {
        {"org.mozilla.firefox", "org.mozilla.firefox"}, // identifier
        {"firefox", "org.mozilla.firefox"},             // name in another case
        {"ORG.MOZILLA.FIREFOX", "org.mozilla.firefox"}, // identifier in another case
        {"chrome", "com.google.Chrome"},                // part of a name
        {"spotify.cl", "com.spotify.Client"},           // part of an identifier only
        {"mpv", "mpv"},                                 // identifier before an equal name
        {"MPV", "io.mpv.Other"},                        // two in another case: see below
        {"übUNG", "app.zen"},                           // case beyond ASCII
        {"media", "mpv"},
    };
    for (const auto& [query, id] : cases) {
        const auto result = makeMatcher().find(query);
        if (std::string(query) == "MPV") {
            EXPECT_THAT(ids(std::get<AppMatcher::Ambiguous>(result).candidates),
                        ElementsAre("mpv", "io.mpv.Other"));
            continue;
        }
        ASSERT_TRUE(std::holds_alternative<NamedItem>(result)) << query;
        EXPECT_EQ(std::get<NamedItem>(result).id, id) << query;
    }
}

TEST(AppMatcherTest, NamesTheCandidatesOfAnAmbiguousQuery)
{
    const auto matcher = makeMatcher();
    const auto sameName = matcher.find("music");
    EXPECT_THAT(ids(std::get<AppMatcher::Ambiguous>(sameName).candidates),
                ElementsAre("org.gnome.Music", "com.apple.Music"));
    const auto part = matcher.find("com.");
    EXPECT_THAT(ids(std::get<AppMatcher::Ambiguous>(part).candidates),
                ElementsAre("com.google.Chrome", "com.spotify.Client", "com.apple.Music"));
}

TEST(AppMatcherTest, SuggestsWhatIsSpelledAlike)
{
    const struct {
        const char* query;
        std::vector<std::string> nearest;
    } cases[] = {
        {"firefxo", {"org.mozilla.firefox"}},
        {"Spotfy", {"com.spotify.Client"}},
        {"org.mozilla.firefix", {"org.mozilla.firefox"}},
        {"musik", {"org.gnome.Music", "com.apple.Music"}},
        {"quite something else entirely", {}},
        {"", {}},
    };
    for (const auto& [query, nearest] : cases) {
        const auto result = makeMatcher().find(query);
        ASSERT_TRUE(std::holds_alternative<AppMatcher::Unknown>(result)) << query;
        EXPECT_EQ(ids(std::get<AppMatcher::Unknown>(result).nearest), nearest) << query;
    }
}

TEST(AppMatcherTest, BoundsTheWorkOnHostileNames)
{
    const std::string huge(1 << 20, 'x');
    const AppMatcher matcher({{huge, huge + "y"}, {"a", "\xff\xfe broken"}});
    EXPECT_TRUE(std::holds_alternative<AppMatcher::Unknown>(matcher.find(huge + "z")));
    EXPECT_TRUE(std::holds_alternative<NamedItem>(matcher.find("broken")));
}

} // namespace
} // namespace fadewell
