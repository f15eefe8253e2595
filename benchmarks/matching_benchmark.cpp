// What a key press costs in the search for a trigger, and what handing a library over costs.

#include <algorithm>
#include <random>

#include <QStringList>

#include <benchmark/benchmark.h>

#include "base/Clock.h"
#include "base/LineOutput.h"
#include "core/TextExpansionEngine.h"
#include "fakes/FakePlaceholders.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

class NoOutput final : public LineOutput {
 public:
  void print(const QString& line) override { benchmark::DoNotOptimize(line.size()); }
};

class RandomLibrary {
 public:
  QString letters(int shortest, int longest, QStringView alphabet) {
    QString text;
    for (int rest = number(shortest, longest); rest > 0; --rest) {
      text.append(alphabet[number(0, static_cast<int>(alphabet.size()) - 1)]);
    }
    return text;
  }

  QList<Snippet> literals(qsizetype count) {
    QList<Snippet> snippets;
    snippets.reserve(count);
    while (snippets.size() < count) {
      snippets.append(snippet(u';' + letters(2, 8, latin), false));
    }
    return snippets;
  }

  // Expressions as people write them; none of them fits a text of small letters alone.
  QList<Snippet> expressions(qsizetype count) {
    QList<Snippet> snippets;
    while (snippets.size() < count) {
      const QString word = letters(2, 5, latin);
      const QString patterns[] = {
          u";%1(?<n>\\d+)"_s.arg(word),
          u"(?<word>\\w+)!%1"_s.arg(word),
          u"(\\d+)\\s*%1"_s.arg(word),
          u"\\b%1(\\d{1,3})"_s.arg(word),
          u"#(?<tag>[a-z]+)-%1"_s.arg(word),
          u"[a-z]+@%1"_s.arg(word),
          u"(?:%1|;%1)(?<rest>[A-Z]+)"_s.arg(word),
          u"(?i)%1(?<n>[0-9]+)x"_s.arg(word),
      };
      snippets.append(snippet(patterns[number(0, std::size(patterns) - 1)], true));
    }
    return snippets;
  }

  // Full buffers of words, none of which ends in a trigger: the triggers begin with a semicolon.
  QStringList buffers(QStringView alphabet) {
    QStringList result;
    for (int index = 0; index < 64; ++index) result.append(letters(50, 50, alphabet));
    return result;
  }

  static constexpr QStringView latin = u"abcdefghijklmnopqrstuvwxyz";
  static constexpr QStringView mixed =
      u"abcdefghijklmnopqrstuvwxyzabcdefghijklmnopqrstuvwxyz0123456789.,-'@!#";
  static constexpr QStringView cyrillic = u"\u0430\u0431\u0432\u0433\u0434\u0435\u0436\u0437";
  static constexpr QStringView accented = u"ae\u0301o\u0308";

 private:
  int number(int least, int most) {
    return std::uniform_int_distribution<int>(least, most)(m_random);
  }

  Snippet snippet(const QString& trigger, bool isRegexTrigger) {
    Snippet result;
    result.id = QUuid::createUuid();
    result.title = u"Title"_s;
    result.trigger = trigger;
    result.replacement = u"Thank you for your email. I'll get back to you shortly."_s;
    result.isRegexTrigger = isRegexTrigger;
    return result;
  }

  std::mt19937 m_random{20260121};
};

void search(benchmark::State& state, const QList<Snippet>& snippets, const QStringList& buffers) {
  NoOutput output;
  FakePlaceholders placeholders;
  const ThreadTimeClock clock;
  TextExpansionEngine engine(output, clock, placeholders.services());
  engine.setSnippets(snippets);
  for (const QString& buffer : buffers) {
    if (engine.findMatch(buffer)) {
      state.SkipWithError("a buffer matches");
      return;
    }
  }
  qsizetype next = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(engine.findMatch(buffers.at(next)));
    next = (next + 1) % buffers.size();
  }
}

void noMatchAmongLiterals(benchmark::State& state, QStringView alphabet) {
  RandomLibrary random;
  search(state, random.literals(state.range(0)), random.buffers(alphabet));
}

void noMatchAmongExpressions(benchmark::State& state, QStringView alphabet) {
  RandomLibrary random;
  search(state, random.expressions(state.range(0)), random.buffers(alphabet));
}

// Expressions of which nothing can be ruled out ahead, and that try every place of the buffer to
// its end.
void noMatchAmongSlowExpressions(benchmark::State& state) {
  RandomLibrary random;
  QList<Snippet> snippets = random.expressions(state.range(0));
  for (Snippet& snippet : snippets) snippet.trigger = u"(?<word>\\w+)[0-9]"_s;
  search(state, snippets, random.buffers(RandomLibrary::latin));
}

void handOver(benchmark::State& state) {
  RandomLibrary random;
  const QList<Snippet> snippets = random.literals(state.range(0));
  NoOutput output;
  FakePlaceholders placeholders;
  const ThreadTimeClock clock;
  TextExpansionEngine engine(output, clock, placeholders.services());
  for (auto _ : state) engine.setSnippets(snippets);
}

BENCHMARK_CAPTURE(noMatchAmongLiterals, latin, RandomLibrary::latin)
    ->Arg(100)
    ->Arg(10'000)
    ->Arg(1'000'000);
BENCHMARK_CAPTURE(noMatchAmongLiterals, cyrillic, RandomLibrary::cyrillic)->Arg(10'000);
BENCHMARK_CAPTURE(noMatchAmongLiterals, accented, RandomLibrary::accented)->Arg(10'000);
BENCHMARK_CAPTURE(noMatchAmongExpressions, latin, RandomLibrary::latin)
    ->Arg(1'000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(noMatchAmongExpressions, mixed, RandomLibrary::mixed)
    ->Arg(1'000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(noMatchAmongSlowExpressions)->Arg(1'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(handOver)->Arg(10'000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zarvy
