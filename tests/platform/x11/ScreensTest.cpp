// A display with two screens, each with its own root window and window manager.

#include <memory>
#include <string>

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "e2e/harness/PrivateXServer.h"
#include "e2e/harness/WaitUntil.h"
#include "e2e/harness/XConnection.h"
#include "platform/x11/connection/Connection.h"
#include "platform/x11/windows/WindowProperties.h"

namespace zarvy::x11 {
namespace {

using namespace std::chrono_literals;

class TwoScreens : public testing::Test {
 protected:
  TwoScreens()
      : m_server(m_folder.path().toStdString(), {"-screen", "1", "640x480x24"}),
        m_theirs(m_server.display()) {
    qputenv("DISPLAY", m_server.display().c_str());
    QString reason;
    m_ours = Connection::open(&reason);
  }

  // A window of `process` that is, to its screen's window manager, the active one.
  xcb_window_t activeWindowOn(xcb_window_t root, uint32_t process) {
    xcb_connection_t* xcb = m_theirs.get();
    const xcb_window_t window = xcb_generate_id(xcb);
    xcb_create_window(xcb, XCB_COPY_FROM_PARENT, window, root, 0, 0, 10, 10, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_map_window(xcb, window);
    for (const char* property : {"_NET_ACTIVE_WINDOW", "_NET_CLIENT_LIST"}) {
      xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, root, m_theirs.atom(property),
                          XCB_ATOM_WINDOW, 32, 1, &window);
    }
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, window, m_theirs.atom("_NET_WM_PID"),
                        XCB_ATOM_CARDINAL, 32, 1, &process);
    m_theirs.synchronise();
    return window;
  }

  [[nodiscard]] bool focus(xcb_window_t window) {
    xcb_connection_t* xcb = m_theirs.get();
    return e2e::waitUntil(
        [&] {
          xcb_set_input_focus(xcb, XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
          const auto focus =
              e2e::owned(xcb_get_input_focus_reply(xcb, xcb_get_input_focus(xcb), nullptr));
          return focus && focus->focus == window;
        },
        5000ms);
  }

  QTemporaryDir m_folder;
  e2e::PrivateXServer m_server;
  e2e::XConnection m_theirs;
  std::unique_ptr<Connection> m_ours;
};

TEST_F(TwoScreens, HaveTheActiveWindowOnTheOneWithTheFocus) {
  ASSERT_EQ(m_ours->roots().size(), 2U);
  const WindowProperties windows(*m_ours);
  const xcb_window_t first = activeWindowOn(m_ours->roots()[0], 11);
  const xcb_window_t second = activeWindowOn(m_ours->roots()[1], 12);
  ASSERT_TRUE(focus(second));
  EXPECT_EQ(windows.activeWindow(), second);
  EXPECT_EQ(windows.rootOf(second), m_ours->roots()[1]);
  EXPECT_EQ(windows.windowOfProcess(11), first);
  ASSERT_TRUE(focus(first));
  EXPECT_EQ(windows.activeWindow(), first);
  EXPECT_EQ(windows.windowOfProcess(12), second);
}

}  // namespace
}  // namespace zarvy::x11
