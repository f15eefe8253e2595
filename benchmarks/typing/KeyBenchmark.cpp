#include "typing/KeyBenchmark.h"

#include "e2e/harness/Stage.h"
#include "typing/Figure.h"
#include "typing/ProcessUsage.h"

namespace zarvy::benchmarks {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int lines = 40;

void measureKeys(e2e::Stage& stage, e2e::TargetKind kind, const std::string& name) {
  using namespace std::chrono_literals;
  e2e::TargetApplication& target = stage.startTarget(kind);
  const QString line = u"the quick brown fox jumps over a lazy dog "_s;
  const pid_t program = stage.program()->process().pid();
  const Milliseconds before = cpuTime(program);
  QString text;
  for (int count = 0; count < lines; ++count) {
    stage.person().type(line, {.body = e2e::Body::serverKeyboard, .interval = 5ms});
    text += line;
  }
  if (!target.waitForState({.text = text, .caret = text.size()}, 20s)) {
    throw std::runtime_error("not every key has arrived");
  }
  const double used = (cpuTime(program) - before).count() * 1000 / static_cast<double>(text.size());
  print({"a key typed into " + name + ", CPU time of the program", used, "us"});
}

}  // namespace

void measureKeys(const std::string& program) {
  e2e::Stage stage({.layouts = "us"});
  stage.startProgram(program, {{u";z"_s, u"Zarvy"_s}});
  measureKeys(stage, e2e::TargetKind::qt6, "Qt 6");
  measureKeys(stage, e2e::TargetKind::xterm, "xterm");
}

}  // namespace zarvy::benchmarks
