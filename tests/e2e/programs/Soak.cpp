// Plays the long form of the matrix again and again, and counts characters sent and wrong. Exit
// status 0 only if none was wrong.

#include <iostream>

#include <QCommandLineParser>
#include <QCoreApplication>

#include "e2e/programs/LazyStage.h"
#include "e2e/programs/ProgramPath.h"
#include "e2e/programs/SoakReport.h"
#include "e2e/programs/XdotoolExpander.h"

namespace zarvy::e2e {
namespace {

using namespace Qt::Literals::StringLiterals;

struct SoakRequest {
  int repeats = 1;
  QStringList targets;  // empty for all, as the two below
  QStringList layouts;
  QStringList scenarios;
  bool withXdotool = false;
  std::string program;
};

bool isWanted(const QStringList& names, const std::string& name) {
  return names.isEmpty() || names.contains(QString::fromStdString(name));
}

SoakRequest readRequest(const QCoreApplication& application) {
  QCommandLineParser parser;
  const QCommandLineOption repeat(u"repeat"_s, u"How often the whole is played."_s, u"times"_s,
                                  u"1"_s);
  const QCommandLineOption target(u"app"_s, u"Only this application; may be given again."_s,
                                  u"name"_s);
  const QCommandLineOption layout(u"layout"_s, u"Only this layout; may be given again."_s,
                                  u"name"_s);
  const QCommandLineOption scenario(u"scenario"_s, u"Only this scenario; may be given again."_s,
                                    u"name"_s);
  const QCommandLineOption xdotool(u"xdotool"_s,
                                   u"Have `xdotool type` write the same texts, for comparison."_s);
  const QCommandLineOption program(u"program"_s, u"The program under test."_s, u"path"_s);
  parser.addOptions({repeat, target, layout, scenario, xdotool, program});
  parser.addHelpOption();
  parser.process(application);
  return {.repeats = parser.value(repeat).toInt(),
          .targets = parser.values(target),
          .layouts = parser.values(layout),
          .scenarios = parser.values(scenario),
          .withXdotool = parser.isSet(xdotool),
          .program = parser.isSet(program) ? parser.value(program).toStdString() : programPath()};
}

void playCell(const SoakRequest& request, LazyStage& lazyStage, TargetKind kind,
              const MatrixLayout& layout, SoakReport& report) {
  for (const Scenario& scenario : scenarioTable()) {
    if (!isPlayedIn(scenario, kind, layout) || !isWanted(request.scenarios, scenario.name))
      continue;
    if (request.withXdotool && !canXdotoolPlay(scenario)) continue;
    Stage& stage = lazyStage.stageFor(kind, layout);
    const ScenarioOutcome outcome =
        play(scenario, layout, stage, request.withXdotool ? expandByXdotool : typeTrigger);
    report.add(nameOf(kind), layout.name, scenario.name, outcome);
    if (outcome.complaint.empty()) continue;
    std::cout << nameOf(kind) << " " << layout.name << " " << scenario.name << ": "
              << outcome.complaint << std::endl;
  }
}

int soak(const SoakRequest& request) {
  SoakReport report;
  LazyStage stage(request.withXdotool ? std::string() : request.program);
  for (int round = 1; round <= request.repeats; ++round) {
    for (const MatrixLayout& layout : matrixLayouts()) {
      for (const TargetKind kind : allTargetKinds()) {
        if (!isWanted(request.layouts, layout.name) || !isWanted(request.targets, nameOf(kind))) {
          continue;
        }
        try {
          playCell(request, stage, kind, layout, report);
        } catch (const std::exception& error) {
          report.add(nameOf(kind), layout.name, "start", {.complaint = error.what()});
          std::cout << nameOf(kind) << " " << layout.name << ": " << error.what() << std::endl;
          stage.end();
        }
      }
    }
    std::cout << "round " << round << " of " << request.repeats << " played" << std::endl;
  }
  report.print();
  return report.isAllRight() ? 0 : 1;
}

}  // namespace
}  // namespace zarvy::e2e

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const auto request = zarvy::e2e::readRequest(application);
  if (request.program.empty() && !request.withXdotool) {
    std::cerr << "There is no program to test.\n";
    return 2;
  }
  return zarvy::e2e::soak(request);
}
