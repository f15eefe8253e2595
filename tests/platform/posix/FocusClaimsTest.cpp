#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "platform/posix/FocusClaims.h"

namespace zarvy {
namespace {

// Numbers that no process has.
constexpr pid_t editor = 0x7ffffff1;
constexpr pid_t liar = 0x7ffffff2;

class FocusClaimsTest : public testing::Test {
 protected:
  pid_t m_owner = 0;
  FocusClaims m_claims{[this] { return m_owner; }};
};

TEST_F(FocusClaimsTest, AreTrueOfWhoHasTheKeyboard) {
  m_owner = editor;
  EXPECT_TRUE(m_claims.isCredible(editor));
}

TEST_F(FocusClaimsTest, AreFalseOfAnotherWhereWhoHasTheKeyboardSpeaksForItself) {
  m_owner = editor;
  EXPECT_TRUE(m_claims.isCredible(editor));
  EXPECT_FALSE(m_claims.isCredible(liar));
  m_owner = liar;
  EXPECT_TRUE(m_claims.isCredible(liar));
  EXPECT_FALSE(m_claims.isCredible(editor));
}

// It may speak through another process.
TEST_F(FocusClaimsTest, AreBelievedWhereTheOwnerOfTheKeyboardHasSaidNothing) {
  m_owner = editor;
  EXPECT_TRUE(m_claims.isCredible(liar));
}

TEST_F(FocusClaimsTest, AreBelievedWhereTheOwnerOfTheKeyboardIsNotKnown) {
  m_owner = editor;
  EXPECT_TRUE(m_claims.isCredible(editor));
  m_owner = 0;
  EXPECT_TRUE(m_claims.isCredible(liar));
  m_owner = editor;
  EXPECT_TRUE(m_claims.isCredible(0)) << "the bus has not told who it is";
}

TEST_F(FocusClaimsTest, AreBelievedOfTheKinOfWhoHasTheKeyboard) {
  const pid_t child = ::fork();
  if (child == 0) {
    for (;;) ::pause();
  }
  m_owner = ::getpid();
  EXPECT_TRUE(m_claims.isCredible(::getpid()));
  EXPECT_TRUE(m_claims.isCredible(child));
  EXPECT_FALSE(m_claims.isCredible(liar));
  EXPECT_FALSE(m_claims.isCredible(1)) << "everybody's ancestor";
  m_owner = child;
  EXPECT_TRUE(m_claims.isCredible(child));
  EXPECT_TRUE(m_claims.isCredible(::getpid()));
  ::kill(child, SIGKILL);
  ::waitpid(child, nullptr, 0);
}

}  // namespace
}  // namespace zarvy
