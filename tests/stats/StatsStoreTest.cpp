#include <limits>

#include <gtest/gtest.h>

#include "fakes/ManualClock.h"
#include "stats/Events.h"
#include "stats/StatsStore.h"
#include "storage/StoreHarness.h"
#include "support/EnvironmentVariable.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace zarvy {
namespace {

class StatsStoreTest : public StoreHarness {
 protected:
  [[nodiscard]] Snippet snippet(const QString& trigger) const {
    return Snippet::create(u"Title of "_s + trigger, trigger, u"text"_s, m_clock);
  }

  // What a restart finds.
  [[nodiscard]] QList<ExpansionEvent> savedEvents() {
    finish();
    return m_store.loadStatsEvents();
  }

  ManualClock m_clock{utc(u"2026-01-21T09:30:00.750Z"_s)};  // a Wednesday
  EnvironmentVariable m_zone{"TZ", "UTC"};
  StatsStore m_stats{m_documents, m_scheduler, m_clock};
};

TEST_F(StatsStoreTest, BeginsWithNothing) {
  EXPECT_EQ(m_stats.summary(), StatsSummary());
  EXPECT_TRUE(m_stats.dailyStats({}).isEmpty());
  EXPECT_EQ(m_stats.dailyStats(1).size(), 1);
  EXPECT_EQ(m_stats.hourlyStats(1).size(), 24);
  EXPECT_TRUE(m_stats.topSnippets(5, 1).isEmpty());
  EXPECT_EQ(m_stats.metrics(1), StatsMetrics());
  EXPECT_EQ(m_stats.metrics({}), StatsMetrics());
}

TEST_F(StatsStoreTest, RecordsAllThatIsKnownOfAnExpansion) {
  const Snippet signature = snippet(u";sig"_s);
  const EnvironmentVariable zone("TZ", "Asia/Tokyo");
  m_clock.setNow(utc(u"2026-01-24T15:30:00.750Z"_s));  // half past midnight on Sunday there
  m_stats.recordExpansion(signature, 100);
  m_stats.recordExpansion(signature, 100);
  const QList<ExpansionEvent> events = savedEvents();
  ASSERT_EQ(events.size(), 2);
  EXPECT_NE(events[0].id, QUuid());
  EXPECT_NE(events[0].id, events[1].id);
  EXPECT_EQ(events[0].snippetID, signature.id);
  EXPECT_EQ(events[0].snippetTrigger, u";sig"_s);
  EXPECT_EQ(events[0].snippetTitle, u"Title of ;sig"_s);
  EXPECT_EQ(events[0].triggerLength, 4);
  EXPECT_EQ(events[0].expansionLength, 100);
  EXPECT_EQ(events[0].timestamp, utc(u"2026-01-24T15:30:00Z"_s));
  EXPECT_EQ(events[0].hourOfDay, 0);
  EXPECT_EQ(events[0].dayOfWeek, 1);
}

TEST_F(StatsStoreTest, MeasuresTheTriggerFieldInCharactersAsTheUserPerceivesThem) {
  Snippet flag = snippet(u";e\u0301\U0001F1E9\U0001F1EA"_s);
  m_stats.recordExpansion(flag, 1);
  Snippet pattern = snippet(u"(?<n>\\d+)x"_s);
  pattern.isRegexTrigger = true;
  m_stats.recordExpansion(pattern, 1);
  const QList<ExpansionEvent> events = savedEvents();
  EXPECT_EQ(events[0].triggerLength, 3);
  EXPECT_EQ(events[1].triggerLength, 10);
}

TEST_F(StatsStoreTest, AddsUpWhatWasSaved) {
  m_stats.recordExpansion(snippet(u";sig"_s), 100);
  EXPECT_EQ(m_stats.summary(), (StatsSummary{1, 96, 96 / 3.33, m_clock.now()}));
  const QDateTime firstTime = m_clock.now();
  m_clock.advance(24h);
  m_stats.recordExpansion(snippet(u"twelve chars"_s), 1);
  EXPECT_EQ(m_stats.summary(), (StatsSummary{2, 96, 96 / 3.33, firstTime}));
  m_stats.recordExpansion(snippet(u";a"_s), 12);
  EXPECT_EQ(m_stats.summary(), (StatsSummary{3, 106, 96 / 3.33 + 10 / 3.33, firstTime}));
}

TEST_F(StatsStoreTest, AnswersFromWhatWasRecorded) {
  m_stats.recordExpansion(snippet(u";old"_s), 104);
  m_clock.advance(24h);
  m_stats.recordExpansion(snippet(u";new"_s), 54);
  m_stats.recordExpansion(snippet(u";new"_s), 54);  // another snippet of the same trigger
  EXPECT_EQ(m_stats.dailyStats(3), (QList<DailyStats>{{utc(u"2026-01-20T00:00:00Z"_s), 0, 0},
                                                      {utc(u"2026-01-21T00:00:00Z"_s), 1, 100},
                                                      {utc(u"2026-01-22T00:00:00Z"_s), 2, 100}}));
  EXPECT_EQ(m_stats.hourlyStats(1)[9].expansionCount, 2);
  EXPECT_EQ(m_stats.hourlyStats({})[9].expansionCount, 3);
  EXPECT_EQ(m_stats.topSnippets(5, 1).size(), 2);
  EXPECT_EQ(m_stats.topSnippets(2, {}).size(), 2);
  EXPECT_EQ(m_stats.metrics(1),
            (StatsMetrics{m_stats.summary().totalTimeSavedSeconds, 100 / 3.33, 2, 2}));
  EXPECT_EQ(m_stats.metrics({}),
            (StatsMetrics{m_stats.summary().totalTimeSavedSeconds, 200 / 3.33, 3, 3}));
}

TEST_F(StatsStoreTest, KeepsTheHourOfAnEventWhenTheUserTravels) {
  m_stats.recordExpansion(snippet(u";a"_s), 10);
  const EnvironmentVariable zone("TZ", "America/New_York");
  EXPECT_EQ(m_stats.hourlyStats(1)[9].expansionCount, 1);
  EXPECT_EQ(m_stats.dailyStats(1), (QList<DailyStats>{{utc(u"2026-01-21T05:00:00Z"_s), 1, 8}}));
}

TEST_F(StatsStoreTest, KeepsTheLatestTenThousandEventsAndGoesOnCounting) {
  const Snippet signature = snippet(u";sig"_s);
  m_stats.recordExpansion(snippet(u";first"_s), 106);
  for (int count = 0; count < 10'000; ++count) m_stats.recordExpansion(signature, 5);
  const QList<ExpansionEvent> events = savedEvents();
  ASSERT_EQ(events.size(), 10'000);
  EXPECT_EQ(events.front().snippetTrigger, u";sig"_s);
  EXPECT_EQ(m_stats.metrics({}).periodExpansions, 10'000);
  EXPECT_EQ(m_stats.summary().totalExpansions, 10'001);
  EXPECT_EQ(m_stats.summary().totalCharactersSaved, 10'100);
}

TEST_F(StatsStoreTest, CutsALongerListFromAFileAtTheNextEvent) {
  QList<ExpansionEvent> events(10'005, eventAt(u"2026-01-21T00:00:00Z"_s));
  events[5].snippetTitle = u"the last to go"_s;
  events[6].snippetTitle = u"the first to stay"_s;
  m_store.saveStatsEvents(events);
  m_stats.loadFromDisk(m_store);
  EXPECT_EQ(m_stats.metrics({}).periodExpansions, 10'005);
  m_stats.recordExpansion(snippet(u";a"_s), 10);
  const QList<ExpansionEvent> saved = savedEvents();
  ASSERT_EQ(saved.size(), 10'000);
  EXPECT_EQ(saved.front().snippetTitle, u"the first to stay"_s);
  EXPECT_EQ(saved.back().snippetTrigger, u";a"_s);
}

TEST_F(StatsStoreTest, GoesOnAfterARestart) {
  m_stats.recordExpansion(snippet(u";a"_s), 10);
  finish();
  StatsStore restarted(m_documents, m_scheduler, m_clock);
  restarted.loadFromDisk(m_store);
  EXPECT_EQ(restarted.summary().totalExpansions, 1);
  EXPECT_EQ(restarted.summary().firstExpansionDate, utc(u"2026-01-21T09:30:00Z"_s));
  EXPECT_EQ(restarted.metrics(1).periodExpansions, 1);
  restarted.recordExpansion(snippet(u";b"_s), 10);
  EXPECT_EQ(savedEvents().size(), 2);
  EXPECT_EQ(m_store.loadStatsSummary().totalExpansions, 2);
}

TEST_F(StatsStoreTest, LivesWithASummaryWithoutItsEventsAndTheOtherWayRound) {
  m_stats.recordExpansion(snippet(u";a"_s), 10);
  finish();
  write(u"stats_events.json"_s, "?");
  m_stats.loadFromDisk(m_store);
  EXPECT_EQ(m_stats.summary().totalExpansions, 1);
  EXPECT_TRUE(m_stats.dailyStats({}).isEmpty());
  EXPECT_EQ(m_stats.metrics({}), (StatsMetrics{8 / 3.33, 0, 0, 0}));

  m_store.saveStatsEvents({eventAt(u"2026-01-21T09:00:00Z"_s)});
  write(u"stats_summary.json"_s, "?");
  m_stats.loadFromDisk(m_store);
  EXPECT_EQ(m_stats.summary(), StatsSummary());
  EXPECT_EQ(m_stats.metrics(1).periodExpansions, 1);
  EXPECT_EQ(m_output.lines().size(), 2);
}

TEST_F(StatsStoreTest, WritesBothDocumentsHalfASecondAfterTheLatestEvent) {
  for (int count = 0; count < 10; ++count) {
    m_stats.recordExpansion(snippet(u";a"_s), 10);
    m_scheduler.advance(499ms);
    EXPECT_EQ(waitingSaves(), 0U);
  }
  m_scheduler.advance(1ms);
  EXPECT_EQ(waitingSaves(), 1U);
  EXPECT_EQ(files(), QStringList());
  m_queue.drain();
  EXPECT_EQ(m_store.loadStatsEvents().size(), 10);
  EXPECT_EQ(m_store.loadStatsSummary().totalExpansions, 10);
  finish();
  EXPECT_EQ(waitingSaves(), 0U);
}

TEST_F(StatsStoreTest, WritesTheEventsAheadOfTheSummary) {
  block(u"stats_events.json"_s);
  block(u"stats_summary.json"_s);
  m_stats.recordExpansion(snippet(u";a"_s), 10);
  finish();
  const QStringList lines = m_output.lines();
  ASSERT_EQ(lines.size(), 2);
  EXPECT_TRUE(lines[0].startsWith(u"Error saving stats events: "));
  EXPECT_TRUE(lines[1].startsWith(u"Error saving stats summary: "));
}

TEST_F(StatsStoreTest, WritesTheStateOfTheLatestEvent) {
  m_stats.recordExpansion(snippet(u";a"_s), 10);
  m_stats.loadFromDisk(m_store);
  finish();
  EXPECT_EQ(m_store.loadStatsEvents().size(), 1);
  EXPECT_EQ(m_store.loadStatsSummary().totalExpansions, 1);
  EXPECT_EQ(m_stats.summary(), StatsSummary());
}

TEST_F(StatsStoreTest, WritesNothingForQuestionsNorForTheLoad) {
  m_stats.loadFromDisk(m_store);
  (void)m_stats.dailyStats(7);
  (void)m_stats.metrics({});
  EXPECT_EQ(m_scheduler.pendingCount(), 0U);
}

using StatsStoreDeathTest = StatsStoreTest;

TEST_F(StatsStoreDeathTest, EndsTheProcessForAPeriodWithoutADay) {
  const char* const line = "^A period of the statistics has at least one day\\.\n$";
  const auto killed = testing::KilledBySignal(SIGABRT);
  EXPECT_EXIT((void)m_stats.dailyStats(0), killed, line);
  EXPECT_EXIT((void)m_stats.hourlyStats(0), killed, line);
  EXPECT_EXIT((void)m_stats.topSnippets(5, 0), killed, line);
  EXPECT_EXIT((void)m_stats.metrics(-1), killed, line);
}

TEST_F(StatsStoreDeathTest, EndsTheProcessWhereATotalDoesNotFit) {
  constexpr qint64 most = std::numeric_limits<qint64>::max();
  m_stats.recordExpansion(snippet(u""_s), most);
  EXPECT_EXIT(m_stats.recordExpansion(snippet(u";a"_s), 3), testing::KilledBySignal(SIGABRT),
              "^A total of the statistics has passed the range of 64 bits\\.\n$");
}

TEST_F(StatsStoreTest, CountsOnFromWhateverTheDocumentsHold) {
  constexpr qint64 most = std::numeric_limits<qint64>::max();
  constexpr qint64 least = std::numeric_limits<qint64>::min();
  m_stats.recordExpansion(snippet(u";a"_s), 3);
  finish();
  ExpansionEvent event = m_store.loadStatsEvents().front();
  event.triggerLength = least;
  event.expansionLength = most;
  m_store.saveStatsEvents({event, event});
  m_store.saveStatsSummary({most, most, 0, {}});
  m_stats.loadFromDisk(m_store);
  m_stats.recordExpansion(snippet(u";a"_s), 3);
  constexpr qint64 greatestTotal = qint64{1} << 62;
  EXPECT_EQ(m_stats.summary().totalExpansions, greatestTotal + 1);
  EXPECT_EQ(m_stats.summary().totalCharactersSaved, greatestTotal + 1);
  EXPECT_EQ(m_stats.dailyStats(std::nullopt).front().charactersSaved, 4'000'000'000'001);
  EXPECT_EQ(m_stats.metrics(std::nullopt).periodExpansions, 3);
}

TEST_F(StatsStoreTest, KeepsOrdinaryNumbersAsTheyAre) {
  const StatsSummary summary{qint64{1} << 62, -1, 2.5, {}};
  m_store.saveStatsSummary(summary);
  m_stats.loadFromDisk(m_store);
  EXPECT_EQ(m_stats.summary(), summary);
}

}  // namespace
}  // namespace zarvy
