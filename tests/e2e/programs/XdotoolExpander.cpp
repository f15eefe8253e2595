#include "e2e/programs/XdotoolExpander.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

QString replacementOf(const Turn& turn) {
  const EditorState alone = expectedAfter({}, Turn{.snippet = turn.snippet});
  return alone.text;
}

}  // namespace

void expandByXdotool(Stage& stage, const Turn& turn, Script script) {
  stage.person().type(keysOf(Turn{.typed = turn.typed}, script), {.body = turn.style.body});
  if (turn.snippet.empty()) return;
  const std::string folder = stage.makeFolder("xdotool");
  std::ofstream(folder + "/text", std::ios::binary) << replacementOf(turn).toStdString();
  ChildProcess tool({.program = "xdotool",
                     .arguments = {"type", "--clearmodifiers", "--file", folder + "/text"},
                     .environment = stage.environment(),
                     .errorFile = folder + "/error.log",
                     .descriptors = {}});
  if (!tool.waitForExit(std::chrono::minutes(3))) throw std::runtime_error("xdotool hangs");
}

bool canXdotoolPlay(const Scenario& scenario) {
  return !scenario.goingOn && !scenario.focusMove &&
         std::none_of(scenario.turns.begin(), scenario.turns.end(), [](const Turn& turn) {
           const EditorState after = expectedAfter({}, turn);
           return after.caret != after.text.size();
         });
}

}  // namespace zarvy::e2e
