#include <atomic>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "base/ThreadQueues.h"
#include "fakes/ManualClock.h"
#include "fakes/ManualScheduler.h"
#include "stats/StatsStore.h"
#include "storage/DataFolder.h"

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace zarvy {
namespace {

constexpr int threadCount = 4;
constexpr int rounds = 100;

using StatsThreads = DataFolder;

TEST_F(StatsThreads, EveryExpansionOfEveryThreadIsCountedAndSaved) {
  ThreadSerialQueue queue("documents");
  DocumentQueue documents(m_store, queue);
  ManualScheduler scheduler;
  const ManualClock clock;
  StatsStore stats(documents, scheduler, clock);
  const Snippet snippet = Snippet::create(u"T"_s, u";t"_s, u"text"_s, clock);

  std::atomic<int> running = threadCount;
  std::vector<std::jthread> threads;
  for (int thread = 0; thread < threadCount; ++thread) {
    threads.emplace_back([&] {
      for (int round = 0; round < rounds; ++round) stats.recordExpansion(snippet, 12);
      --running;
    });
  }
  // This thread plays the main one: time goes on, and the statistics are read.
  while (running > 0) {
    scheduler.advance(100ms);
    const qint64 perDay = stats.dailyStats(7).back().expansionCount;
    EXPECT_LE(perDay, stats.metrics(7).periodExpansions);
    EXPECT_LE(perDay, stats.summary().totalExpansions);
    EXPECT_EQ(stats.hourlyStats({}).size(), 24);
    EXPECT_LE(stats.topSnippets(5, {}).size(), 1);
  }
  threads.clear();
  scheduler.advance(1s);
  queue.drain();
  EXPECT_EQ(m_store.loadStatsEvents().size(), threadCount * rounds);
  EXPECT_EQ(m_store.loadStatsSummary().totalExpansions, threadCount * rounds);
  EXPECT_EQ(m_store.loadStatsSummary().totalCharactersSaved, threadCount * rounds * 10);
  EXPECT_EQ(m_output.lines(), QStringList());
}

}  // namespace
}  // namespace zarvy
