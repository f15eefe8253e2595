// What a script costs once its worker is up.

#include <benchmark/benchmark.h>

#include "base/LineOutput.h"
#include "core/evaluation/JSEvaluator.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

class NoOutput final : public LineOutput {
 public:
  void print(const QString& line) override { benchmark::DoNotOptimize(line.size()); }
};

void evaluateScript(benchmark::State& state, const QString& expression, const QString& expected) {
  NoOutput output;
  ChildReaper reaper;
  JSEvaluator evaluator(output, reaper);
  if (evaluator.evaluate(expression) != expected) {
    state.SkipWithError("the script has another value");
    return;
  }
  for (auto _ : state) benchmark::DoNotOptimize(evaluator.evaluate(expression));
}

// The first script of all: the worker's start is in it.
void firstScript(benchmark::State& state) {
  NoOutput output;
  ChildReaper reaper;
  for (auto _ : state) {
    JSEvaluator evaluator(output, reaper);
    benchmark::DoNotOptimize(evaluator.evaluate(u"1+1"_s));
  }
}

// The caller sleeps while the worker works: what counts is the time on the wall.
BENCHMARK_CAPTURE(evaluateScript, sum, u"1+1"_s, u"2"_s)
    ->Unit(benchmark::kMicrosecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();
BENCHMARK(firstScript)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace zarvy
