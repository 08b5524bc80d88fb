#include "demo/AppsFeed.h"

#include <nlohmann/json.hpp>

namespace fadewell::demo {
namespace {

using Json = nlohmann::json;

/// Longer lines don't come from a list of apps.
constexpr std::size_t longestLine = 4U << 20U;

template <class Value>
Value member(const Json& object, const char* key, Value fallback)
{
    const auto found = object.find(key);
    if (found == object.end()) {
        return fallback;
    }
    const auto* value = found->template get_ptr<const Value*>();
    return value != nullptr ? *value : fallback;
}

std::string badge(const std::string& callStatus)
{
    return callStatus == "inCall" ? "in call" : callStatus;
}

AppRow row(const Json& app)
{
    const auto volume = app.find("volume");
    return {.name = member<std::string>(app, "name", ""),
            .isPlaying = member(app, "isPlaying", false),
            .volume = volume != app.end() && volume->is_number() ? volume->get<double>() : 1.0,
            .isMuted = member(app, "isMuted", false),
            .output = member<std::string>(app, "outputDeviceName", "system"),
            .badge = badge(member<std::string>(app, "callStatus", ""))};
}

} // namespace

void AppsFeed::add(std::string_view bytes)
{
    pending_ += bytes;
    std::size_t start = 0;
    for (auto end = pending_.find('\n'); end != std::string::npos; end = pending_.find('\n', start))
    {
        readLine(std::string_view(pending_).substr(start, end - start));
        start = end + 1;
    }
    pending_.erase(0, start);
    if (pending_.size() > longestLine) {
        pending_.clear();
    }
}

void AppsFeed::readLine(std::string_view line)
{
    const Json state = Json::parse(line, nullptr, false);
    const Json apps = state.is_object() ? state.value("apps", Json()) : state;
    if (!apps.is_array()) {
        return;
    }
    std::vector<AppRow> rows;
    for (const auto& app : apps) {
        if (app.is_object()) {
            rows.push_back(row(app));
        }
    }
    rows_ = std::move(rows);
}

} // namespace fadewell::demo
