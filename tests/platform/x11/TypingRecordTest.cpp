// What a run of the program that died while it typed has left down, and the next one finds.

#include <csignal>
#include <memory>
#include <sys/wait.h>
#include <unistd.h>

#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "e2e/harness/InputDevices.h"
#include "e2e/harness/Person.h"
#include "e2e/harness/PrivateXServer.h"
#include "e2e/harness/WaitUntil.h"
#include "e2e/harness/Xkb.h"
#include "platform/x11/capture/OwnPosts.h"
#include "platform/x11/connection/Connection.h"
#include "platform/x11/typing/KeySender.h"
#include "platform/x11/typing/TypingRecord.h"

namespace zarvy::x11 {
namespace {

using namespace std::chrono_literals;
using Keys = std::set<std::uint8_t>;

class KeysLeftDown : public testing::Test {
 protected:
  KeysLeftDown()
      : m_server(m_folder.path().toStdString()),
        m_theirs(m_server.display()),
        m_hands(m_theirs),
        m_keyboard(e2e::serverKeyboardId(m_theirs)) {
    qputenv("DISPLAY", m_server.display().c_str());
  }

  // On both keyboards, a letter and a modifier.
  void leaveKeysDown() {
    m_hands.press(XKB_KEY_q, e2e::Body::serverKeyboard);
    m_hands.press(XKB_KEY_Shift_L, e2e::Body::serverKeyboard);
    m_hands.press(XKB_KEY_w);
    m_hands.press(XKB_KEY_Shift_R);
    ASSERT_EQ(held(), (Keys{keyQ, keyW, leftShift, rightShift}));
  }

  [[nodiscard]] Keys held() const {
    m_theirs.synchronise();
    return e2e::heldKeys(m_theirs);
  }

  [[nodiscard]] static std::unique_ptr<Connection> connect() {
    QString reason;
    return Connection::open(&reason);
  }

  static void releaseAtStart() {
    const auto connection = connect();
    OwnPosts posts;
    KeySender sender(*connection, posts);
    releaseKeysLeftDown(*connection, sender);
    connection->synchronize();
  }

  static constexpr uint8_t keyQ = 24;
  static constexpr uint8_t keyW = 25;
  static constexpr uint8_t leftShift = 50;
  static constexpr uint8_t rightShift = 62;

  QTemporaryDir m_folder;
  e2e::PrivateXServer m_server;
  e2e::XConnection m_theirs;
  e2e::Person m_hands;
  const uint16_t m_keyboard;
};

TEST_F(KeysLeftDown, GoUpAllWhereTheRecordSaysThatARunDied) {
  const auto dead = connect();
  TypingRecord(*dead).write(m_keyboard);
  dead->synchronize();
  leaveKeysDown();
  releaseAtStart();
  EXPECT_EQ(held(), Keys());
  EXPECT_FALSE(TypingRecord::read(*dead).has_value());
}

// They may be another program's.
TEST_F(KeysLeftDown, AreModifiersOfTheKeyboardForFakedKeysWhereThereIsNoRecord) {
  leaveKeysDown();
  releaseAtStart();
  EXPECT_EQ(held(), (Keys{keyQ, keyW, leftShift}));
}

TEST_F(KeysLeftDown, AreAsTheyWereWhereAllHasBeenTyped) {
  const auto ended = connect();
  TypingRecord record(*ended);
  record.write(m_keyboard);
  record.erase();
  ended->synchronize();
  leaveKeysDown();
  releaseAtStart();
  EXPECT_EQ(held(), (Keys{keyQ, keyW, leftShift}));
}

// Another user's, or that of another data folder.
TEST_F(KeysLeftDown, AreThoseOfARunThatIsStillTyping) {
  const pid_t other = ::fork();
  if (other == 0) {
    const auto connection = connect();
    TypingRecord(*connection).write(m_keyboard);
    connection->synchronize();
    for (;;) ::pause();
  }
  const auto ours = connect();
  ASSERT_TRUE(e2e::waitUntil([&] { return TypingRecord::read(*ours).has_value(); }, 10s));
  leaveKeysDown();
  releaseAtStart();
  EXPECT_EQ(held().size(), 4U);
  ::kill(other, SIGKILL);
  ASSERT_EQ(::waitpid(other, nullptr, 0), other);
  releaseAtStart();
  EXPECT_EQ(held(), Keys());
}

TEST_F(KeysLeftDown, GoUpForAProcessThatDiedAndForNoOther) {
  const auto dead = connect();
  TypingRecord(*dead).write(m_keyboard);
  dead->synchronize();
  leaveKeysDown();
  releaseKeysOfDeadProcess(::getppid());
  EXPECT_EQ(held().size(), 4U) << "another one types now";
  releaseKeysOfDeadProcess(::getpid());
  EXPECT_EQ(held(), Keys());
}

}  // namespace
}  // namespace zarvy::x11
