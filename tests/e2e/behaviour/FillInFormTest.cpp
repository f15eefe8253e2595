// The form that asks for the fields of a snippet, used with the keyboard above real applications.

#include <csignal>

#include "e2e/behaviour/BehaviourTest.h"
#include "e2e/behaviour/Place.h"
#include "e2e/harness/AccessibleText.h"
#include "e2e/harness/Windows.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString letter = u"Dear {{field:Name}}, greetings from {{field:City:Turin}}{{cursor}}!"_s;
const std::string title = "Fill In - Snippet 1";

class FillInForm : public BehaviourTest {
 protected:
  using BehaviourTest::BehaviourTest;

  void startWithLetter(TargetKind kind) { start(kind, {{u";d"_s, letter}, {u";ok"_s, u"Ωk"_s}}); }

  // Types the trigger, and waits until the form has the keyboard, and its first field the focus.
  void openForm() {
    person().type(u";d"_s);
    const auto window = waitForWindow(stage().connection(), title);
    ASSERT_TRUE(window.has_value());
    ASSERT_TRUE(waitUntil([&] { return activeWindow(stage().connection()) == window->id; },
                          std::chrono::seconds(20)));
    ASSERT_TRUE(waitUntil([&] { return m_field.find(program().process().pid()); },
                          std::chrono::seconds(20)));
    m_window = *window;
  }

  // Types `text` into the field that has the focus.
  void fillIn(const QString& text) {
    person().type(text);
    expectField(text);
  }

  // The field that has the focus comes to hold `text`.
  void expectField(const QString& text) {
    EXPECT_TRUE(waitUntil(
        [&] {
          return m_field.find(program().process().pid()) &&
                 m_field.state(PositionUnit::utf16).text == text;
        },
        std::chrono::seconds(20)))
        << text.toStdString();
  }

  void expectFormGone() {
    EXPECT_TRUE(waitUntil(
        [&] {
          for (const ManagedWindow& window : managedWindows(stage().connection())) {
            if (window.title == title) return false;
          }
          return true;
        },
        std::chrono::seconds(20)));
  }

  // `application` comes to hold the letter behind `before`, with the caret in its place.
  static void expectLetter(TargetApplication& application, const QString& before,
                           const QString& name, const QString& city = u"Turin"_s) {
    const QString text = before + u"Dear %1, greetings from %2!"_s.arg(name, city);
    const EditorState expected{.text = text, .caret = text.size() - 1};
    EXPECT_TRUE(settlesAt(application, expected)) << complaintAbout(expected, application.state());
  }

  // Somebody who goes on once the application has the keyboard again.
  void expectTargetInFront(xcb_window_t window) {
    ASSERT_TRUE(waitUntil([&] { return activeWindow(stage().connection()) == window; },
                          std::chrono::seconds(20)));
  }

  ManagedWindow m_window;

 private:
  AccessibleText m_field{stage().bus().accessibilityAddress()};
};

class FillInFormAbove : public FillInForm, public testing::WithParamInterface<Place> {
 protected:
  FillInFormAbove() : FillInForm(std::get<WindowManagerKind>(GetParam())) {}
};

TEST_P(FillInFormAbove, hasItsTextTypedIntoTheApplicationThatWasInFront) {
  startWithLetter(std::get<TargetKind>(GetParam()));
  const xcb_window_t application = activeWindow(stage().connection());
  person().type(u"x "_s);
  openForm();
  fillIn(u"Ada"_s);
  person().tap(XKB_KEY_Return);
  expectLetter(target(), u"x "_s, u"Ada"_s);
  expectFormGone();
  expectTargetInFront(application);
  expectNothingHeld();
}

INSTANTIATE_TEST_SUITE_P(, FillInFormAbove,
                         testing::Combine(testing::Values(WindowManagerKind::openbox),
                                          testing::Values(TargetKind::xterm, TargetKind::mousepad,
                                                          TargetKind::qt6, TargetKind::chromium)),
                         nameOfPlace);

INSTANTIATE_TEST_SUITE_P(PreventedFromStealing, FillInFormAbove,
                         testing::Combine(testing::Values(WindowManagerKind::xfwm4),
                                          testing::Values(TargetKind::xterm, TargetKind::mousepad,
                                                          TargetKind::qt6)),
                         nameOfPlace);

class FillInFormUnder : public FillInForm, public testing::WithParamInterface<WindowManagerKind> {
 protected:
  FillInFormUnder() : FillInForm(GetParam()) {}
};

TEST_F(FillInForm, goesFromFieldToFieldWithTheKeyboard) {
  startWithLetter(TargetKind::qt6);
  openForm();
  fillIn(u"Ada"_s);
  // Past the box of the first field to the second one, whose text is marked then.
  person().tap(XKB_KEY_Tab);
  person().tap(XKB_KEY_Tab);
  expectField(u"Turin"_s);
  fillIn(u"Rome"_s);
  person().tap(XKB_KEY_Return);
  expectLetter(target(), u""_s, u"Ada"_s, u"Rome"_s);
}

// What reaches the application before the form has the keyboard is moved to the first field, in
// place of its default, and all that comes after it follows.
TEST_P(FillInFormUnder, losesNoKeyOfSomebodyWhoTypesOn) {
  start(TargetKind::qt6, {{u";d"_s, u"Dear {{field:Name:Somebody}}"_s}});
  const QString name = u"Ada Lovelace"_s;
  person().type(u";d"_s + name, {.interval = std::chrono::milliseconds(60)});
  ASSERT_TRUE(waitForWindow(stage().connection(), title).has_value());
  expectField(name);
  person().tap(XKB_KEY_Return);
  expectText(u"Dear "_s + name);
}

// As on a machine that is too busy to open the form before the next letters come.
TEST_P(FillInFormUnder, takesOverWhatWasTypedIntoTheApplicationBeforeItCame) {
  startWithLetter(TargetKind::qt6);
  program().process().sendSignal(SIGSTOP);
  person().type(u"x ;dAda L"_s);
  program().process().sendSignal(SIGCONT);
  ASSERT_TRUE(waitForWindow(stage().connection(), title).has_value());
  expectField(u"Ada L"_s);
  person().tap(XKB_KEY_Return);
  expectLetter(target(), u"x "_s, u"Ada L"_s);
}

TEST_P(FillInFormUnder, leavesTheTriggerWhereItIsWhenItIsCancelled) {
  startWithLetter(TargetKind::qt6);
  const xcb_window_t application = activeWindow(stage().connection());
  openForm();
  fillIn(u"Ada"_s);
  person().tap(XKB_KEY_Escape);
  expectFormGone();
  expectTargetInFront(application);
  person().type(u" ;ok"_s);
  expectText(u";d Ωk"_s);
}

// A program that the user has been in tells a window manager since when they have not.
TEST_P(FillInFormUnder, hasTheKeyboardAgainOnceTheUserHasTypedElsewhere) {
  startWithLetter(TargetKind::qt6);
  const xcb_window_t application = activeWindow(stage().connection());
  openForm();
  fillIn(u"Ada"_s);
  person().tap(XKB_KEY_Escape);
  expectFormGone();
  expectTargetInFront(application);
  person().type(u" x "_s);
  expectText(u";d x "_s);
  openForm();
  fillIn(u"Bob"_s);
  person().tap(XKB_KEY_Return);
  expectLetter(target(), u";d x "_s, u"Bob"_s);
}

INSTANTIATE_TEST_SUITE_P(, FillInFormUnder,
                         testing::Values(WindowManagerKind::openbox, WindowManagerKind::xfwm4),
                         nameOfWindowManager);

TEST_F(FillInForm, isCancelledByTheButtonOfItsWindowToo) {
  startWithLetter(TargetKind::qt6);
  const xcb_window_t application = activeWindow(stage().connection());
  openForm();
  ASSERT_TRUE(closeWindow(stage().connection(), m_window));
  expectTargetInFront(application);
  person().type(u" ;ok"_s);
  expectText(u";d Ωk"_s);
}

// What comes to the front in place of the application is not written into.
TEST_F(FillInForm, outlivesTheApplicationThatItIsFor) {
  stage().startProgram(programPath(), {{u";d"_s, letter}});
  const auto other = stage().makeTarget(TargetKind::xterm);
  other->start(person());
  const xcb_window_t otherWindow = activeWindow(stage().connection());
  person().type(u"abc"_s);
  EXPECT_TRUE(settlesAt(*other, {.text = u"abc"_s, .caret = 3}));
  stage().startTarget(TargetKind::qt6);
  openForm();
  target().close();
  fillIn(u"Ada"_s);
  person().tap(XKB_KEY_Return);
  expectFormGone();
  expectTargetInFront(otherWindow);
  // Another letter takes the same way, behind the first.
  openForm();
  fillIn(u"Eve"_s);
  person().tap(XKB_KEY_Return);
  expectLetter(*other, u"abc"_s, u"Eve"_s);
  expectNothingHeld();
}

TEST_F(FillInForm, goesWithTheProgram) {
  startWithLetter(TargetKind::qt6);
  openForm();
  EXPECT_EQ(program().terminate(), ExitStatus{});
  expectFormGone();
  EXPECT_EQ(target().state().text, u";d"_s);
}

}  // namespace
}  // namespace zarvy::e2e
