#include "typing/ReactionBenchmark.h"

#include "typing/Expansion.h"
#include "typing/Figure.h"
#include "typing/ProcessUsage.h"

namespace zarvy::benchmarks {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int expansions = 500;

void measureReaction(e2e::Stage& stage, KeyObserver& observer, e2e::Body body,
                     const std::string& device) {
  const e2e::TestSnippet snippet{u";z"_s, u"Zarvy"_s};
  const pid_t program = stage.program()->process().pid();
  static_cast<void>(measureExpansion(stage, observer, snippet, body));
  const Milliseconds programBefore = cpuTime(program);
  const Milliseconds serverBefore = cpuTime(stage.server().pid());
  std::vector<double> reactions;
  for (int count = 0; count < expansions; ++count) {
    reactions.push_back(measureExpansion(stage, observer, snippet, body).reaction.count());
  }
  const Milliseconds programUsed = cpuTime(program) - programBefore;
  const Milliseconds serverUsed = cpuTime(stage.server().pid()) - serverBefore;
  const std::string what = "key press to first synthetic event, trigger from " + device;
  print({what + ", median of 500", median(reactions), "ms", 2});
  print({what + ", 99th percentile of 500", quantile(reactions, 0.99), "ms"});
  print({"a short expansion, trigger from " + device + ", CPU time of the program",
         programUsed.count() / expansions, "ms"});
  print({"a short expansion, trigger from " + device + ", CPU time of the X server",
         serverUsed.count() / expansions, "ms"});
}

}  // namespace

void measureReaction(const std::string& program) {
  e2e::Stage stage({.layouts = "us"});
  stage.startProgram(program, {{u";z"_s, u"Zarvy"_s}});
  stage.startTarget(e2e::TargetKind::qt6);
  KeyObserver observer(stage.server().display());
  measureReaction(stage, observer, e2e::Body::xtest, "XTEST");
  // Hardware is another device than XTEST: the server changes the keyboard that applications see
  // whenever the program's keys follow the person's, and tells every client a new keymap.
  measureReaction(stage, observer, e2e::Body::serverKeyboard, "the server's keyboard");
}

}  // namespace zarvy::benchmarks
