// When the mapping of scratch keys changes, on a real X server.

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <QString>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "e2e/harness/KeyboardLayout.h"
#include "e2e/harness/Person.h"
#include "e2e/harness/PrivateXServer.h"
#include "e2e/harness/XConnection.h"
#include "platform/x11/connection/Connection.h"
#include "platform/x11/keyboard/LiveKeymap.h"
#include "platform/x11/keyboard/OwnMapChanges.h"
#include "platform/x11/typing/ScratchKeys.h"
#include "platform/x11/typing/TargetBarrier.h"
#include "platform/x11/windows/WindowProperties.h"

namespace zarvy::x11 {
namespace {

class ScratchKeysOnServer : public testing::Test {
 protected:
  ScratchKeysOnServer()
      : m_server(m_folder.path().toStdString()),
        m_environment(e2e::environmentWithHome(m_folder.path().toStdString())),
        m_theirs(m_server.display()),
        m_person(m_theirs),
        m_ours(connect(m_server.display())),
        m_keymap(LiveKeymap::create(*m_ours, m_ownChanges,
                                    static_cast<uint16_t>(m_ours->coreKeyboard()))),
        m_windows(*m_ours),
        m_barrier(*m_ours, m_windows, nullptr),
        m_scratchKeys(*m_ours, m_ownChanges, *m_keymap, m_barrier, m_windows, [this] { wait(); }) {
    m_environment["DISPLAY"] = m_server.display();
    m_scratchKeys.follow();
    m_before = symbols();
  }

  // The mapping of the server's own keyboard, as other clients are told it once that keyboard is
  // used.
  [[nodiscard]] std::string symbols() {
    m_ours->synchronize();
    m_person.press(XKB_KEY_space, e2e::Body::serverKeyboard);
    m_person.release(XKB_KEY_space, e2e::Body::serverKeyboard);
    return e2e::dumpMapping(m_theirs, m_environment).symbols;
  }

  void wait() {
    m_symbolsAtWaits.push_back(symbols());
    if (m_meanwhile) m_meanwhile(m_symbolsAtWaits.size());
  }

  void holdShift() {
    m_person.press(XKB_KEY_Shift_L, e2e::Body::serverKeyboard);
    m_theirs.synchronise();
  }

  void makeRoomForOne() {
    constexpr char32_t offTheLayout[] = {U'\u0436'};
    m_scratchKeys.makeRoom(offTheLayout);
  }

  static std::unique_ptr<Connection> connect(const std::string& display) {
    qputenv("DISPLAY", display.c_str());
    QString reason;
    return Connection::open(&reason);
  }

  QTemporaryDir m_folder;
  e2e::PrivateXServer m_server;
  e2e::Environment m_environment;
  e2e::XConnection m_theirs;
  e2e::Person m_person;
  std::unique_ptr<Connection> m_ours;
  OwnMapChanges m_ownChanges;
  std::unique_ptr<LiveKeymap> m_keymap;
  WindowProperties m_windows;
  TargetBarrier m_barrier;
  ScratchKeys m_scratchKeys;
  std::string m_before;
  std::vector<std::string> m_symbolsAtWaits;
  std::function<void(std::size_t)> m_meanwhile;  // is told which wait it is, from 1
};

TEST_F(ScratchKeysOnServer, ChangeOnceModifiersAreUnused) {
  makeRoomForOne();
  EXPECT_TRUE(m_symbolsAtWaits == std::vector{m_before});
  const std::string changed = symbols();
  EXPECT_TRUE(changed != m_before);
  m_scratchKeys.giveBack();
  EXPECT_TRUE(m_symbolsAtWaits == (std::vector{m_before, changed}));
  EXPECT_TRUE(symbols() == m_before);
}

TEST_F(ScratchKeysOnServer, WaitAgainForAModifierThatIsPressedAfterTheWait) {
  m_meanwhile = [this](std::size_t wait) {
    if (wait == 1) holdShift();
    if (wait == 3) m_person.releaseAll();
    m_theirs.synchronise();
  };
  makeRoomForOne();
  EXPECT_EQ(m_symbolsAtWaits.size(), 3U);
  EXPECT_TRUE(m_symbolsAtWaits == std::vector(m_symbolsAtWaits.size(), m_before));
  EXPECT_TRUE(symbols() != m_before);
}

TEST_F(ScratchKeysOnServer, ChangeAllTheSameWhereAModifierIsHeldForLong) {
  m_meanwhile = [this](std::size_t wait) {
    if (wait == 1) holdShift();
  };
  makeRoomForOne();
  EXPECT_EQ(m_symbolsAtWaits.size(), 5U);
  EXPECT_TRUE(m_symbolsAtWaits == std::vector(m_symbolsAtWaits.size(), m_before));
  EXPECT_TRUE(symbols() != m_before);
}

}  // namespace
}  // namespace zarvy::x11
