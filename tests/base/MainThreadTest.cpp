#include <atomic>
#include <thread>

#include <gtest/gtest.h>

#include "base/MainThread.h"
#include "fakes/ManualScheduler.h"

namespace zarvy {
namespace {

TEST(MainThread, CallsAtOnceFromTheMainThread) {
  ManualScheduler scheduler;
  MainThread mainThread(scheduler);
  EXPECT_EQ(mainThread.call([] { return 5; }), 5);
  EXPECT_EQ(scheduler.pendingCount(), 0U);
}

TEST(MainThread, CallsOnTheMainThreadFromAnyOther) {
  ManualScheduler scheduler;
  MainThread mainThread(scheduler);
  std::atomic<bool> isBack{false};
  std::optional<std::thread::id> where;
  std::thread caller([&] {
    where = mainThread.call([] { return std::this_thread::get_id(); });
    isBack = true;
  });
  while (!isBack) {
    scheduler.runPending();
    std::this_thread::yield();
  }
  caller.join();
  EXPECT_EQ(where, std::this_thread::get_id());
}

TEST(MainThread, LetsWaitingCallsGoWhenItCloses) {
  ManualScheduler scheduler;
  MainThread mainThread(scheduler);
  std::atomic<bool> hasRun{false};
  std::optional<int> value = 1;
  std::thread caller([&] {
    value = mainThread.call([&] {
      hasRun = true;
      return 2;
    });
  });
  while (scheduler.pendingCount() == 0) std::this_thread::yield();
  mainThread.close();
  caller.join();
  EXPECT_EQ(value, std::nullopt);
  scheduler.runPending();  // what comes too late does nothing
  EXPECT_FALSE(hasRun);
}

TEST(MainThread, DoesNotLetACallWaitOnceItIsClosed) {
  ManualScheduler scheduler;
  MainThread mainThread(scheduler);
  mainThread.close();
  std::optional<int> value = 1;
  std::thread caller([&] { value = mainThread.call([] { return 2; }); });
  caller.join();
  EXPECT_EQ(value, std::nullopt);
  EXPECT_EQ(mainThread.call([] { return 3; }), 3);
}

TEST(MainThread, ServesManyThreads) {
  ManualScheduler scheduler;
  MainThread mainThread(scheduler);
  constexpr int calls = 500;
  int sum = 0;  // touched by the main thread alone
  std::atomic<int> ended{0};
  std::vector<std::thread> callers;
  for (int thread = 0; thread < 4; ++thread) {
    callers.emplace_back([&] {
      for (int call = 0; call < calls; ++call) {
        static_cast<void>(mainThread.call([&] { return ++sum; }));
      }
      ++ended;
    });
  }
  while (ended < 4) {
    scheduler.runPending();
    std::this_thread::yield();
  }
  for (std::thread& caller : callers) caller.join();
  EXPECT_EQ(sum, 4 * calls);
}

}  // namespace
}  // namespace zarvy
