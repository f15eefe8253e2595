#include "e2e/scenarios/ScenarioPlayer.h"

#include "e2e/scenarios/Complaints.h"
#include "e2e/scenarios/FocusMovePlayer.h"
#include "e2e/scenarios/GoingOnPlayer.h"
#include "e2e/scenarios/TextDifference.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

// How long a target may show no change before it is taken to be done. The program may wait for it
// for four seconds.
constexpr auto patience = std::chrono::seconds(8);

// The person's hand for `turn`.
TypingStyle handFor(const Turn& turn, const MatrixLayout& layout) {
  TypingStyle style = turn.style;
  if (layout.lockedByHand) style.body = Body::serverKeyboard;
  return style;
}

// One after another, each as soon as the application shows the one before. A last key of the
// person's proves that nothing was on its way behind the text.
EditorState playTurns(const Scenario& scenario, const MatrixLayout& layout, Stage& stage,
                      const Expander& expander, ScenarioOutcome& outcome) {
  const Script script = scenario.inSecondGroup ? Script::latin : layout.script;
  EditorState expected;
  for (Turn turn : scenario.turns) {
    turn.style = handFor(turn, layout);
    for (int press = 0; press < turn.leftArrows; ++press) {
      stage.person().tap(XKB_KEY_Left, turn.style);
    }
    expander(stage, turn, script);
    expected = expectedAfter(expected, turn);
    outcome.charactersSent += charactersOf(turn);
    if (!settlesAt(stage.target(), expected)) return expected;
  }
  const Turn lastKey{.typed = u" "_s};
  stage.person().type(lastKey.typed, handFor(lastKey, layout));
  expected = expectedAfter(expected, lastKey);
  static_cast<void>(settlesAt(stage.target(), expected));
  return expected;
}

}  // namespace

void typeTrigger(Stage& stage, const Turn& turn, Script script) {
  stage.person().type(keysOf(turn, script), turn.style);
}

bool settlesAt(TargetApplication& target, const EditorState& wanted) {
  EditorState before = target.state();
  while (!target.waitForState(wanted, patience)) {
    EditorState now = target.state();
    if (now == before) return now == wanted;
    before = std::move(now);
  }
  return true;
}

std::string complaintAbout(const EditorState& expected, const EditorState& actual) {
  std::string complaint = firstDifference(expected.text, actual.text);
  if (expected.caret != actual.caret) {
    appendLine(complaint, "caret at " + std::to_string(actual.caret) + " and not at " +
                              std::to_string(expected.caret));
  }
  return complaint;
}

ScenarioOutcome play(const Scenario& scenario, const MatrixLayout& layout, Stage& stage,
                     const Expander& expander) {
  if (scenario.goingOn) return playGoingOn(*scenario.goingOn, layout, stage);
  if (scenario.focusMove) return playFocusMove(*scenario.focusMove, layout, stage);
  ScenarioOutcome outcome;
  stage.target().clear();
  const int expansionsBefore = stage.program() ? stage.program()->expansionCount() : 0;
  if (scenario.inSecondGroup) lockGroup(stage.connection(), 1);
  const EditorState expected = playTurns(scenario, layout, stage, expander, outcome);
  const EditorState actual = stage.target().state();

  outcome.complaint = complaintAbout(expected, actual);
  outcome.charactersWrong = editDistance(expected.text, actual.text);
  if (stage.program() != nullptr) {
    int expansions = expansionsBefore;
    for (const Turn& turn : scenario.turns) expansions += turn.snippet.empty() ? 0 : 1;
    appendLine(outcome.complaint, complaintAboutProgram(*stage.program(), expansions));
  }
  appendLine(outcome.complaint, complaintAboutKeyboard(stage.connection()));
  if (scenario.inSecondGroup) lockGroup(stage.connection(), 0);
  return outcome;
}

}  // namespace zarvy::e2e
