// What is told of the window that has the keyboard, and of keys by it, on a real X server.

#include <gtest/gtest.h>

#include "e2e/harness/WaitUntil.h"
#include "platform/x11/BareWindow.h"
#include "platform/x11/KeyboardDesk.h"
#include "platform/x11/windows/WindowOwner.h"
#include "support/QtPrinters.h"

namespace zarvy::x11 {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

class FocusMoves : public testing::Test {
 protected:
  [[nodiscard]] bool hasMoved(int times) {
    return e2e::waitUntil([&] { return m_desk.focusMoves() == times; }, 10s);
  }

  [[nodiscard]] const e2e::XConnection& connection() { return m_desk.connection(); }

  KeyboardDesk m_desk{{.layouts = "us"}};
};

TEST_F(FocusMoves, AreToldFromWindowToWindowAndOutOfNowhere) {
  ASSERT_EQ(m_desk.focusMoves(), 1) << "the one at the beginning";
  BareWindow first(connection());
  first.focus();
  EXPECT_TRUE(hasMoved(2));
  xcb_set_input_focus(connection().get(), XCB_INPUT_FOCUS_NONE, XCB_INPUT_FOCUS_NONE,
                      XCB_CURRENT_TIME);
  connection().synchronise();
  EXPECT_TRUE(hasMoved(3));
  BareWindow second(connection());
  second.focus();
  EXPECT_TRUE(hasMoved(4));
}

// What was typed before stands in front of another caret.
TEST_F(FocusMoves, HaveWhatWasTypedForgotten) {
  BareWindow first(connection());
  BareWindow second(connection());
  first.focus();
  ASSERT_TRUE(hasMoved(2));
  m_desk.person().type(u"a"_s);
  second.focus();
  ASSERT_TRUE(hasMoved(3));
  m_desk.person().type(u"s"_s);
  std::vector<quint16> keys;
  for (const KeyEvent& event : m_desk.heard(4)) keys.push_back(event.keyCode);
  EXPECT_EQ(keys, (std::vector<quint16>{KeyboardDesk::forgetting, 0, KeyboardDesk::forgetting, 1}));
}

TEST_F(FocusMoves, AreOfWindowsThatSayOnWhichConnectionTheyWereMade) {
  const BareWindow window(connection());
  const e2e::XConnection other(m_desk.server().display());
  EXPECT_TRUE(isMadeOn(connection().get(), window.id()));
  EXPECT_FALSE(isMadeOn(other.get(), window.id()));
  EXPECT_FALSE(isMadeOn(connection().get(), connection().root()));
  EXPECT_FALSE(isMadeOn(connection().get(), XCB_WINDOW_NONE));
}

// However late the toolkit believes it.
TEST_F(FocusMoves, DecideForWhomAKeyIs) {
  const e2e::XConnection program(m_desk.server().display());
  m_desk.setOwnClient(program);
  BareWindow own(program);
  BareWindow other(connection());
  own.focus();
  ASSERT_TRUE(hasMoved(2));
  m_desk.person().type(u"ab"_s);
  other.focus();
  m_desk.person().type(u"cd"_s);
  m_desk.letAdaptersCatchUp();
  EXPECT_EQ(m_desk.heardText(0), u"cd"_s);
  m_desk.closeSession();
}

}  // namespace
}  // namespace zarvy::x11
