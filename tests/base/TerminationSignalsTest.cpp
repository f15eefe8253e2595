#include <csignal>
#include <string>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <gtest/gtest.h>

#include "base/TerminationSignals.h"

namespace zarvy {
namespace {

using namespace std::chrono_literals;

class TerminationSignalsTest : public testing::Test {
 protected:
  [[nodiscard]] bool waitUntilCount(const int& count, int wanted) {
    const QDeadlineTimer deadline(30s);
    QTimer wakeUp;
    wakeUp.start(100ms);
    while (count != wanted && !deadline.hasExpired()) {
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return count == wanted;
  }

  [[nodiscard]] static auto handlerOf(int signal) {
    struct sigaction current {};
    sigaction(signal, nullptr, &current);
    return current.sa_handler;
  }

  int m_argc = 1;
  char m_name[6] = "tests";
  char* m_argv[2] = {m_name, nullptr};
  QCoreApplication m_application{m_argc, m_argv};
};

TEST_F(TerminationSignalsTest, CallsBackFromTheEventLoopForEachKindOfSignal) {
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    int count = 0;
    const TerminationSignals signals([&count] { ++count; });
    std::raise(signal);
    EXPECT_EQ(count, 0);
    EXPECT_TRUE(waitUntilCount(count, 1)) << signal;
  }
}

TEST_F(TerminationSignalsTest, TellsOfTheFirstSignalAtOnce) {
  static int count = 0;
  count = 0;
  const TerminationSignals signals([] {}, [] { ++count; });
  std::raise(SIGTERM);
  EXPECT_EQ(count, 1) << "though no event loop runs";
}

TEST_F(TerminationSignalsTest, LetsASecondSignalEndTheProcessAtOnce) {
  for (const int first : {SIGTERM, SIGINT}) {
    const TerminationSignals signals([] {});
    std::raise(first);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) EXPECT_EQ(handlerOf(signal), SIG_DFL);
  }
}

TEST_F(TerminationSignalsTest, GivesTheSignalsBackWhenItEnds) {
  {
    const TerminationSignals signals([] {});
  }
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) EXPECT_EQ(handlerOf(signal), SIG_DFL);
}

TEST_F(TerminationSignalsTest, LeavesAnIgnoredHangUpIgnored) {
  std::signal(SIGHUP, SIG_IGN);
  {
    const TerminationSignals signals([] {});
    EXPECT_EQ(handlerOf(SIGHUP), SIG_IGN);
  }
  EXPECT_EQ(handlerOf(SIGHUP), SIG_IGN);
  std::signal(SIGHUP, SIG_DFL);
}

TEST_F(TerminationSignalsTest, TakesAnInterruptThatTheShellHadIgnored) {
  std::signal(SIGINT, SIG_IGN);
  int count = 0;
  const TerminationSignals signals([&count] { ++count; });
  std::raise(SIGINT);
  EXPECT_TRUE(waitUntilCount(count, 1));
}

}  // namespace
}  // namespace zarvy
