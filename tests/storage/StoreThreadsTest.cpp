#include <atomic>
#include <set>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "base/ThreadQueues.h"
#include "fakes/ManualScheduler.h"
#include "storage/CounterStore.h"
#include "storage/DataFolder.h"
#include "storage/FieldDefaultsStore.h"

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace zarvy {
namespace {

constexpr int threadCount = 4;
constexpr int rounds = 200;

// The stores among real threads: some that use them, one that does the file work, and this one,
// which plays the main thread.
class StoreThreads : public DataFolder {
 protected:
  // Runs `use` with the numbers of the threads, each on its thread, while time goes on.
  template <typename Use>
  void useFromManyThreads(Use use) {
    std::atomic<int> running = threadCount;
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < threadCount; ++thread) {
      threads.emplace_back([thread, use, &running] {
        for (int round = 0; round < rounds; ++round) use(thread, round);
        --running;
      });
    }
    while (running > 0) m_scheduler.advance(10ms);
    threads.clear();
    m_scheduler.advance(1s);
    m_queue.drain();
  }

  ManualScheduler m_scheduler;
  ThreadSerialQueue m_queue{"documents"};
  DocumentQueue m_documents{m_store, m_queue};
};

TEST_F(StoreThreads, NoTwoUsesOfACounterGetTheSameValue) {
  CounterStore counters(m_documents, m_scheduler);
  std::vector<std::set<qint64>> values(threadCount);
  useFromManyThreads([&](int thread, int round) {
    values[static_cast<std::size_t>(thread)].insert(counters.nextValue(u"shared"_s, 1));
    if (round == rounds / 2) counters.resetCounter(u"own %1"_s.arg(thread));
  });
  std::set<qint64> all;
  for (const std::set<qint64>& own : values) all.insert(own.begin(), own.end());
  EXPECT_EQ(all.size(), static_cast<std::size_t>(threadCount * rounds));
  EXPECT_EQ(*all.rbegin(), threadCount * rounds);
  const QMap<QString, qint64> saved = m_store.loadCounters();
  EXPECT_EQ(saved.value(u"shared"_s), threadCount * rounds);
  EXPECT_EQ(saved.size(), threadCount + 1);
  EXPECT_EQ(m_output.lines(), QStringList());
}

TEST_F(StoreThreads, TheLastTextOfEachFieldIsSaved) {
  FieldDefaultsStore defaults(m_documents, m_scheduler);
  useFromManyThreads([&](int thread, int round) {
    const QString name = QString::number(thread);
    defaults.setValue(name, QString::number(round));
    EXPECT_EQ(defaults.value(name), QString::number(round));
    if (round % 3 == 0) defaults.removeValue(name);
  });
  const QMap<QString, QString> saved = m_store.loadFieldDefaults();
  ASSERT_EQ(saved.size(), threadCount);
  for (const QString& text : saved) EXPECT_EQ(text, QString::number(rounds - 1));
  EXPECT_EQ(m_output.lines(), QStringList());
}

}  // namespace
}  // namespace zarvy
