#include <atomic>
#include <chrono>
#include <thread>

#include <QCoreApplication>

#include <gtest/gtest.h>

#include "platform/freedesktop/accessibility/BusDaemon.h"
#include "platform/freedesktop/accessibility/ComesTrue.h"
#include "platform/freedesktop/accessibility/FakeApplication.h"
#include "platform/freedesktop/accessibility/FakeRegistry.h"
#include "platform/freedesktop/accessibility/ToolkitKeyDetour.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace zarvy {
namespace {

constexpr qint64 process = 4711;

class ToolkitKeyDetourTest : public testing::Test {
 protected:
  ~ToolkitKeyDetourTest() override { m_detour.forget(); }

  // Returns once the application has been asked for its toolkit, and its answer been read.
  void follow(const QString& toolkit) {
    m_app.setToolkit(toolkit);
    m_detour.follow(m_bus.get(), m_app.name(), process, &m_owner);
    ASSERT_TRUE(comesTrue([&] { return m_app.questionCount() == 1; }));
    ASSERT_TRUE(comesTrue([&] { return m_owner.children().isEmpty(); }));
  }

  // The application answers only when it is told to.
  void startAwaiting() {
    m_app.setHanging(true);
    m_waiting = std::thread([this] {
      EXPECT_TRUE(m_detour.awaitPassage());
      m_hasPassed = true;
    });
  }
  void finishAwaiting() {
    EXPECT_TRUE(comesTrue([&] { return m_hasPassed.load(); }));
    m_waiting.join();
  }

  int m_count = 1;
  char m_name[32] = "zarvy_accessibility_tests";
  char* m_arguments[2] = {m_name, nullptr};
  QCoreApplication m_application{m_count, m_arguments};
  BusDaemon m_daemon;
  FakeRegistry m_registry{m_daemon.address()};
  FakeApplication m_app{m_daemon.address()};
  BusConnection m_bus{m_daemon.address()};
  QObject m_owner;
  ToolkitKeyDetour m_detour{10s};
  std::thread m_waiting;
  std::atomic<bool> m_hasPassed = false;
};

TEST_F(ToolkitKeyDetourTest, IsTakenByApplicationsOfQt) {
  EXPECT_EQ(m_detour.process(), 0);
  follow(u"Qt"_s);
  EXPECT_EQ(m_detour.process(), process);
  m_detour.forget();
  EXPECT_EQ(m_detour.process(), 0);
}

TEST_F(ToolkitKeyDetourTest, IsNotTakenByOthers) {
  follow(u"GTK"_s);
  EXPECT_EQ(m_detour.process(), 0);
  EXPECT_TRUE(m_detour.awaitPassage());
  EXPECT_EQ(m_app.questionCount(), 1);
}

TEST_F(ToolkitKeyDetourTest, IsPassedOnceApplicationRegistryAndApplicationHaveAnswered) {
  follow(u"Qt"_s);
  startAwaiting();
  ASSERT_TRUE(comesTrue([&] { return m_app.questionCount() == 2; }));
  EXPECT_EQ(m_registry.questionCount(), 0);
  m_app.answerAll();
  ASSERT_TRUE(comesTrue([&] { return m_app.questionCount() == 3; }));
  EXPECT_EQ(m_registry.questionCount(), 1);
  EXPECT_FALSE(m_hasPassed);
  m_app.answerAll();
  finishAwaiting();
  EXPECT_EQ(m_detour.process(), process);
}

TEST_F(ToolkitKeyDetourTest, IsNotPassedWhereAnApplicationDoesNotAnswer) {
  ToolkitKeyDetour detour(20ms);
  m_app.setToolkit(u"Qt"_s);
  detour.follow(m_bus.get(), m_app.name(), process, &m_owner);
  ASSERT_TRUE(comesTrue([&] { return detour.process() == process; }));
  m_app.setHanging(true);
  EXPECT_FALSE(detour.awaitPassage());
}

}  // namespace
}  // namespace zarvy
