#pragma once

#include <functional>
#include <string>

#include "e2e/harness/Stage.h"
#include "e2e/scenarios/Scenario.h"

namespace zarvy::e2e {

// What came of one scenario.
struct ScenarioOutcome {
  qsizetype charactersSent = 0;   // that were to be typed in the person's stead
  qsizetype charactersWrong = 0;  // wrong, missing or too many, in the whole text
  qsizetype typedDeleted = 0;     // the person's, deleted in place of the trigger's
  std::string complaint;          // what is not as it should be; empty if all is
};

// How the text of a turn's snippet gets into the application. The program under test does it by
// itself; another tool is told to.
using Expander = std::function<void(Stage& stage, const Turn& turn, Script script)>;

// Types the turn's trigger and leaves the rest to the program.
void typeTrigger(Stage& stage, const Turn& turn, Script script);

// Plays `scenario` in the stage's target, which is emptied first, and compares exactly: the text,
// the caret, how many expansions the program has announced, and that no key is left down.
[[nodiscard]] ScenarioOutcome play(const Scenario& scenario, const MatrixLayout& layout,
                                   Stage& stage, const Expander& expander = typeTrigger);

// True once the target holds `wanted`. Waits as long as the target's text goes on changing, and
// gives up when it has stood still for a while.
[[nodiscard]] bool settlesAt(TargetApplication& target, const EditorState& wanted);

// What is wrong with `actual`, in words; empty where it equals `expected`.
[[nodiscard]] std::string complaintAbout(const EditorState& expected, const EditorState& actual);

}  // namespace zarvy::e2e
