#include "e2e/scenarios/Complaints.h"

#include "e2e/harness/KeyboardLayout.h"
#include "e2e/harness/WaitUntil.h"

namespace zarvy::e2e {

namespace {

// The program's output and the server's state follow the text by a moment.
constexpr auto afterglow = std::chrono::seconds(5);

}  // namespace

std::string complaintAboutProgram(ProgramUnderTest& program, int expectedExpansions) {
  static_cast<void>(
      waitUntil([&] { return program.expansionCount() >= expectedExpansions; }, afterglow));
  if (!program.process().isRunning()) return "the program has ended: " + program.errorOutput();
  const int announced = program.expansionCount();
  if (announced == expectedExpansions) return {};
  return std::to_string(announced) + " expansions announced, " +
         std::to_string(expectedExpansions) + " expected";
}

std::string complaintAboutKeyboard(const XConnection& connection) {
  const auto nothingHeld = [&] {
    const KeyboardState state = keyboardState(connection);
    return state.heldKeys.empty() && state.heldModifiers == 0 && state.lockedModifiers == 0;
  };
  if (waitUntil(nothingHeld, afterglow)) return {};
  const KeyboardState state = keyboardState(connection);
  return "left behind: keys [" + state.heldKeys + "] modifiers " +
         std::to_string(state.heldModifiers) + " locked " + std::to_string(state.lockedModifiers);
}

void appendLine(std::string& text, const std::string& line) {
  if (text.empty() || line.empty()) {
    text += line;
  } else {
    text += "; " + line;
  }
}

}  // namespace zarvy::e2e
