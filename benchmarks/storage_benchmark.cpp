// What reading and writing large documents costs, and what the statistics cost to keep and to ask.

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include "base/Clock.h"
#include "base/LineOutput.h"
#include "base/Scheduler.h"
#include "base/UtcZone.h"
#include "stats/StatsStore.h"
#include "storage/DataStore.h"
#include "storage/DocumentQueue.h"
#include "support/EnvironmentVariable.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

class NoOutput final : public LineOutput {
 public:
  void print(const QString& line) override { benchmark::DoNotOptimize(line.size()); }
};

// Runs nothing.
class NoScheduler final : public Scheduler {
 public:
  void post(Task task) override { benchmark::DoNotOptimize(task); }
  TaskHandle postAfter(std::chrono::milliseconds, Task task) override {
    benchmark::DoNotOptimize(task);
    return TaskHandle::make();
  }
  TaskHandle repeatEvery(std::chrono::milliseconds interval, Task task) override {
    return postAfter(interval, std::move(task));
  }
};

class NoQueue final : public SerialQueue {
 public:
  void post(Task task) override { benchmark::DoNotOptimize(task); }
  void drain() override {}
};

// Documents in a folder of their own.
struct Documents {
  QTemporaryDir folder;
  NoOutput output;
  DataStore store{output, [this] { return folder.path(); }};
};

// Statistics that write nothing.
struct Statistics {
  explicit Statistics(const QList<ExpansionEvent>& events) {
    documents.store.saveStatsEvents(events);
    stats.loadFromDisk(documents.store);
  }

  Documents documents;
  NoQueue nobody;
  DocumentQueue queue{documents.store, nobody};
  NoScheduler scheduler;
  SystemClock clock;
  EnvironmentVariable machinesZone{"TZ", "Europe/Berlin"};
  StatsStore stats{queue, scheduler, clock};
};

QList<Snippet> library(qsizetype count) {
  QList<Snippet> snippets;
  const QDateTime date(QDate(2026, 1, 21), QTime(9, 30), utcZone);
  for (qsizetype index = 0; index < count; ++index) {
    snippets.append({.id = QUuid::createUuid(),
                     .title = u"Meeting request %1"_s.arg(index),
                     .trigger = u";meet%1"_s.arg(index),
                     .replacement =
                         u"Hi {{field:Name}},\n\nI'd like to schedule a meeting to discuss "
                         "{{field:Topic}}.\n\nWould Thursday at 11:00 work for you?\n\nBest,"_s,
                     .folderID = QUuid::createUuid(),
                     .createdAt = date.addSecs(index),
                     .modifiedAt = date.addSecs(2 * index)});
  }
  return snippets;
}

// The latest `count` uses of 200 snippets, spread over 80 days.
QList<ExpansionEvent> history(qsizetype count) {
  QList<QUuid> snippets;
  for (int index = 0; index < 200; ++index) snippets.append(QUuid::createUuid());
  const QDateTime first = QDateTime::currentDateTimeUtc().addDays(-80);
  QList<ExpansionEvent> events;
  for (qsizetype index = 0; index < count; ++index) {
    const qsizetype snippet = 7 * index % snippets.size();
    events.append({.id = QUuid::createUuid(),
                   .snippetID = snippets.at(snippet),
                   .snippetTrigger = u";meet%1"_s.arg(snippet),
                   .snippetTitle = u"Meeting request %1"_s.arg(snippet),
                   .triggerLength = 8,
                   .expansionLength = 120 + snippet,
                   .timestamp = first.addSecs(index * 80 * 86'400 / count),
                   .hourOfDay = index % 24,
                   .dayOfWeek = 1 + index % 7});
  }
  return events;
}

void loadSnippets(benchmark::State& state) {
  const Documents documents;
  documents.store.saveSnippets(library(state.range(0)));
  for (auto _ : state) {
    if (documents.store.loadSnippets().size() != state.range(0)) {
      state.SkipWithError("the library does not come back");
      return;
    }
  }
}

void saveSnippets(benchmark::State& state) {
  const Documents documents;
  const QList<Snippet> snippets = library(state.range(0));
  for (auto _ : state) documents.store.saveSnippets(snippets);
}

void saveStatsEvents(benchmark::State& state) {
  const Documents documents;
  const QList<ExpansionEvent> events = history(state.range(0));
  for (auto _ : state) documents.store.saveStatsEvents(events);
}

void recordExpansion(benchmark::State& state) {
  Statistics statistics(history(state.range(0)));
  const Snippet snippet = library(1).front();
  for (auto _ : state) statistics.stats.recordExpansion(snippet, 120);
}

void dailyStats(benchmark::State& state) {
  const Statistics statistics(history(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(statistics.stats.dailyStats(90));
}

// What the dashboard asks for at once.
void allStats(benchmark::State& state) {
  const Statistics statistics(history(state.range(0)));
  for (auto _ : state) {
    benchmark::DoNotOptimize(statistics.stats.dailyStats({}));
    benchmark::DoNotOptimize(statistics.stats.hourlyStats({}));
    benchmark::DoNotOptimize(statistics.stats.topSnippets(5, {}));
    benchmark::DoNotOptimize(statistics.stats.metrics({}));
  }
}

BENCHMARK(loadSnippets)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(saveSnippets)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(saveStatsEvents)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(recordExpansion)->Arg(10'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(dailyStats)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(allStats)->Arg(10'000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zarvy
