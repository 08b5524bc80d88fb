#pragma once

#include <string>

namespace fadewell::integration {

class FaultWorld;

/// Waits until everything is as it has to be: every app at its level on its output and nowhere
/// else, settings as chosen, no node, target or mute left behind; and stays so. Throws Unsettled
/// with what is wrong when that takes longer than FaultWorld::patience(). `phase` names the moment.
void settle(FaultWorld& world, const std::string& phase);

} // namespace fadewell::integration
