// Menus of applications and window managers, which take the keyboard for themselves as secrets do.

#include "e2e/behaviour/BehaviourTest.h"
#include "e2e/behaviour/Place.h"
#include "e2e/harness/StatusNotifierHost.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto deadline = std::chrono::seconds(20);

constexpr unsigned controlAndAlt = 786432;

// The program looks twice a second.
constexpr auto longEnough = std::chrono::seconds(2);

class MenusOfOthers : public BehaviourTest {
 protected:
  using BehaviourTest::BehaviourTest;

  // The server looks at that before it sees that the window which asks is not shown.
  [[nodiscard]] bool isKeyboardGrabbed() {
    xcb_connection_t* const xcb = stage().connection().get();
    const auto reply =
        owned(xcb_grab_keyboard_reply(xcb,
                                      xcb_grab_keyboard(xcb, 0, m_hidden, XCB_CURRENT_TIME,
                                                        XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                      nullptr));
    return reply && reply->status == XCB_GRAB_STATUS_ALREADY_GRABBED;
  }

  [[nodiscard]] QString toolTip() { return m_tray.toolTipOf(program().process().pid()); }

  // The menu that has just been called for opens, and for as long as it is open the icon does not
  // say that typing is blocked.
  void expectNoSecretInMenu() {
    ASSERT_TRUE(waitUntil([&] { return isKeyboardGrabbed(); }, deadline)) << "no menu";
    EXPECT_FALSE(waitUntil([&] { return toolTip() != u"Zarvy"; }, longEnough))
        << toolTip().toStdString();
    ASSERT_TRUE(isKeyboardGrabbed()) << "the menu has gone by itself";
    person().tap(XKB_KEY_Escape);
    EXPECT_TRUE(waitUntil([&] { return !isKeyboardGrabbed(); }, deadline));
  }

  // Alt and Space are left to the window manager.
  void startHere(TargetKind kind) {
    ProgramUnderTest& program = stage().makeProgram(programPath());
    program.writeLibrary({{u";ok"_s, u"Okay"_s}});
    program.writeSettings({.quickSearchModifiers = controlAndAlt});
    program.start();
    stage().startTarget(kind);
    ASSERT_TRUE(waitUntil([&] { return toolTip() == u"Zarvy"; }, deadline));
  }

  [[nodiscard]] xcb_window_t makeHiddenWindow() {
    xcb_connection_t* const xcb = stage().connection().get();
    const xcb_window_t window = xcb_generate_id(xcb);
    xcb_create_window(xcb, XCB_COPY_FROM_PARENT, window, stage().connection().root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    return window;
  }

  const xcb_window_t m_hidden = makeHiddenWindow();
  StatusNotifierHost m_tray{stage().environment().at("DBUS_SESSION_BUS_ADDRESS")};
};

class ContextMenus : public MenusOfOthers, public testing::WithParamInterface<TargetKind> {};

TEST_P(ContextMenus, areNoSecret) {
  startHere(GetParam());
  person().tap(XKB_KEY_Menu);
  expectNoSecretInMenu();
}

INSTANTIATE_TEST_SUITE_P(, ContextMenus,
                         testing::Values(TargetKind::mousepad, TargetKind::qt6,
                                         TargetKind::featherpad),
                         [](const auto& row) { return nameOf(row.param); });

class WindowMenus : public MenusOfOthers, public testing::WithParamInterface<WindowManagerKind> {
 protected:
  WindowMenus() : MenusOfOthers(GetParam()) {}

  // On a busy machine a press may open nothing, perhaps while the window manager takes its keys
  // again; a person presses once more.
  void callForMenu() {
    constexpr int presses = 3;
    for (int press = 0; press < presses; ++press) {
      person().press(XKB_KEY_Alt_L);
      person().tap(XKB_KEY_space);
      person().releaseAll();
      if (waitUntil([&] { return isKeyboardGrabbed(); }, longEnough)) return;
    }
  }
};

TEST_P(WindowMenus, areNoSecret) {
  startHere(TargetKind::qt6);
  callForMenu();
  expectNoSecretInMenu();
}

INSTANTIATE_TEST_SUITE_P(, WindowMenus,
                         testing::Values(WindowManagerKind::openbox, WindowManagerKind::xfwm4),
                         nameOfWindowManager);

}  // namespace
}  // namespace zarvy::e2e
