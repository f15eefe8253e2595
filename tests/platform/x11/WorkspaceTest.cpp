#include <sys/wait.h>
#include <unistd.h>

#include <QFile>

#include <gtest/gtest.h>

#include "platform/Workspace.h"
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

TEST(X11Workspace, ActivatesNoApplicationThatHasGone) {
  KeyboardDesk desk({.layouts = "us"});
  Workspace& workspace = desk.session().workspace();
  auto application = workspace.frontmostApplication();
  ASSERT_TRUE(application);
  EXPECT_TRUE(workspace.activate(*application));
  application->nativeWindow = xcb_generate_id(desk.connection().get());
  EXPECT_FALSE(workspace.activate(*application));
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
