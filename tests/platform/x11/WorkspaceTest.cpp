#include <gtest/gtest.h>

#include "platform/Workspace.h"
#include "platform/x11/KeyboardDesk.h"

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

}  // namespace
}  // namespace zarvy::x11
