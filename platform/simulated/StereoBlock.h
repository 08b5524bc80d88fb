#pragma once

#include <vector>

namespace fadewell {

/// Some frames of stereo sound.
struct StereoBlock {
    std::vector<float> left;
    std::vector<float> right;

    bool operator==(const StereoBlock&) const = default;
};

} // namespace fadewell
