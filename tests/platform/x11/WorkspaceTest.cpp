#include <array>
#include <sys/wait.h>
#include <unistd.h>

#include <QFile>

#include <gtest/gtest.h>

#include "platform/Workspace.h"
#include "platform/x11/BareWindow.h"
#include "platform/x11/KeyboardDesk.h"
#include "support/QtPrinters.h"

namespace zarvy::x11 {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(X11Workspace, FindsTheFocusedWindowWithoutAWindowManagerAndWithoutProperties) {
  KeyboardDesk desk({.layouts = "us"});
  const auto application = desk.session().workspace().frontmostApplication();
  ASSERT_TRUE(application);
  EXPECT_EQ(application->bundleIdentifier, std::nullopt);
  EXPECT_EQ(application->processIdentifier, 0);
  EXPECT_NE(application->nativeWindow, 0U);
  EXPECT_TRUE(desk.session().workspace().isActive(*application));
}

TEST(X11Workspace, KnowsItsOwnIdentifier) {
  KeyboardDesk desk({.layouts = "us"});
  EXPECT_EQ(desk.session().workspace().ownBundleIdentifier(), u"zarvy-test"_s);
}

TEST(X11Workspace, NamesALivingProcessWithoutAManagedWindowAfterItself) {
  KeyboardDesk desk({.layouts = "us"});
  QFile name(u"/proc/self/comm"_s);
  ASSERT_TRUE(name.open(QIODevice::ReadOnly));
  const auto application = desk.session().workspace().runningApplication(getpid());
  ASSERT_TRUE(application);
  EXPECT_EQ(application->processIdentifier, getpid());
  EXPECT_EQ(application->localizedName, QString::fromUtf8(name.readAll()).trimmed());
  EXPECT_EQ(application->nativeWindow, 0U);
}

class Activation : public testing::Test {
 protected:
  [[nodiscard]] Workspace& workspace() { return m_desk.session().workspace(); }
  [[nodiscard]] const e2e::XConnection& connection() { return m_desk.connection(); }

  // As an application would give them.
  void setIdentity(xcb_window_t window, uint32_t process, const std::string& windowClass) {
    const std::string classes = windowClass + '\0' + windowClass + '\0';
    xcb_change_property(connection().get(), XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS,
                        XCB_ATOM_STRING, 8, static_cast<uint32_t>(classes.size()), classes.data());
    xcb_change_property(connection().get(), XCB_PROP_MODE_REPLACE, window,
                        connection().atom("_NET_WM_PID"), XCB_ATOM_CARDINAL, 32, 1, &process);
    connection().synchronise();
  }

  // The application of `window`, which has the focus for a moment.
  [[nodiscard]] RunningApplication applicationOf(BareWindow& window) {
    window.focus();
    const auto application = workspace().frontmostApplication();
    EXPECT_TRUE(application && application->nativeWindow == window.id());
    m_other.focus();
    return application.value_or(RunningApplication{});
  }

  [[nodiscard]] bool hasFocus(const BareWindow& window) {
    const auto application = workspace().frontmostApplication();
    return application && application->nativeWindow == window.id();
  }

  KeyboardDesk m_desk{{.layouts = "us"}};
  BareWindow m_window{connection()};
  BareWindow m_other{connection()};
};

TEST_F(Activation, TellsWhereTheWindowInFrontIs) {
  const std::array<uint32_t, 4> place{120, 80, 300, 200};
  m_window.focus();
  xcb_configure_window(connection().get(), m_window.id(),
                       XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                           XCB_CONFIG_WINDOW_HEIGHT,
                       place.data());
  connection().synchronise();
  EXPECT_EQ(workspace().frontmostWindowArea(), QRect(120, 80, 300, 200));
}

TEST_F(Activation, GivesTheFocusWhereNoWindowManagerDoes) {
  setIdentity(m_window.id(), 17, "Editor");
  const RunningApplication application = applicationOf(m_window);
  EXPECT_FALSE(workspace().isActive(application));
  EXPECT_TRUE(workspace().activate(application));
  EXPECT_TRUE(hasFocus(m_window));
  EXPECT_TRUE(workspace().isActive(application));
}

TEST_F(Activation, OfAnApplicationThatHasGoneDoesNothing) {
  auto gone = std::make_optional<BareWindow>(connection());
  const RunningApplication application = applicationOf(*gone);
  gone.reset();
  EXPECT_FALSE(workspace().activate(application));
  EXPECT_TRUE(hasFocus(m_other));
}

TEST_F(Activation, OfAHiddenWindowDoesNothing) {
  const RunningApplication application = applicationOf(m_window);
  m_window.unmap();
  EXPECT_FALSE(workspace().activate(application));
  EXPECT_TRUE(hasFocus(m_other));
}

// The server gives the number to the next one who asks.
TEST_F(Activation, TakesNoOtherApplicationForItThatHasGotTheNumberOfItsWindow) {
  setIdentity(m_window.id(), 17, "Editor");
  const RunningApplication application = applicationOf(m_window);
  setIdentity(m_window.id(), 18, "Editor");
  EXPECT_FALSE(workspace().activate(application));
  m_window.focus();
  EXPECT_FALSE(workspace().isActive(application));
}

// Each sandbox counts its processes for itself.
TEST_F(Activation, TakesNoOtherApplicationForItThatHasTheNumberOfItsProcess) {
  setIdentity(m_window.id(), 2, "Editor");
  const RunningApplication application = applicationOf(m_window);
  setIdentity(m_other.id(), 2, "Browser");
  m_other.focus();
  EXPECT_FALSE(workspace().isActive(application));
  m_window.unmap();
  EXPECT_FALSE(workspace().activate(application));
}

TEST(X11Workspace, KnowsNoApplicationOfAProcessThatHasGone) {
  KeyboardDesk desk({.layouts = "us"});
  const pid_t child = fork();
  if (child == 0) _exit(0);
  ASSERT_GT(child, 0);
  ASSERT_EQ(waitpid(child, nullptr, 0), child);
  EXPECT_FALSE(desk.session().workspace().runningApplication(child));
}

}  // namespace
}  // namespace zarvy::x11
