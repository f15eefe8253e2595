#include <atomic>
#include <latch>
#include <memory>
#include <set>
#include <vector>

#include <gtest/gtest.h>

#include "base/ThreadQueues.h"

namespace zarvy {
namespace {

TEST(ThreadSerialQueue, RunsTasksOneAtATimeInTheOrderOfPosting) {
  ThreadSerialQueue queue("serial");
  std::vector<int> seen;  // no lock: a second thread in here is a data race
  for (int i = 0; i < 1000; ++i) queue.post([&seen, i] { seen.push_back(i); });
  queue.drain();
  ASSERT_EQ(seen.size(), 1000U);
  for (int i = 0; i < 1000; ++i) ASSERT_EQ(seen[static_cast<std::size_t>(i)], i);
}

TEST(ThreadSerialQueue, RunsTasksAwayFromTheThreadThatPosts) {
  ThreadSerialQueue queue("serial");
  std::thread::id id;
  queue.post([&id] { id = std::this_thread::get_id(); });
  queue.drain();
  EXPECT_NE(id, std::this_thread::get_id());
  EXPECT_NE(id, std::thread::id());
}

TEST(ThreadSerialQueue, TakesTasksFromItsOwnTasks) {
  ThreadSerialQueue queue("serial");
  std::vector<int> seen;
  queue.post([&] {
    queue.post([&seen] { seen.push_back(2); });
    seen.push_back(1);
  });
  queue.drain();
  EXPECT_EQ(seen, (std::vector<int>{1, 2}));
}

TEST(ThreadSerialQueue, RunsWhatIsPostedBeforeItsEnd) {
  int count = 0;
  {
    ThreadSerialQueue queue("serial");
    for (int i = 0; i < 100; ++i) queue.post([&count] { ++count; });
  }
  EXPECT_EQ(count, 100);
}

TEST(ThreadSerialQueue, GivesUpWaitingForATaskThatDoesNotEnd) {
  ThreadSerialQueue queue("serial");
  std::latch release(1);
  queue.post([&release] { release.wait(); });
  EXPECT_FALSE(queue.drainUntil(std::chrono::steady_clock::now()));
  release.count_down();
  EXPECT_TRUE(queue.drainUntil(std::chrono::steady_clock::now() + std::chrono::minutes(1)));
}

TEST(ThreadSerialQueue, HasLetGoOfATaskOnceItIsDrained) {
  ThreadSerialQueue queue("serial");
  auto held = std::make_shared<int>(0);
  queue.post([held] { ++*held; });
  queue.drain();
  EXPECT_EQ(held.use_count(), 1);
}

TEST(ThreadSerialQueue, TakesTasksFromTheEndOfWhatATaskHeld) {
  ThreadSerialQueue queue("serial");
  bool ran = false;
  const auto postAtEnd = [&](int*) { queue.post([&ran] { ran = true; }); };
  queue.post([held = std::shared_ptr<int>(nullptr, postAtEnd)] { (void)held; });
  queue.drain();
  EXPECT_TRUE(ran);
}

TEST(ThreadSerialQueue, ReturnsAtOnceFromADrainWithNothingPosted) {
  ThreadSerialQueue queue("serial");
  queue.drain();
}

TEST(ThreadWorkerPool, RunsTasksBesideEachOther) {
  ThreadWorkerPool pool("workers");
  // Each task waits for all: with fewer threads than tasks none would end.
  std::latch all(10);
  for (int i = 0; i < 10; ++i) pool.post([&all] { all.arrive_and_wait(); });
  pool.drain();
  EXPECT_TRUE(all.try_wait());
}

TEST(ThreadWorkerPool, TakesAnIdleThreadBeforeItMakesOne) {
  ThreadWorkerPool pool("workers");
  std::set<std::thread::id> ids;
  for (int i = 0; i < 50; ++i) {
    pool.post([&ids] { ids.insert(std::this_thread::get_id()); });
    pool.drain();
  }
  EXPECT_EQ(ids.size(), 1U);
}

TEST(TaskThreads, NeverRunsMoreTasksAtATimeThanItMayHaveThreads) {
  std::atomic<int> running = 0;
  std::atomic<int> most = 0;
  TaskThreads threads("some", 3);
  for (int i = 0; i < 300; ++i) {
    threads.post([&] {
      const int now = ++running;
      int seen = most.load();
      while (now > seen && !most.compare_exchange_weak(seen, now)) {
      }
      std::this_thread::yield();
      --running;
    });
  }
  threads.drain();
  EXPECT_EQ(running, 0);
  EXPECT_LE(most, 3);
  EXPECT_GE(most, 1);
}

TEST(TaskThreads, TakesTasksFromSeveralThreads) {
  std::atomic<int> count = 0;
  TaskThreads threads("some", 4);
  std::vector<std::thread> posters;
  for (int i = 0; i < 4; ++i) {
    posters.emplace_back([&] {
      for (int j = 0; j < 500; ++j) threads.post([&count] { ++count; });
    });
  }
  for (std::thread& poster : posters) poster.join();
  threads.drain();
  EXPECT_EQ(count, 2000);
}

}  // namespace
}  // namespace zarvy
