#pragma once

#include <string>

#include <gtest/gtest.h>

#include "e2e/harness/Stage.h"
#include "e2e/harness/WaitUntil.h"
#include "e2e/programs/ProgramPath.h"
#include "e2e/scenarios/ScenarioPlayer.h"

namespace zarvy::e2e {

// A stage of its own for each test, American keyboard, with the built program and a library that
// the test chooses.
class BehaviourTest : public testing::Test {
 protected:
  explicit BehaviourTest(WindowManagerKind windowManager = WindowManagerKind::openbox)
      : m_stage(KeyboardLayout{.layouts = "us"}, windowManager) {}

  void SetUp() override { ASSERT_NE(programPath(), "") << "There is no program to test."; }

  [[nodiscard]] Stage& stage() { return m_stage; }
  [[nodiscard]] Person& person() { return m_stage.person(); }
  [[nodiscard]] TargetApplication& target() { return m_stage.target(); }
  [[nodiscard]] ProgramUnderTest& program() { return *m_stage.program(); }

  // The program first and the application second, as on most desktops.
  void start(TargetKind kind, const std::vector<TestSnippet>& snippets) {
    m_stage.startProgram(programPath(), snippets);
    m_stage.startTarget(kind);
  }

  // The target comes to hold exactly `text` with the caret behind it.
  void expectText(const QString& text) {
    const EditorState expected{.text = text, .caret = text.size()};
    const bool settled = settlesAt(target(), expected);
    EXPECT_TRUE(settled) << complaintAbout(expected, target().state());
  }

  // Sooner or later no key is down, and no modifier.
  void expectNothingHeld() {
    const auto nothingHeld = [this] {
      const KeyboardState state = keyboardState(m_stage.connection());
      return state.heldKeys.empty() && state.heldModifiers == 0;
    };
    EXPECT_TRUE(waitUntil(nothingHeld, std::chrono::seconds(5)))
        << "keys down: " << keyboardState(m_stage.connection()).heldKeys;
  }

  void expectExpansions(int count) {
    static_cast<void>(
        waitUntil([&] { return program().expansionCount() >= count; }, std::chrono::seconds(10)));
    EXPECT_EQ(program().expansionCount(), count);
  }

 private:
  Stage m_stage;
};

}  // namespace zarvy::e2e
