// What a large library costs its user: a key typed into the search of the main window, and the
// change of one snippet.

#include <optional>
#include <utility>

#include <benchmark/benchmark.h>

#include "app/ExpansionHarness.h"
#include "app/library/SnippetFilter.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

QList<Snippet> library(qsizetype count) {
  QList<Snippet> snippets;
  for (qsizetype index = 0; index < count; ++index) {
    Snippet snippet;
    snippet.id = QUuid::createUuid();
    const QString number = QString::number(index);
    snippet.title = u"Snippet Number "_s + number;
    snippet.trigger = u";sn"_s + number;
    snippet.replacement =
        u"Dear {{field:Name}},\nmany thanks for your letter of the {{date}}. We "
        "shall answer it \u2013 as always \u2013 within a week.\n"_s +
        number;
    snippets.append(snippet);
  }
  return snippets;
}

// `text` is found in none.
void search(benchmark::State& state, const QString& text, bool isFirst) {
  const QList<Snippet> snippets = library(state.range(0));
  SnippetFilter kept("en_US");
  static_cast<void>(kept.filtered(snippets, {}, text));
  for (auto _ : state) {
    state.PauseTiming();
    std::optional<SnippetFilter> fresh(std::in_place, "en_US");
    state.ResumeTiming();
    SnippetFilter& filter = isFirst ? *fresh : kept;
    benchmark::DoNotOptimize(filter.filtered(snippets, {}, text));
    state.PauseTiming();
    fresh.reset();
    state.ResumeTiming();
  }
}

// What the main thread does at each key typed into the replacement or the trigger of one snippet;
// the documents are written by another one.
void changeOne(benchmark::State& state, bool hasNewTrigger) {
  const QList<Snippet> snippets = library(state.range(0));
  ExpansionHarness harness;
  harness.load({snippets, {}, {}, {}});
  Snippet changed = snippets.at(snippets.size() / 2);
  int key = 0;
  for (auto _ : state) {
    changed.replacement = QString::number(++key);
    if (hasNewTrigger) changed.trigger = u";trigger"_s + changed.replacement;
    harness.state->operations().setSelectedSnippet(changed);
  }
  if (harness.engine.snippets().at(snippets.size() / 2) != changed) {
    state.SkipWithError("the engine has not followed");
  }
}

BENCHMARK_CAPTURE(changeOne, text, false)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(changeOne, trigger, true)->Arg(100'000)->Unit(benchmark::kMicrosecond);

BENCHMARK_CAPTURE(search, first_key, u"zebra"_s, true)->Arg(10'000)->Arg(100'000);
BENCHMARK_CAPTURE(search, next_key, u"zebra"_s, false)->Arg(10'000)->Arg(100'000);

}  // namespace
}  // namespace zarvy
