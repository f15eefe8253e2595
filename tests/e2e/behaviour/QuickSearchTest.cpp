// The quick search panel, called by its key above real applications and used with the keyboard.

#include "e2e/behaviour/BehaviourTest.h"
#include "e2e/behaviour/Place.h"
#include "e2e/harness/AccessibleText.h"
#include "e2e/harness/Windows.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto deadline = std::chrono::seconds(20);

// Control, Alt and Space: window managers keep Alt and Space for a menu of their own.
constexpr unsigned controlAndAlt = 786432;
constexpr unsigned alt = 524288;

class QuickSearch : public BehaviourTest {
 protected:
  using BehaviourTest::BehaviourTest;

  void startWithLibrary(TargetKind kind, unsigned modifiers = controlAndAlt) {
    ProgramUnderTest& program = stage().makeProgram(programPath());
    program.writeLibrary(
        {{u";ok"_s, u"Ωk"_s}, {u";ty"_s, u"Thank you"_s}, {u";d"_s, u"Dear {{field:Name}}!"_s}});
    program.writeSettings({.quickSearchModifiers = modifiers});
    program.start();
    stage().startTarget(kind);
    m_application = activeWindow(stage().connection());
  }

  void pressHotKey() {
    person().press(XKB_KEY_Control_L);
    person().press(XKB_KEY_Alt_L);
    person().tap(XKB_KEY_space);
    person().release(XKB_KEY_Alt_L);
    person().release(XKB_KEY_Control_L);
  }

  // Presses the hot key and waits until the search field has the keyboard.
  void openPanel() {
    pressHotKey();
    ASSERT_TRUE(waitUntil([&] { return m_field.find(program().process().pid()); }, deadline));
    ASSERT_TRUE(
        waitUntil([&] { return activeWindow(stage().connection()) != m_application; }, deadline));
    ASSERT_EQ(m_field.state(PositionUnit::utf16).text, u""_s);
  }

  void search(const QString& text) {
    person().type(text);
    ASSERT_TRUE(
        waitUntil([&] { return m_field.state(PositionUnit::utf16).text == text; }, deadline));
  }

  [[nodiscard]] bool hasPanel() { return m_field.find(program().process().pid()); }

  void expectPanelGone() {
    EXPECT_TRUE(waitUntil([&] { return !m_field.find(program().process().pid()); }, deadline));
    EXPECT_TRUE(
        waitUntil([&] { return activeWindow(stage().connection()) == m_application; }, deadline));
  }

  xcb_window_t m_application = XCB_WINDOW_NONE;

 private:
  AccessibleText m_field{stage().bus().accessibilityAddress()};
};

class QuickSearchAbove : public QuickSearch, public testing::WithParamInterface<Place> {
 protected:
  QuickSearchAbove() : QuickSearch(std::get<WindowManagerKind>(GetParam())) {}
};

TEST_P(QuickSearchAbove, typesThePickIntoTheApplicationThatWasInFront) {
  const auto application = std::get<TargetKind>(GetParam());
  startWithLibrary(application);
  person().type(u"x "_s);
  expectText(u"x "_s);
  openPanel();
  search(u"ty"_s);
  person().tap(XKB_KEY_Return);
  // The key reaches the application as well, and a terminal makes a character of it.
  expectText(application == TargetKind::xterm ? u"x \u0080Thank you"_s : u"x Thank you"_s);
  expectPanelGone();
  expectNothingHeld();
}

INSTANTIATE_TEST_SUITE_P(, QuickSearchAbove,
                         testing::Combine(testing::Values(WindowManagerKind::openbox),
                                          testing::Values(TargetKind::xterm, TargetKind::mousepad,
                                                          TargetKind::qt6, TargetKind::chromium)),
                         nameOfPlace);

INSTANTIATE_TEST_SUITE_P(PreventedFromStealing, QuickSearchAbove,
                         testing::Combine(testing::Values(WindowManagerKind::xfwm4),
                                          testing::Values(TargetKind::xterm, TargetKind::mousepad,
                                                          TargetKind::qt6)),
                         nameOfPlace);

class QuickSearchUnder : public QuickSearch, public testing::WithParamInterface<WindowManagerKind> {
 protected:
  QuickSearchUnder() : QuickSearch(GetParam()) {}
};

INSTANTIATE_TEST_SUITE_P(, QuickSearchUnder,
                         testing::Values(WindowManagerKind::openbox, WindowManagerKind::xfwm4),
                         nameOfWindowManager);

// Also once the program has told the window manager of its other windows.
TEST_P(QuickSearchUnder, hasAnIconAndNoEntryInTaskbarsAndPagers) {
  startWithLibrary(TargetKind::qt6);
  for (int round = 0; round < 2; ++round) {
    openPanel();
    const xcb_window_t panel = activeWindow(stage().connection());
    for (const ManagedWindow& window : managedWindows(stage().connection())) {
      EXPECT_EQ(window.isInTaskbar, window.id != panel) << window.title;
      EXPECT_EQ(window.isInPager, window.id != panel) << window.title;
      EXPECT_TRUE(window.hasIcon || window.id != panel);
    }
    person().tap(XKB_KEY_Escape);
    expectPanelGone();
  }
}

TEST_F(QuickSearch, goesDownTheListWithTheArrows) {
  startWithLibrary(TargetKind::qt6);
  openPanel();
  person().tap(XKB_KEY_Up);
  person().tap(XKB_KEY_Down);
  person().tap(XKB_KEY_Return);
  expectText(u"Thank you"_s);
}

TEST_P(QuickSearchUnder, goesWithEscapeAndWithTheHotKey) {
  startWithLibrary(TargetKind::qt6);
  openPanel();
  person().tap(XKB_KEY_Escape);
  expectPanelGone();
  openPanel();
  search(u"thank"_s);
  pressHotKey();
  expectPanelGone();
  openPanel();
  person().tap(XKB_KEY_Escape);
  expectPanelGone();
  person().type(u";ok"_s);
  expectText(u"Ωk"_s);
}

TEST_F(QuickSearch, goesWhenTheUserTurnsToAnotherApplication) {
  startWithLibrary(TargetKind::qt6);
  openPanel();
  const auto other = stage().makeTarget(TargetKind::xterm);
  other->start(person());
  person().type(u";ok"_s);
  const EditorState expected{.text = u"Ωk"_s, .caret = 2};
  EXPECT_TRUE(settlesAt(*other, expected)) << complaintAbout(expected, other->state());
  EXPECT_EQ(target().state().text, u""_s);
}

// A program that the user has been in tells a window manager since when they have not.
TEST_P(QuickSearchUnder, hasTheKeyboardAgainOnceTheUserHasTypedElsewhere) {
  startWithLibrary(TargetKind::qt6);
  openPanel();
  search(u"thank"_s);
  person().tap(XKB_KEY_Escape);
  expectPanelGone();
  person().type(u"x "_s);
  expectText(u"x "_s);
  openPanel();
  search(u"ty"_s);
  person().tap(XKB_KEY_Return);
  expectText(u"x Thank you"_s);
  expectPanelGone();
}

TEST_P(QuickSearchUnder, leadsThroughTheFormToTheApplicationThatWasInFront) {
  startWithLibrary(TargetKind::qt6);
  person().type(u"x"_s);
  openPanel();
  search(u";d"_s);
  person().tap(XKB_KEY_Return);
  const auto form = waitForWindow(stage().connection(), "Fill In - Snippet 3");
  ASSERT_TRUE(form.has_value());
  AccessibleText field(stage().bus().accessibilityAddress());
  ASSERT_TRUE(waitUntil(
      [&] {
        return activeWindow(stage().connection()) == form->id &&
               field.find(program().process().pid());
      },
      deadline));
  person().type(u"Ada"_s);
  ASSERT_TRUE(waitUntil([&] { return field.state(PositionUnit::utf16).text == u"Ada"; }, deadline));
  person().tap(XKB_KEY_Return);
  expectText(u"xDear Ada!"_s);
}

// The letters meant for the search would close or minimise the application's window.
TEST_P(QuickSearchUnder, leavesAloneTheMenuOfAWindowManagerThatHasTheKey) {
  startWithLibrary(TargetKind::qt6, alt);
  person().press(XKB_KEY_Alt_L);
  person().tap(XKB_KEY_space);
  person().release(XKB_KEY_Alt_L);
  EXPECT_FALSE(waitUntil([&] { return hasPanel(); }, std::chrono::seconds(2)));
  EXPECT_EQ(activeWindow(stage().connection()), m_application);
  person().tap(XKB_KEY_Escape);
}

// The panel has gone long ago when the program's last window loses the keyboard.
TEST_F(QuickSearch, hasNoPartInTheFormThatTheUserLeavesForAWhile) {
  startWithLibrary(TargetKind::qt6);
  openPanel();
  search(u";d"_s);
  person().tap(XKB_KEY_Return);
  const auto form = waitForWindow(stage().connection(), "Fill In - Snippet 3");
  ASSERT_TRUE(form.has_value());
  const auto hasForm = [&] { return activeWindow(stage().connection()) == form->id; };
  ASSERT_TRUE(waitUntil(hasForm, deadline));
  {
    const auto other = stage().makeTarget(TargetKind::xterm);
    other->start(person());
    person().type(u"a while;ok"_s);
    EXPECT_TRUE(settlesAt(*other, {.text = u"a whileΩk"_s, .caret = 9}));
  }
  ASSERT_TRUE(waitUntil(hasForm, deadline));
  EXPECT_TRUE(program().process().isRunning());
  AccessibleText field(stage().bus().accessibilityAddress());
  ASSERT_TRUE(waitUntil([&] { return field.find(program().process().pid()); }, deadline));
  person().type(u"Ada"_s);
  ASSERT_TRUE(waitUntil([&] { return field.state(PositionUnit::utf16).text == u"Ada"; }, deadline));
  person().tap(XKB_KEY_Return);
  expectText(u"Dear Ada!"_s);
}

}  // namespace
}  // namespace zarvy::e2e
