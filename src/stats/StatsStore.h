#pragma once

#include <mutex>
#include <optional>

#include <QList>

#include "base/Clock.h"
#include "base/Scheduler.h"
#include "core/model/ExpansionEvent.h"
#include "core/model/Snippet.h"
#include "core/model/StatsSummary.h"
#include "stats/StatsFigures.h"
#include "storage/DocumentQueue.h"

namespace zarvy {

class PeriodStatistics;

// Records every expansion and answers for a period what was recorded: the latest 10,000 events one
// by one, and a summary that goes on counting when old events are dropped. Both are kept in memory
// and written 0.5 s after the latest event. Any thread.
//
// A period is a number of calendar days that ends with today, 1 being today alone; absent is all
// time, which is as far back as the events go. A number below 1 ends the process. What is asked is
// computed from all events each time, in time that grows with their number.
class StatsStore {
 public:
  // All of it outlives the store and the saves that it schedules.
  StatsStore(DocumentQueue& documents, Scheduler& scheduler, const Clock& clock);

  // Puts in what was written. Reads before it returns: at start, as work on the documents. Numbers
  // that no expansion makes are read as 10^12 characters of an event and 2^62 of a total at most:
  // sums are checked, and what stands in a document must not be able to end the process.
  void loadFromDisk(const DataStore& store);

  // Records that `snippet` was expanded just now to a text of `expansionLength` user-perceived
  // characters. Ends the process where a total no longer fits into 64 bits.
  void recordExpansion(const Snippet& snippet, qint64 expansionLength);

  // Ascending by date. A period has a row for each of its days, all time only for days with events.
  [[nodiscard]] QList<DailyStats> dailyStats(std::optional<int> days) const;

  // Ascending by hour, with a row for each of the 24 hours. An event counts for the hour that the
  // clocks showed when it was recorded, also where the time zone has changed since.
  [[nodiscard]] QList<HourlyStats> hourlyStats(std::optional<int> days) const;

  // The most used snippets, at most `limit`, descending by count; of equals the one used first.
  [[nodiscard]] QList<SnippetUsage> topSnippets(qsizetype limit, std::optional<int> days) const;

  [[nodiscard]] StatsMetrics metrics(std::optional<int> days) const;

  [[nodiscard]] StatsSummary summary() const;

 private:
  [[nodiscard]] ExpansionEvent newEvent(const Snippet& snippet, qint64 expansionLength) const;
  void addToSummary(const ExpansionEvent& event);
  void scheduleSave();
  [[nodiscard]] QList<ExpansionEvent> events() const;
  [[nodiscard]] PeriodStatistics statistics(const QList<ExpansionEvent>& events,
                                            std::optional<int> days) const;

  const Clock& m_clock;

  mutable std::mutex m_lock;       // guards all below; not held while a query computes
  QList<ExpansionEvent> m_events;  // oldest first
  StatsSummary m_summary;
  DebouncedSave m_save;
};

}  // namespace zarvy
