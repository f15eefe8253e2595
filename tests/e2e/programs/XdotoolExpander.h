#pragma once

#include "e2e/scenarios/ScenarioPlayer.h"

namespace zarvy::e2e {

// The person types what stands before the trigger, and `xdotool type` writes the replacement, with
// the defaults that it has for a user. Throws std::runtime_error where it fails.
void expandByXdotool(Stage& stage, const Turn& turn, Script script);

// False for a scenario that moves the caret back, goes on typing or turns away, which that tool has
// no notion of.
[[nodiscard]] bool canXdotoolPlay(const Scenario& scenario);

}  // namespace zarvy::e2e
