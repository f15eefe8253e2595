#include <memory>
#include <thread>
#include <vector>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <gtest/gtest.h>

#include "base/QtScheduler.h"

namespace zarvy {
namespace {

using namespace std::chrono_literals;
using SteadyClock = std::chrono::steady_clock;

class QtSchedulerTest : public testing::Test {
 protected:
  // Runs the event loop until `condition` holds; false where it does not in good time.
  template <typename Condition>
  [[nodiscard]] bool waitUntil(Condition condition) {
    const QDeadlineTimer deadline(30s);
    QTimer wakeUp;  // so that the deadline is seen while no event comes
    wakeUp.start(100ms);
    while (!condition() && !deadline.hasExpired()) {
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return condition();
  }

  int m_argc = 1;
  char m_name[6] = "tests";
  char* m_argv[2] = {m_name, nullptr};
  QCoreApplication m_application{m_argc, m_argv};
  std::unique_ptr<QtScheduler> m_scheduler = std::make_unique<QtScheduler>();
};

TEST_F(QtSchedulerTest, NeverRunsATaskInsideTheCallThatPostsIt) {
  bool ran = false;
  m_scheduler->post([&ran] { ran = true; });
  EXPECT_FALSE(ran);
  EXPECT_TRUE(waitUntil([&ran] { return ran; }));
}

TEST_F(QtSchedulerTest, KeepsTheOrderOfPosting) {
  std::vector<int> seen;
  for (int i = 0; i < 100; ++i) m_scheduler->post([&seen, i] { seen.push_back(i); });
  ASSERT_TRUE(waitUntil([&seen] { return seen.size() == 100; }));
  for (int i = 0; i < 100; ++i) EXPECT_EQ(seen[static_cast<std::size_t>(i)], i);
}

TEST_F(QtSchedulerTest, RunsOnTheMainThreadWhatOtherThreadsPostAndKeepsTheOrderOfEach) {
  constexpr int perThread = 500;
  std::vector<std::vector<int>> seen(3);
  std::vector<std::thread::id> ids;
  std::vector<std::thread> threads;
  for (std::size_t who = 0; who < seen.size(); ++who) {
    threads.emplace_back([&, who] {
      for (int i = 0; i < perThread; ++i) {
        m_scheduler->post([&seen, &ids, who, i] {
          seen[who].push_back(i);
          ids.push_back(std::this_thread::get_id());
        });
      }
    });
  }
  EXPECT_TRUE(waitUntil([&ids] { return ids.size() == 3 * perThread; }));
  for (std::thread& thread : threads) thread.join();
  for (const auto& numbers : seen) {
    ASSERT_EQ(numbers.size(), static_cast<std::size_t>(perThread));
    for (int i = 0; i < perThread; ++i) ASSERT_EQ(numbers[static_cast<std::size_t>(i)], i);
  }
  for (const std::thread::id id : ids) ASSERT_EQ(id, std::this_thread::get_id());
}

TEST_F(QtSchedulerTest, LetsTheEventLoopBreatheBetweenTasksThatPostTasks) {
  int count = 0;
  std::function<void()> again = [&] {
    ++count;
    m_scheduler->post(again);
  };
  m_scheduler->post(again);
  bool timerFired = false;
  QTimer::singleShot(0, &m_application, [&timerFired] { timerFired = true; });
  EXPECT_TRUE(waitUntil([&] { return timerFired && count > 10; }));
}

TEST_F(QtSchedulerTest, GoesOnInsideANestedEventLoop) {
  std::vector<int> seen;
  m_scheduler->post([&] {
    seen.push_back(1);
    EXPECT_TRUE(waitUntil([&seen] { return seen.size() == 3; }));
    seen.push_back(4);
  });
  m_scheduler->post([&seen] { seen.push_back(2); });
  m_scheduler->post([&seen] { seen.push_back(3); });
  EXPECT_TRUE(waitUntil([&seen] { return seen.size() == 4; }));
  EXPECT_EQ(seen, (std::vector<int>{1, 2, 3, 4}));
}

TEST_F(QtSchedulerTest, DelaysATaskByNoLessThanAsked) {
  const auto start = SteadyClock::now();
  SteadyClock::time_point end;
  (void)m_scheduler->postAfter(20ms, [&end] { end = SteadyClock::now(); });
  ASSERT_TRUE(waitUntil([&end] { return end != SteadyClock::time_point(); }));
  EXPECT_GE(end - start, 20ms);
}

TEST_F(QtSchedulerTest, RunsDelayedTasksInTheOrderOfTheirTimes) {
  std::vector<int> seen;
  (void)m_scheduler->postAfter(60ms, [&seen] { seen.push_back(2); });
  (void)m_scheduler->postAfter(20ms, [&seen] { seen.push_back(1); });
  EXPECT_TRUE(waitUntil([&seen] { return seen.size() == 2; }));
  EXPECT_EQ(seen, (std::vector<int>{1, 2}));
}

TEST_F(QtSchedulerTest, TakesDelayedTasksFromOtherThreads) {
  std::thread::id id;
  std::thread other(
      [&] { (void)m_scheduler->postAfter(1ms, [&id] { id = std::this_thread::get_id(); }); });
  EXPECT_TRUE(waitUntil([&id] { return id != std::thread::id(); }));
  EXPECT_EQ(id, std::this_thread::get_id());
  other.join();
}

TEST_F(QtSchedulerTest, DoesNotRunACancelledTask) {
  bool ran = false;
  bool later = false;
  TaskHandle handle = m_scheduler->postAfter(1ms, [&ran] { ran = true; });
  (void)m_scheduler->postAfter(30ms, [&later] { later = true; });
  handle.cancel();
  EXPECT_TRUE(waitUntil([&later] { return later; }));
  EXPECT_FALSE(ran);
}

TEST_F(QtSchedulerTest, RepeatsUntilItIsCancelled) {
  int count = 0;
  bool later = false;
  auto held = std::make_shared<int>(0);
  TaskHandle handle = m_scheduler->repeatEvery(1ms, [&count, held] { ++count; });
  EXPECT_TRUE(waitUntil([&count] { return count == 3; }));
  handle.cancel();
  (void)m_scheduler->postAfter(30ms, [&later] { later = true; });
  EXPECT_TRUE(waitUntil([&later] { return later; }));
  EXPECT_EQ(count, 3);
  EXPECT_TRUE(waitUntil([&held] { return held.use_count() == 1; }));
}

TEST_F(QtSchedulerTest, DropsWhatHasNotRunWhenItEnds) {
  auto held = std::make_shared<int>(0);
  m_scheduler->post([held] { ++*held; });
  (void)m_scheduler->postAfter(1ms, [held] { ++*held; });
  bool repeats = false;
  (void)m_scheduler->repeatEvery(1ms, [held, &repeats] { repeats = true; });
  EXPECT_TRUE(waitUntil([&repeats] { return repeats; }));
  (void)m_scheduler->postAfter(1h, [held] { ++*held; });
  m_scheduler.reset();
  EXPECT_EQ(held.use_count(), 1);
}

}  // namespace
}  // namespace zarvy
