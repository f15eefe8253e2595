#pragma once

#include "e2e/scenarios/ScenarioPlayer.h"

namespace zarvy::e2e {

// Plays a person who turns to another window while the text is under way. The beginning of the
// replacement has to be in the stage's target, which is emptied first, and all the rest in the
// other.
[[nodiscard]] ScenarioOutcome playFocusMove(const FocusMove& move, const MatrixLayout& layout,
                                            Stage& stage);

}  // namespace zarvy::e2e
