// Whom the barrier waits for, on a real X server.

#include <atomic>
#include <csignal>
#include <memory>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "e2e/harness/ChildProcess.h"
#include "e2e/harness/PrivateXServer.h"
#include "e2e/harness/WaitUntil.h"
#include "e2e/harness/XConnection.h"
#include "platform/KeyDetour.h"
#include "platform/x11/connection/Connection.h"
#include "platform/x11/typing/ProcessActivity.h"
#include "platform/x11/typing/TargetBarrier.h"
#include "platform/x11/windows/WindowProperties.h"

namespace zarvy::x11 {
namespace {

// A process that sleeps until it is ended.
class Sleeper {
 public:
  Sleeper()
      : m_process({.program = "sleep",
                   .arguments = {"600"},
                   .environment = {{"PATH", getenv("PATH")}},
                   .errorFile = {},
                   .descriptors = {}}) {}
  ~Sleeper() { m_process.sendSignal(SIGCONT); }
  Sleeper(const Sleeper&) = delete;
  Sleeper& operator=(const Sleeper&) = delete;

  [[nodiscard]] pid_t pid() const { return m_process.pid(); }

  // Returns once it has been stopped.
  void stop() {
    m_process.sendSignal(SIGSTOP);
    siginfo_t information{};
    ASSERT_EQ(::waitid(P_PID, static_cast<id_t>(pid()), &information, WSTOPPED | WNOWAIT), 0);
  }

 private:
  e2e::ChildProcess m_process;
};

TEST(ProcessActivity, KnowsAStoppedProcess) {
  Sleeper sleeper;
  EXPECT_FALSE(ProcessActivity(sleeper.pid()).isStopped());
  sleeper.stop();
  EXPECT_TRUE(ProcessActivity(sleeper.pid()).isStopped());
  EXPECT_FALSE(ProcessActivity(0).isStopped());
}

class FakeDetour final : public KeyDetour {
 public:
  std::atomic<qint64> theProcess = 0;
  std::atomic<int> passages = 0;

  [[nodiscard]] qint64 process() override { return theProcess; }
  [[nodiscard]] bool awaitPassage() override {
    ++passages;
    return true;
  }
};

class TargetBarrierOnServer : public testing::Test {
 protected:
  TargetBarrierOnServer()
      : m_server(m_folder.path().toStdString()),
        m_theirs(m_server.display()),
        m_ours(connect(m_server.display())),
        m_windows(*m_ours),
        m_barrier(*m_ours, m_windows, &m_detour),
        m_window(xcb_generate_id(m_theirs.get())) {
    xcb_create_window(m_theirs.get(), XCB_COPY_FROM_PARENT, m_window, m_theirs.root(), 0, 0, 10, 10,
                      0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    m_theirs.synchronise();
  }

  void belongTo(pid_t process, const std::string& machine) {
    const auto number = static_cast<uint32_t>(process);
    xcb_change_property(m_theirs.get(), XCB_PROP_MODE_REPLACE, m_window,
                        m_theirs.atom("_NET_WM_PID"), XCB_ATOM_CARDINAL, 32, 1, &number);
    xcb_change_property(m_theirs.get(), XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_CLIENT_MACHINE,
                        XCB_ATOM_STRING, 8, static_cast<uint32_t>(machine.size()), machine.data());
    m_theirs.synchronise();
  }

  void claimToAnswerPings() {
    const xcb_atom_t ping = m_theirs.atom("_NET_WM_PING");
    xcb_change_property(m_theirs.get(), XCB_PROP_MODE_REPLACE, m_window,
                        m_theirs.atom("WM_PROTOCOLS"), XCB_ATOM_ATOM, 32, 1, &ping);
    m_theirs.synchronise();
  }

  [[nodiscard]] bool wasPinged() {
    m_theirs.synchronise();
    bool pinged = false;
    while (const auto event = e2e::owned(xcb_poll_for_queued_event(m_theirs.get()))) {
      pinged = pinged || (event->response_type & 0x7f) == XCB_CLIENT_MESSAGE;
    }
    return pinged;
  }

  // As the window manager's root window would pass it on.
  void answerFirstPing(TargetBarrier& barrier) {
    xcb_client_message_event_t answer{};
    answer.response_type = XCB_CLIENT_MESSAGE;
    answer.format = 32;
    answer.type = m_theirs.atom("WM_PROTOCOLS");
    answer.data.data32[0] = m_theirs.atom("_NET_WM_PING");
    answer.data.data32[1] = 1;
    barrier.handleEvent(reinterpret_cast<const xcb_generic_event_t&>(answer));
  }

  [[nodiscard]] static std::string thisMachine() {
    std::array<char, 256> name{};
    gethostname(name.data(), name.size() - 1);
    return name.data();
  }

  QTemporaryDir m_folder;
  e2e::PrivateXServer m_server;
  e2e::XConnection m_theirs;
  std::unique_ptr<Connection> m_ours;
  WindowProperties m_windows;
  FakeDetour m_detour;
  TargetBarrier m_barrier;
  xcb_window_t m_window;

 private:
  static std::unique_ptr<Connection> connect(const std::string& display) {
    qputenv("DISPLAY", display.c_str());
    QString reason;
    return Connection::open(&reason);
  }
};

TEST_F(TargetBarrierOnServer, AsksAWindowThatSaysItAnswers) {
  Sleeper sleeper;
  belongTo(sleeper.pid(), thisMachine());
  claimToAnswerPings();
  m_barrier.waitUntilRead({m_window});
  EXPECT_TRUE(wasPinged());
}

TEST_F(TargetBarrierOnServer, DoesNotWaitForAStoppedProcess) {
  Sleeper sleeper;
  sleeper.stop();
  belongTo(sleeper.pid(), thisMachine());
  claimToAnswerPings();
  m_barrier.waitUntilRead({m_window});
  EXPECT_FALSE(wasPinged());
}

TEST_F(TargetBarrierOnServer, DoesNotAskForADetourThatAnotherProcessTakes) {
  Sleeper sleeper;
  belongTo(sleeper.pid(), thisMachine());
  claimToAnswerPings();
  m_detour.theProcess = getpid();
  EXPECT_FALSE(m_barrier.awaitKeyDetour(m_window));
  EXPECT_FALSE(wasPinged());
  EXPECT_EQ(m_detour.passages, 0);
}

TEST_F(TargetBarrierOnServer, AwaitsADetourOnceTheWindowHasReadItsKeys) {
  belongTo(getpid(), thisMachine());
  claimToAnswerPings();
  m_detour.theProcess = getpid();
  TargetBarrier barrier(*m_ours, m_windows, &m_detour, std::chrono::seconds(10));
  std::thread waiting([&] { EXPECT_TRUE(barrier.awaitKeyDetour(m_window)); });
  EXPECT_TRUE(e2e::waitUntil([&] { return wasPinged(); }, std::chrono::seconds(10)));
  EXPECT_EQ(m_detour.passages, 0);
  answerFirstPing(barrier);
  waiting.join();
  EXPECT_EQ(m_detour.passages, 1);
}

TEST_F(TargetBarrierOnServer, DoesNotAwaitADetourAgainAtOnceWhereTheWindowIsSilent) {
  belongTo(getpid(), thisMachine());
  claimToAnswerPings();
  m_detour.theProcess = getpid();
  EXPECT_TRUE(m_barrier.awaitKeyDetour(m_window));
  EXPECT_TRUE(wasPinged());
  EXPECT_FALSE(m_barrier.awaitKeyDetour(m_window));
  EXPECT_FALSE(wasPinged());
  EXPECT_EQ(m_detour.passages, 0);
}

TEST_F(TargetBarrierOnServer, KnowsTheProcessOfAWindowThatCountsProcessesByItself) {
  constexpr pid_t numberInASandbox = 2;
  belongTo(numberInASandbox, thisMachine());
  EXPECT_EQ(m_windows.processIdentifier(m_window), numberInASandbox);
  EXPECT_EQ(m_windows.localProcess(m_window), getpid());
  Sleeper offspring;
  belongTo(offspring.pid(), thisMachine());
  EXPECT_EQ(m_windows.localProcess(m_window), offspring.pid());
}

TEST_F(TargetBarrierOnServer, KnowsNothingOfProcessesOnOtherMachines) {
  belongTo(getpid(), "elsewhere.example");
  EXPECT_EQ(m_windows.localProcess(m_window), 0);
  EXPECT_EQ(m_windows.processIdentifier(m_window), getpid());
  belongTo(getpid(), thisMachine() + ".example");
  EXPECT_EQ(m_windows.localProcess(m_window), getpid());
}

}  // namespace
}  // namespace zarvy::x11
