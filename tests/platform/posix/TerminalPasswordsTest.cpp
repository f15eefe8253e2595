#include <cstdlib>
#include <fcntl.h>
#include <pty.h>
#include <set>
#include <string>
#include <termios.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "base/posix/FileDescriptor.h"
#include "e2e/harness/WaitUntil.h"
#include "platform/posix/PseudoTerminals.h"
#include "platform/posix/TerminalPasswords.h"

using namespace std::chrono_literals;

namespace zarvy {
namespace {

// A tab of a terminal that is this process, with the modes that a shell sets.
class Tab {
 public:
  Tab() {
    int master = -1;
    int slave = -1;
    if (::openpty(&master, &slave, nullptr, nullptr, nullptr) != 0) return;
    m_master = FileDescriptor(master);
    m_slave = FileDescriptor(slave);
  }

  [[nodiscard]] int number() const {
    return std::stoi(std::string(::ttyname(m_slave.get())).substr(std::string("/dev/pts/").size()));
  }

  void set(tcflag_t on, tcflag_t off) const {
    termios modes{};
    ASSERT_EQ(::tcgetattr(m_slave.get(), &modes), 0);
    modes.c_lflag = (modes.c_lflag | on) & ~off;
    ASSERT_EQ(::tcsetattr(m_slave.get(), TCSANOW, &modes), 0);
  }

  void leaveOutputAsItIs() const {
    termios modes{};
    ASSERT_EQ(::tcgetattr(m_slave.get(), &modes), 0);
    modes.c_oflag &= ~tcflag_t{ONLCR};
    ASSERT_EQ(::tcsetattr(m_slave.get(), TCSANOW, &modes), 0);
  }

  void askForPassword() const { set(ICANON, ECHO); }
  void readLine() const { set(ICANON | ECHO, 0); }

 private:
  FileDescriptor m_master;
  FileDescriptor m_slave;
};

TEST(PseudoTerminals, AreKnownByTheirNumbers) {
  EXPECT_EQ(pseudoTerminalsOf(::getpid()), std::vector<int>());
  const Tab first;
  const Tab second;
  const std::vector<int> found = pseudoTerminalsOf(::getpid());
  EXPECT_EQ(std::set<int>(found.begin(), found.end()),
            (std::set<int>{first.number(), second.number()}));
  EXPECT_EQ(pseudoTerminalsOf(-1), std::vector<int>());
}

TEST(PseudoTerminals, ReadHiddenLinesOnlyForPrompts) {
  const Tab tab;
  EXPECT_FALSE(readsHiddenLine(tab.number()));
  tab.askForPassword();
  EXPECT_TRUE(readsHiddenLine(tab.number()));
  tab.set(0, ICANON | ECHO);  // an editor
  EXPECT_FALSE(readsHiddenLine(tab.number()));
  tab.readLine();
  EXPECT_FALSE(readsHiddenLine(tab.number()));
  tab.askForPassword();
  tab.leaveOutputAsItIs();  // a shell within an editor
  EXPECT_FALSE(readsHiddenLine(tab.number()));
  EXPECT_FALSE(readsHiddenLine(123456));
}

class TerminalPasswordsTest : public testing::Test {
 protected:
  void start() {
    m_passwords.start([this] { ++m_ends; });
  }

  int m_ends = 0;
  qint64 m_owner = 0;
  TerminalPasswords m_passwords{[this] { return m_owner; }};
};

TEST_F(TerminalPasswordsTest, AreSecretAsLongAsThePromptReads) {
  const Tab tab;
  start();
  m_passwords.follow(::getpid());
  EXPECT_FALSE(m_passwords.mustNotBeHeard());
  tab.askForPassword();
  EXPECT_TRUE(m_passwords.mustNotBeHeard());
  EXPECT_TRUE(m_passwords.isSecureEventInputEnabled());
  EXPECT_EQ(m_passwords.ownerProcessIdentifier(), ::getpid());
  EXPECT_EQ(m_ends, 0);
  tab.readLine();
  EXPECT_TRUE(m_passwords.mustNotBeHeard()) << "the key may have been typed before the end";
  EXPECT_EQ(m_ends, 1);
  EXPECT_FALSE(m_passwords.mustNotBeHeard());
  EXPECT_EQ(m_ends, 1);
}

TEST_F(TerminalPasswordsTest, DoNotCountWhereAnotherApplicationHasTheKeyboard) {
  const Tab tab;
  tab.askForPassword();
  start();
  m_passwords.follow(::getppid());
  EXPECT_FALSE(m_passwords.mustNotBeHeard());
  m_passwords.follow(::getpid());
  EXPECT_TRUE(m_passwords.mustNotBeHeard());
  m_passwords.follow(0);
  EXPECT_FALSE(m_passwords.mustNotBeHeard());
  EXPECT_EQ(m_passwords.ownerProcessIdentifier(), std::nullopt);
  EXPECT_EQ(m_ends, 1);
}

TEST_F(TerminalPasswordsTest, AreFoundWhereTheKeyboardIsWithThePointer) {
  const Tab tab;
  tab.askForPassword();
  start();
  m_passwords.follow(::getppid());
  m_owner = ::getpid();
  EXPECT_FALSE(m_passwords.mustNotBeHeard()) << "the display tells who has it";
  m_passwords.follow(0);
  EXPECT_TRUE(m_passwords.mustNotBeHeard());
  EXPECT_EQ(m_passwords.ownerProcessIdentifier(), ::getpid());
  m_owner = ::getppid();
  EXPECT_TRUE(e2e::waitUntil([this] { return !m_passwords.mustNotBeHeard(); }, 30s))
      << "the pointer goes to another window without a word";
}

TEST_F(TerminalPasswordsTest, AreFoundWithThePointerWhereTheyAreOlderThanTheStart) {
  const Tab tab;
  tab.askForPassword();
  m_owner = ::getpid();
  m_passwords.follow(0);
  start();
  EXPECT_TRUE(m_passwords.mustNotBeHeard());
}

TEST_F(TerminalPasswordsTest, CountInEveryTab) {
  const Tab first;
  const Tab second;
  start();
  m_passwords.follow(::getpid());
  second.askForPassword();
  EXPECT_TRUE(m_passwords.mustNotBeHeard());
}

TEST_F(TerminalPasswordsTest, AreNotAskedForBeforeTheStart) {
  const Tab tab;
  tab.askForPassword();
  m_passwords.follow(::getpid());
  EXPECT_FALSE(m_passwords.mustNotBeHeard());
  start();
  EXPECT_TRUE(m_passwords.mustNotBeHeard());
}

}  // namespace
}  // namespace zarvy
