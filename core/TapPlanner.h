#pragma once

#include "core/TapAction.h"
#include "core/TapSessionState.h"
#include "core/TapTarget.h"

#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace fadewell {

/// Decides which steps lead from the existing tap sessions to the wanted ones. Pure: same inputs,
/// same plan. Gains compare exactly; an unchanged app must have exactly 1.
struct TapPlanner {
    TapPlanner() = delete;

    /// Seconds that a session stays at unity before it is released.
    static constexpr double unityGrace = 3.0;

    using Sessions = std::map<std::string, TapSessionState>;

    /// The steps, in the order in which they are to be carried out. `excluded` apps get no new
    /// session.
    [[nodiscard]] static std::vector<TapAction> plan(std::span<const TapTarget> targets,
                                                     const Sessions& sessions,
                                                     const std::set<std::string>& excluded,
                                                     double now);

    /// When the first session will have been at unity for the grace period.
    [[nodiscard]] static std::optional<double> nextUnityDeadline(const Sessions& sessions);
};

} // namespace fadewell
