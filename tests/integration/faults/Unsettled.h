#pragma once

#include <stdexcept>

namespace fadewell::integration {

/// Fadewell has not done what it has to; every other exception is the rig's own failure.
class Unsettled : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace fadewell::integration
