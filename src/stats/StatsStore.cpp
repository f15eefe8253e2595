#include "stats/StatsStore.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "base/CheckedArithmetic.h"
#include "base/text/CalendarDays.h"
#include "base/text/Graphemes.h"
#include "stats/PeriodStatistics.h"

namespace zarvy {

using namespace std::chrono_literals;

namespace {

constexpr qsizetype retainedEvents = 10'000;

qint64 total(qint64 sum, qint64 addend) {
  return checkedSum(sum, addend, "A total of the statistics has passed the range of 64 bits.");
}

// What is read counts up to these, which no use comes near: a document of as many events as one can
// hold, and a summary that goes on being added to, stay within 64 bits.
constexpr qint64 greatestLength = 1'000'000'000'000;
constexpr qint64 greatestTotal = qint64{1} << 62;

ExpansionEvent bounded(ExpansionEvent event) {
  event.triggerLength = std::clamp(event.triggerLength, -greatestLength, greatestLength);
  event.expansionLength = std::clamp(event.expansionLength, -greatestLength, greatestLength);
  return event;
}

StatsSummary bounded(StatsSummary summary) {
  summary.totalExpansions = std::min(summary.totalExpansions, greatestTotal);
  summary.totalCharactersSaved = std::min(summary.totalCharactersSaved, greatestTotal);
  return summary;
}

}  // namespace

StatsStore::StatsStore(DocumentQueue& documents, Scheduler& scheduler, const Clock& clock)
    : m_clock(clock), m_save(documents, scheduler, 500ms) {}

void StatsStore::loadFromDisk(const DataStore& store) {
  QList<ExpansionEvent> events = store.loadStatsEvents();
  for (ExpansionEvent& event : events) event = bounded(std::move(event));
  const StatsSummary summary = bounded(store.loadStatsSummary());
  const std::scoped_lock guard(m_lock);
  m_events = events;
  m_summary = summary;
}

void StatsStore::recordExpansion(const Snippet& snippet, qint64 expansionLength) {
  const std::scoped_lock guard(m_lock);
  const ExpansionEvent event = newEvent(snippet, expansionLength);
  m_save.withdraw();
  m_events.append(event);
  const qsizetype surplus = m_events.size() - retainedEvents;
  if (surplus > 0) m_events.remove(0, surplus);
  addToSummary(event);
  scheduleSave();
}

ExpansionEvent StatsStore::newEvent(const Snippet& snippet, qint64 expansionLength) const {
  const QDateTime now = m_clock.now();
  const CalendarDays calendar;
  return {.id = QUuid::createUuid(),
          .snippetID = snippet.id,
          .snippetTrigger = snippet.trigger,
          .snippetTitle = snippet.title,
          .triggerLength = graphemeCount(snippet.trigger),
          .expansionLength = expansionLength,
          .timestamp = now,
          .hourOfDay = calendar.hour(now),
          .dayOfWeek = calendar.weekday(now)};
}

void StatsStore::addToSummary(const ExpansionEvent& event) {
  const qint64 characters = charactersSaved(event);
  m_summary.totalExpansions = total(m_summary.totalExpansions, 1);
  m_summary.totalCharactersSaved = total(m_summary.totalCharactersSaved, characters);
  m_summary.totalTimeSavedSeconds += secondsSaved(characters);
  if (!m_summary.firstExpansionDate) m_summary.firstExpansionDate = event.timestamp;
}

void StatsStore::scheduleSave() {
  m_save.schedule([events = m_events, summary = m_summary](const DataStore& store) {
    store.saveStatsEvents(events);
    store.saveStatsSummary(summary);
  });
}

QList<DailyStats> StatsStore::dailyStats(std::optional<int> days) const {
  return statistics(events(), days).dailyStats();
}

QList<HourlyStats> StatsStore::hourlyStats(std::optional<int> days) const {
  return statistics(events(), days).hourlyStats();
}

QList<SnippetUsage> StatsStore::topSnippets(qsizetype limit, std::optional<int> days) const {
  return statistics(events(), days).topSnippets(limit);
}

StatsMetrics StatsStore::metrics(std::optional<int> days) const {
  std::unique_lock guard(m_lock);
  const QList<ExpansionEvent> events = m_events;
  const double lifetimeTimeSaved = m_summary.totalTimeSavedSeconds;
  guard.unlock();
  return statistics(events, days).metrics(lifetimeTimeSaved);
}

StatsSummary StatsStore::summary() const {
  const std::scoped_lock guard(m_lock);
  return m_summary;
}

QList<ExpansionEvent> StatsStore::events() const {
  const std::scoped_lock guard(m_lock);
  return m_events;
}

PeriodStatistics StatsStore::statistics(const QList<ExpansionEvent>& events,
                                        std::optional<int> days) const {
  return {events, days, m_clock.now()};
}

}  // namespace zarvy
