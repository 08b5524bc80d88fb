#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace fadewell::integration {

class FaultWorld;

/// The kinds of faults, by name.
[[nodiscard]] std::vector<std::string> faultNames();
/// Of the fault with this number.
[[nodiscard]] std::string faultName(std::uint64_t seed, std::uint64_t number);

/// Does the fault with this number to a settled world and waits until it has settled again. Throws
/// Unsettled when it doesn't. What is done depends on the seed, the number and the state that the
/// world has reached, and with `only` on that kind's name instead of the number.
void doFault(FaultWorld& world,
             std::uint64_t seed,
             std::uint64_t number,
             const std::string& only = {});

} // namespace fadewell::integration
