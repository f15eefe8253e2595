#include "e2e/scenarios/GoingOnPlayer.h"

#include "e2e/harness/InputDevices.h"
#include "e2e/harness/WaitUntil.h"
#include "e2e/scenarios/Complaints.h"
#include "e2e/scenarios/Interleaving.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

// How long a target may show no change before it is taken to be done. The program may wait for it
// for four seconds.
constexpr auto patience = std::chrono::seconds(8);

// However slow the target is, nobody types on for longer.
constexpr qsizetype mostKeys = 250;

// Any letters of the layout, among them those that the replacement has: both want the same keys.
QString randomLetters(const QString& letters, qsizetype length, std::mt19937& random) {
  std::uniform_int_distribution<qsizetype> any(0, letters.size() - 1);
  QString text;
  for (qsizetype index = 0; index < length; ++index) text += letters.at(any(random));
  return text;
}

struct Sequences {
  QString trigger;
  QString injected;
  QString typed;  // behind the trigger
};

// The text once it is right, or once it does not change any more.
QString settledText(TargetApplication& target, const Sequences& all) {
  QString before = target.state().text;
  QString now = before;
  const auto isRightOrChanges = [&] {
    now = target.state().text;
    return now != before || isInterleaving(all.injected, all.typed, now);
  };
  while (waitUntil(isRightOrChanges, patience, std::chrono::milliseconds(20))) {
    if (isInterleaving(all.injected, all.typed, now)) return now;
    before = now;
  }
  return now;
}

// Typed characters that come ahead of the backspaces are deleted, and as many of the trigger's
// first stay. Takes the reading that leaves the least wrong.
void judge(const Sequences& all, const QString& actual, ScenarioOutcome& outcome) {
  outcome.charactersWrong = interleavingDistance(all.injected, all.typed, actual);
  outcome.complaint = firstBreach(all.injected, all.typed, actual);
  for (qsizetype deleted = 1; deleted <= all.trigger.size(); ++deleted) {
    const QString left = all.trigger.left(deleted);
    if (!actual.startsWith(left)) return;
    const QString rest = actual.mid(left.size());
    const qsizetype wrong = interleavingDistance(all.injected, all.typed.mid(deleted), rest);
    if (wrong + deleted > outcome.charactersWrong) continue;
    outcome.charactersWrong = wrong;
    outcome.typedDeleted = deleted;
    outcome.complaint = std::to_string(deleted) + " typed characters deleted for the trigger's";
    appendLine(outcome.complaint, firstBreach(all.injected, all.typed.mid(deleted), rest));
  }
}

}  // namespace

ScenarioOutcome playGoingOn(const GoingOn& goingOn, const MatrixLayout& layout, Stage& stage) {
  TargetApplication& target = stage.target();
  target.clear();
  delayKeyRepeat(stage.connection());
  const int expansionsBefore = stage.program()->expansionCount();
  std::mt19937 random(static_cast<std::uint32_t>(expansionsBefore));
  const Turn turn{.snippet = goingOn.snippet};
  Sequences all{.trigger = keysOf(turn, layout.script),
                .injected = expectedAfter({}, turn).text,
                .typed = {}};
  const QString letters = stage.person().keyboard(Body::serverKeyboard).letters(goingOn.withShift);
  const QString keys = all.trigger + randomLetters(letters, mostKeys, random);
  const auto isEnough = [&](qsizetype typed) {
    return typed >= all.trigger.size() + goingOn.leastKeys &&
           target.state().text.size() >= all.injected.size();
  };
  const qsizetype typed = stage.person().typeFluently(keys, goingOn.rhythm, random, isEnough);
  all.typed = keys.mid(all.trigger.size(), typed - all.trigger.size());
  static_cast<void>(settledText(target, all));
  // A last key proves that nothing more was on its way.
  stage.person().type(u" "_s, {.body = Body::serverKeyboard});
  all.typed += u" "_s;
  const QString actual = settledText(target, all);

  ScenarioOutcome outcome;
  outcome.charactersSent = all.injected.size() + all.typed.size();
  judge(all, actual, outcome);
  appendLine(outcome.complaint, complaintAboutProgram(*stage.program(), expansionsBefore + 1));
  appendLine(outcome.complaint, complaintAboutKeyboard(stage.connection()));
  return outcome;
}

}  // namespace zarvy::e2e
