// What quick search costs in a large library: opening the panel, and a key typed into it, from the
// filter alone to what is painted.

#include <random>

#include <QApplication>
#include <QLineEdit>

#include <benchmark/benchmark.h>

#include "fakes/FakeWorkspace.h"
#include "fakes/Journal.h"
#include "fakes/ManualScheduler.h"
#include "ui/quicksearch/FloatingPanel.h"
#include "ui/quicksearch/QuickSearchRanking.h"
#include "ui/quicksearch/QuickSearchWindowController.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

// Titles and triggers as people give them, of a few hundred words that come back again and again.
QList<Snippet> library(qsizetype count) {
  std::mt19937 random(20261121);
  const auto number = [&random](int least, int most) {
    return std::uniform_int_distribution<int>(least, most)(random);
  };
  QStringList words;
  for (int index = 0; index < 400; ++index) {
    QString word;
    for (int rest = number(2, 9); rest > 0; --rest) word.append(QChar(u'a' + number(0, 25)));
    words.append(word);
  }
  const auto word = [&] { return words.at(number(0, static_cast<int>(words.size()) - 1)); };
  QList<Snippet> snippets;
  snippets.reserve(count);
  for (qsizetype index = 0; index < count; ++index) {
    Snippet snippet;
    snippet.title = word() + u' ' + word() + u' ' + word() + u' ' + QString::number(index);
    snippet.title[0] = snippet.title.at(0).toUpper();
    snippet.trigger = u';' + word() + QString::number(index % 100);
    snippets.append(snippet);
  }
  return snippets;
}

void lowerCaseAll(benchmark::State& state) {
  const QList<Snippet> snippets = library(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(searchedTextsOf(snippets));
}

// `text` may find much or nothing.
void filterAtKey(benchmark::State& state, const QString& text) {
  const QList<SearchedTexts> texts = searchedTextsOf(library(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(quickSearchResults(texts, text));
}

// A panel, shown on no display.
class Panel {
 public:
  explicit Panel(const QList<Snippet>& snippets) : m_snippets(snippets) {}

  void open() {
    m_controller.show(m_snippets, {}, [](const Snippet&) {});
    paint();
  }

  void type(const QString& text) {
    window().findChild<QLineEdit*>()->setText(text);
    paint();
  }

 private:
  [[nodiscard]] static QWidget& window() {
    for (QWidget* candidate : QApplication::topLevelWidgets()) {
      if (qobject_cast<FloatingPanel*>(candidate) && candidate->isVisible()) return *candidate;
    }
    throw std::logic_error("no panel");
  }

  static void paint() {
    QApplication::sendPostedEvents();
    benchmark::DoNotOptimize(window().grab());
  }

  const QList<Snippet> m_snippets;
  Journal m_journal;
  FakeWorkspace m_workspace{m_journal};
  ManualScheduler m_scheduler;
  QuickSearchWindowController m_controller{{m_scheduler, m_workspace}};
};

void openPanel(benchmark::State& state) {
  Panel panel(library(state.range(0)));
  for (auto _ : state) {
    panel.open();
    state.PauseTiming();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);  // the one before
    state.ResumeTiming();
  }
}

// The two texts take turns, since the same again would change nothing.
void typeKey(benchmark::State& state) {
  Panel panel(library(state.range(0)));
  panel.open();
  bool isEven = false;
  for (auto _ : state) {
    isEven = !isEven;
    panel.type(isEven ? u"e"_s : u"a"_s);
  }
}

BENCHMARK(lowerCaseAll)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(filterAtKey, letter, u"e"_s)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(filterAtKey, nothing, u"signature zz"_s)
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(filterAtKey, words, u"a e i o n 1 2 3"_s)
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(filterAtKey, long, u"thank you very much for your letter"_s)
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond);

BENCHMARK(openPanel)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(typeKey)->Arg(100'000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zarvy

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
