#include "control/values/AppMatcher.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace fadewell {
namespace {

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

TEST(AppMatcherTest, FindsTheOneThatIsMeantOrNamesTheCandidates)
{
    const struct {
        const char* query;
        std::vector<std::string> ids;
    } cases[] = {
        {"org.mozilla.firefox", {"org.mozilla.firefox"}}, // identifier
        {"firefox", {"org.mozilla.firefox"}},             // name in another case
        {"ORG.MOZILLA.FIREFOX", {"org.mozilla.firefox"}}, // identifier in another case
        {"chrome", {"com.google.Chrome"}},                // part of a name
        {"spotify.cl", {"com.spotify.Client"}},           // part of an identifier only
        {"mpv", {"mpv"}},                                 // identifier before an equal name
        {"MPV", {"mpv", "io.mpv.Other"}},                 // two in another case
        {"übUNG", {"app.zen"}},                           // case beyond ASCII
        {"music", {"org.gnome.Music", "com.apple.Music"}},
        {"com.", {"com.google.Chrome", "com.spotify.Client", "com.apple.Music"}},
    };
    for (const auto& [query, expected] : cases) {
        const auto result = makeMatcher().find(query);
        const auto* one = std::get_if<NamedItem>(&result);
        EXPECT_EQ(ids(one ? std::vector{*one} : std::get<AppMatcher::Ambiguous>(result).candidates),
                  expected)
            << query;
        EXPECT_EQ(one != nullptr, expected.size() == 1) << query;
    }
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
