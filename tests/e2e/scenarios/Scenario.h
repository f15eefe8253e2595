#pragma once

#include <optional>
#include <string>
#include <vector>

#include <QString>

#include "e2e/harness/EditorState.h"
#include "e2e/harness/KeyboardLayout.h"
#include "e2e/harness/Person.h"
#include "e2e/harness/TargetKind.h"
#include "e2e/harness/TestSnippet.h"

namespace zarvy::e2e {

// The letters of a group.
enum class Script { latin, cyrillic, greek, hebrew, arabic };

// A layout of the matrix. The first group is the one in force unless a scenario says otherwise.
struct MatrixLayout {
  std::string name;     // for reports and filters
  std::string layouts;  // as setxkbmap takes them
  Script script = Script::latin;

  // The person has locked the second group by Alt and Shift, on the server's own keyboard, and
  // types on no other: the script is that group's.
  bool lockedByHand = false;

  [[nodiscard]] KeyboardLayout keyboard() const {
    return {.layouts = layouts, .options = lockedByHand ? "grp:alt_shift_toggle" : ""};
  }
};

[[nodiscard]] const std::vector<MatrixLayout>& matrixLayouts();

// A snippet of the matrix.
struct ScenarioSnippet {
  std::string name;
  QString trigger;  // on a keyboard with Latin letters
  QString replacement;
};

// What stands for `trigger` on a keyboard with the letters of `script`: mostly what the same keys
// type.
[[nodiscard]] QString triggerIn(Script script, const QString& trigger);

// All of them; the program is started with these, in every script.
[[nodiscard]] const std::vector<ScenarioSnippet>& scenarioSnippets();
[[nodiscard]] std::vector<TestSnippet> matrixLibrary();

// What the person does before the next wait for the application: arrows, text, a trigger.
struct Turn {
  int leftArrows = 0;
  QString typed = {};
  std::string snippet = {};  // whose trigger follows `typed`; empty for none
  TypingStyle style = {};
};

// The person types the trigger and goes on behind it without a pause, on the server's own keyboard.
struct GoingOn {
  std::string snippet;
  KeyRhythm rhythm;
  bool withShift = true;     // are there capitals among the letters
  qsizetype leastKeys = 12;  // goes on for as long as the text is under way, and for so many keys
};

// The person turns to another application so long after the trigger's last key.
struct FocusMove {
  std::string snippet;
  TargetKind to = TargetKind::xterm;
  std::chrono::milliseconds after{30};
};

enum class ScenarioForm {
  usual,    // in every run
  thorough  // in the long form only
};

struct Scenario {
  std::string name;
  ScenarioForm form = ScenarioForm::usual;
  std::vector<Turn> turns = {};
  bool inSecondGroup = false;           // played only on layouts that have one
  std::optional<GoingOn> goingOn = {};  // in place of turns, as the next
  std::optional<FocusMove> focusMove = {};
};

[[nodiscard]] const std::vector<Scenario>& scenarioTable();
[[nodiscard]] bool isPlayedIn(const Scenario& scenario, TargetKind kind,
                              const MatrixLayout& layout);
[[nodiscard]] bool isInShortForm(const Scenario& scenario);

// What `before` becomes by `turn` if nothing goes wrong: `typed` goes in at the caret, the trigger
// leaves no trace, and the caret stands where the replacement says.
[[nodiscard]] EditorState expectedAfter(EditorState before, const Turn& turn);

// What the person types for `turn`, arrows aside.
[[nodiscard]] QString keysOf(const Turn& turn, Script script);

// How many characters the program has to type for `turn`.
[[nodiscard]] qsizetype charactersOf(const Turn& turn);

}  // namespace zarvy::e2e
