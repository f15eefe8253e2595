// What the list of the main window costs in a large library: what a key typed into its search
// leaves.

#include <optional>
#include <utility>

#include <benchmark/benchmark.h>

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

BENCHMARK_CAPTURE(search, first_key, u"zebra"_s, true)->Arg(10'000)->Arg(100'000);
BENCHMARK_CAPTURE(search, next_key, u"zebra"_s, false)->Arg(10'000)->Arg(100'000);

}  // namespace
}  // namespace zarvy
