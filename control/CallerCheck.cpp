#include "control/CallerCheck.h"

#include <utility>

namespace fadewell {

/// Outlives the check by a lookup that is under way.
struct CallerCheck::State {
    using Answers = std::vector<std::function<void(bool)>>;

    void finish(const QString& caller, std::optional<UserID> user);

    UserID allowed = 0;
    std::set<QString> known; ///< allowed callers
    std::map<QString, Answers> waiting;
};

void CallerCheck::State::finish(const QString& caller, std::optional<UserID> user)
{
    constexpr std::size_t mostRemembered = 256; // Callers come and go; asking again is cheap.
    const bool isAllowed = user == allowed;
    if (isAllowed) {
        if (known.size() >= mostRemembered) {
            known.clear();
        }
        known.insert(caller);
    }
    const auto answers = std::move(waiting.extract(caller).mapped());
    for (const auto& answer : answers) {
        answer(isAllowed);
    }
}

CallerCheck::CallerCheck(UserID allowed, Lookup lookup)
    : state_(std::make_shared<State>())
    , lookup_(std::move(lookup))
{
    state_->allowed = allowed;
}

void CallerCheck::check(const QString& caller, std::function<void(bool)> answer)
{
    if (state_->known.contains(caller)) {
        answer(true);
        return;
    }
    auto& waiting = state_->waiting[caller];
    waiting.push_back(std::move(answer));
    if (waiting.size() > 1) {
        return;
    }
    lookup_(caller, [weak = std::weak_ptr(state_), caller](std::optional<UserID> user) {
        if (const auto state = weak.lock()) {
            state->finish(caller, user);
        }
    });
}

} // namespace fadewell
