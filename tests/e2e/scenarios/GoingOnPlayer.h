#pragma once

#include "e2e/scenarios/ScenarioPlayer.h"

namespace zarvy::e2e {

// Plays a person who types on behind the trigger, in the stage's target, which is emptied first.
// What arrives has to be an interleaving of the replacement and of what was typed behind the
// trigger.
[[nodiscard]] ScenarioOutcome playGoingOn(const GoingOn& goingOn, const MatrixLayout& layout,
                                          Stage& stage);

}  // namespace zarvy::e2e
