#include "e2e/scenarios/FocusMovePlayer.h"

#include <stdexcept>
#include <thread>

#include "e2e/harness/WaitUntil.h"
#include "e2e/scenarios/Complaints.h"
#include "e2e/scenarios/TextDifference.h"

namespace zarvy::e2e {

namespace {

// How long both may show no change before they are taken to be done. The program may wait for each
// for four seconds.
constexpr auto patience = std::chrono::seconds(8);

void comeBackTo(const XConnection& connection, xcb_window_t window) {
  turnTo(connection, window);
  if (!waitUntil([&] { return activeWindow(connection) == window; }, std::chrono::seconds(10))) {
    throw std::runtime_error("the first window does not come back to the front");
  }
}

// What both hold, once it is `wanted` or does not change any more.
QString settledTogether(TargetApplication& first, TargetApplication& second,
                        const QString& wanted) {
  const auto together = [&] { return first.state().text + second.state().text; };
  QString before = together();
  QString now = before;
  const auto isRightOrChanges = [&] {
    now = together();
    return now != before || now == wanted;
  };
  while (waitUntil(isRightOrChanges, patience, std::chrono::milliseconds(20)) && now != wanted) {
    before = now;
  }
  return now;
}

}  // namespace

ScenarioOutcome playFocusMove(const FocusMove& move, const MatrixLayout& layout, Stage& stage) {
  const XConnection& connection = stage.connection();
  const int expansionsBefore = stage.program()->expansionCount();
  const Turn turn{.snippet = move.snippet};
  const QString replacement = expectedAfter({}, turn).text;
  stage.target().clear();
  const xcb_window_t firstWindow = activeWindow(connection);
  const auto second = stage.makeTarget(move.to);
  second->start(stage.person());
  const xcb_window_t secondWindow = activeWindow(connection);
  comeBackTo(connection, firstWindow);

  stage.person().type(keysOf(turn, layout.script), {.body = Body::serverKeyboard});
  std::this_thread::sleep_for(move.after);
  turnTo(connection, secondWindow);
  xcb_flush(connection.get());
  const QString actual = settledTogether(stage.target(), *second, replacement);

  ScenarioOutcome outcome;
  outcome.charactersSent = replacement.size();
  outcome.charactersWrong = editDistance(replacement, actual);
  outcome.complaint = firstDifference(replacement, actual);
  appendLine(outcome.complaint, complaintAboutProgram(*stage.program(), expansionsBefore + 1));
  appendLine(outcome.complaint, complaintAboutKeyboard(connection));
  second->close();
  comeBackTo(connection, firstWindow);
  return outcome;
}

}  // namespace zarvy::e2e
