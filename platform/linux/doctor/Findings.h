#pragma once

#include "base/Finding.h"
#include "platform/linux/doctor/SessionFacts.h"
#include "platform/linux/doctor/SoundFacts.h"

#include <vector>

namespace fadewell {

// Facts judged: what works because of them, what doesn't, and what helps. [any thread]

[[nodiscard]] std::vector<Finding> soundFindings(const SoundFacts& facts);
[[nodiscard]] std::vector<Finding> sessionFindings(const SessionFacts& facts);

} // namespace fadewell
