#include <gtest/gtest.h>

#include "platform/Workspace.h"
#include "platform/x11/KeyboardDesk.h"

namespace zarvy::x11 {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(X11Workspace, HasNoApplicationInFrontWhereNoWindowSaysWhoItIs) {
  KeyboardDesk desk({.layouts = "us"});
  EXPECT_EQ(desk.session().workspace().frontmostApplication(), std::nullopt);
}

TEST(X11Workspace, KnowsItsOwnIdentifier) {
  KeyboardDesk desk({.layouts = "us"});
  EXPECT_EQ(desk.session().workspace().ownBundleIdentifier(), u"zarvy-test"_s);
}

}  // namespace
}  // namespace zarvy::x11
