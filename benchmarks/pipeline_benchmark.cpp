// What turning a snippet into the text to type costs, evaluators left out.

#include <benchmark/benchmark.h>

#include "base/Clock.h"
#include "core/TextExpansionEngine.h"
#include "fakes/FakePlaceholders.h"
#include "fakes/RecordingLineOutput.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

// Twenty placeholders, no two the same, of every kind but shell and JavaScript.
const QStringList placeholders{u"{{#Name}}"_s,
                               u"{{#Company}}"_s,
                               u"{{#Street}}"_s,
                               u"{{#City}}"_s,
                               u"{{date:+1d}}"_s,
                               u"{{date:-2w:short}}"_s,
                               u"{{date:+1m:EEEE}}"_s,
                               u"{{time:+2h}}"_s,
                               u"{{time:-30M}}"_s,
                               u"{{date:short}}"_s,
                               u"{{date:long}}"_s,
                               u"{{time}}"_s,
                               u"{{clipboard}}"_s,
                               u"{{uppercase:{{#City}}}}"_s,
                               u"{{titlecase:kind regards}}"_s,
                               u"{{counter:letter}}"_s,
                               u"{{counter:page:100}}"_s,
                               u"{{counter:part:reset}}"_s,
                               u"{{date:yyyy-MM-dd}}"_s,
                               u"{{cursor}}"_s};

Snippet snippetOf(const QString& replacement) {
  Snippet snippet;
  snippet.id = QUuid::createUuid();
  snippet.trigger = u";letter"_s;
  snippet.replacement = replacement;
  return snippet;
}

// `length` UTF-16 units of plain text with the placeholders spread over it.
QString letter(qsizetype length, const QStringList& parts) {
  const QString words = u"Thank you for your letter of last week. "_s;
  qsizetype plain = length;
  for (const QString& part : parts) plain -= part.size();
  QString text;
  for (const QString& part : parts) {
    const qsizetype share = plain / parts.size();
    text += words.repeated(share / words.size() + 1).first(share) + part;
  }
  return text + QString(length - text.size(), u'.');
}

struct Desk {
  Desk() {
    fakes.pasteboard.content = u"what was copied"_s;
    engine.setGlobalVariables(
        {{QUuid::createUuid(), u"name"_s, u"Ada Lovelace"_s, {}, {}},
         {QUuid::createUuid(), u"company"_s, u"Analytical Engines"_s, {}, {}},
         {QUuid::createUuid(), u"street"_s, u"12 St James's Square"_s, {}, {}},
         {QUuid::createUuid(), u"city"_s, u"London"_s, {}, {}}});
  }

  FakePlaceholders fakes;
  RecordingLineOutput output;
  ThreadTimeClock clock;
  TextExpansionEngine engine{output, clock, fakes.services()};
};

void process(benchmark::State& state, const QString& text) {
  Desk desk;
  const Snippet snippet = snippetOf(text);
  for (auto _ : state) benchmark::DoNotOptimize(desk.engine.processSnippet(snippet, {}));
}

void processSnippet(benchmark::State& state) {
  process(state, letter(2000, placeholders));
}

void processPlainText(benchmark::State& state) {
  process(state, letter(2000, {u""_s}));
}

void processMegabyte(benchmark::State& state) {
  process(state, letter(1'000'000, placeholders));
}

void processThousandPlaceholders(benchmark::State& state) {
  QStringList parts;
  while (parts.size() < 1000) parts += placeholders;
  process(state, letter(100'000, parts));
}

BENCHMARK(processSnippet)->Unit(benchmark::kMicrosecond);
BENCHMARK(processPlainText)->Unit(benchmark::kMicrosecond);
BENCHMARK(processMegabyte)->Unit(benchmark::kMillisecond);
BENCHMARK(processThousandPlaceholders)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zarvy
