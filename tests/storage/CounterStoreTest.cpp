#include <limits>

#include <gtest/gtest.h>

#include "storage/CounterStore.h"
#include "storage/StoreHarness.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace zarvy {
namespace {

using CounterMap = QMap<QString, qint64>;

class CounterStoreTest : public StoreHarness {
 protected:
  [[nodiscard]] bool isSaved() const { return files().contains(u"counters.json"_s); }

  CounterStore m_counters{m_documents, m_scheduler};
};

TEST_F(CounterStoreTest, CountsFromTheFirstStartValueOn) {
  EXPECT_EQ(m_counters.nextValue(u"a"_s, 5), 5);
  EXPECT_EQ(m_counters.nextValue(u"a"_s, 5), 6);
  EXPECT_EQ(m_counters.nextValue(u"a"_s, 1), 7);
  EXPECT_EQ(m_counters.nextValue(u"b"_s, -2), -2);
  EXPECT_EQ(m_counters.nextValue(u"b"_s, 1), -1);
}

TEST_F(CounterStoreTest, TellsNamesApartByCase) {
  EXPECT_EQ(m_counters.nextValue(u"Invoice"_s, 1), 1);
  EXPECT_EQ(m_counters.nextValue(u"invoice"_s, 10), 10);
  EXPECT_EQ(m_counters.nextValue(u"Invoice"_s, 1), 2);
  EXPECT_EQ(m_counters.nextValue(u"\u00E9"_s, 1), 1);
  EXPECT_EQ(m_counters.nextValue(u"e\u0301"_s, 1), 1);
  EXPECT_EQ(m_counters.nextValue(u""_s, 3), 3);
}

TEST_F(CounterStoreTest, GivesOneAndThenTwoAfterAReset) {
  (void)m_counters.nextValue(u"a"_s, 41);
  m_counters.resetCounter(u"a"_s);
  EXPECT_EQ(m_counters.nextValue(u"a"_s, 1), 1);
  EXPECT_EQ(m_counters.nextValue(u"a"_s, 9), 2);
}

TEST_F(CounterStoreTest, ResetsAlsoWhatWasNeverUsed) {
  m_counters.resetCounter(u"a"_s);
  EXPECT_EQ(m_counters.nextValue(u"a"_s, 7), 1);
  finish();
  EXPECT_EQ(m_store.loadCounters(), (CounterMap{{u"a"_s, 1}}));
}

TEST_F(CounterStoreTest, WritesATenthOfASecondAfterTheChangeAndAwayFromItsCaller) {
  (void)m_counters.nextValue(u"a"_s, 1);
  m_scheduler.advance(99ms);
  EXPECT_EQ(waitingSaves(), 0U);
  m_scheduler.advance(1ms);
  EXPECT_EQ(waitingSaves(), 1U);
  EXPECT_FALSE(isSaved());
  m_queue.drain();
  EXPECT_EQ(content(u"counters.json"_s), QByteArray("{\n  \"a\" : 1\n}"));
  finish();
  EXPECT_EQ(waitingSaves(), 0U);
}

TEST_F(CounterStoreTest, WritesABurstOnceWithItsLastValue) {
  for (int use = 0; use < 10; ++use) {
    (void)m_counters.nextValue(u"a"_s, 1);
    m_scheduler.advance(5ms);
  }
  m_scheduler.advance(94ms);
  EXPECT_EQ(waitingSaves(), 0U);
  m_scheduler.advance(1s);
  EXPECT_EQ(waitingSaves(), 1U);
  m_queue.drain();
  EXPECT_EQ(m_store.loadCounters(), (CounterMap{{u"a"_s, 10}}));
}

TEST_F(CounterStoreTest, StartsTheWaitAgainAtEachChange) {
  for (int use = 0; use < 10; ++use) {
    (void)m_counters.nextValue(u"a"_s, 1);
    m_scheduler.advance(99ms);
    EXPECT_EQ(waitingSaves(), 0U);
  }
  m_scheduler.advance(1ms);
  EXPECT_EQ(waitingSaves(), 1U);
}

TEST_F(CounterStoreTest, WritesTheStateOfTheLatestChangeAndNotWhatCameIn) {
  (void)m_counters.nextValue(u"a"_s, 1);
  m_counters.replaceAll({{u"b"_s, 5}});
  finish();
  EXPECT_EQ(m_store.loadCounters(), (CounterMap{{u"a"_s, 1}}));
  EXPECT_EQ(m_counters.nextValue(u"b"_s, 1), 6);
}

TEST_F(CounterStoreTest, WritesEveryBurstAfterARest) {
  (void)m_counters.nextValue(u"a"_s, 1);
  m_scheduler.advance(100ms);
  (void)m_counters.nextValue(u"a"_s, 1);
  m_scheduler.advance(100ms);
  EXPECT_EQ(waitingSaves(), 2U);
  EXPECT_TRUE(m_queue.runNext());
  EXPECT_EQ(m_store.loadCounters(), (CounterMap{{u"a"_s, 1}}));
  EXPECT_TRUE(m_queue.runNext());
  EXPECT_EQ(m_store.loadCounters(), (CounterMap{{u"a"_s, 2}}));
}

TEST_F(CounterStoreTest, TakesWhatWasReadWithoutWritingIt) {
  m_counters.replaceAll({{u"a"_s, 41}});
  finish();
  EXPECT_FALSE(isSaved());
  EXPECT_EQ(m_counters.nextValue(u"a"_s, 1), 42);
}

TEST_F(CounterStoreTest, GoesOnWhereTheFileCannotBeWritten) {
  block(u"counters.json"_s);
  (void)m_counters.nextValue(u"a"_s, 1);
  finish();
  EXPECT_EQ(m_output.takeLines().size(), 1);
  EXPECT_EQ(m_counters.nextValue(u"a"_s, 1), 2);
  ASSERT_TRUE(QDir().rmdir(path(u"counters.json"_s)));
  finish();
  EXPECT_EQ(m_store.loadCounters(), (CounterMap{{u"a"_s, 2}}));
  EXPECT_EQ(m_output.lines(), QStringList());
}

TEST_F(CounterStoreTest, ReachesTheGreatestNumber) {
  m_counters.replaceAll({{u"a"_s, std::numeric_limits<qint64>::max() - 1}});
  EXPECT_EQ(m_counters.nextValue(u"a"_s, 1), std::numeric_limits<qint64>::max());
}

TEST_F(CounterStoreTest, CountsOnFromWhateverTheDocumentHolds) {
  m_store.saveCounters({{u"a"_s, std::numeric_limits<qint64>::max()}});
  m_counters.replaceAll(m_store.loadCounters());
  const qint64 first = m_counters.nextValue(u"a"_s, 1);
  EXPECT_EQ(m_counters.nextValue(u"a"_s, 1), first + 1);
}

using CounterStoreDeathTest = CounterStoreTest;

TEST_F(CounterStoreDeathTest, EndsTheProcessWithOneLineBeyondTheGreatestNumber) {
  m_counters.replaceAll({{u"a"_s, std::numeric_limits<qint64>::max()}});
  EXPECT_EXIT((void)m_counters.nextValue(u"a"_s, 1), testing::KilledBySignal(SIGABRT),
              "^A counter has passed the greatest number of 64 bits\\.\n$");
}

}  // namespace
}  // namespace zarvy
