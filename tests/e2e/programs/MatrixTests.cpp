// The short form of the matrix as tests: a suite for each application on each layout, a test for
// each scenario. `zarvy_soak` plays the long form.

#include <iostream>

#include <QCoreApplication>

#include <gtest/gtest.h>

#include "e2e/programs/LazyStage.h"
#include "e2e/programs/ProgramPath.h"
#include "e2e/scenarios/ScenarioPlayer.h"

namespace zarvy::e2e {
namespace {

struct MatrixCell {
  TargetKind kind;
  MatrixLayout layout;
  Scenario scenario;
};

class MatrixTest : public testing::Test {
 public:
  MatrixTest(LazyStage& stage, MatrixCell cell) : m_stage(stage), m_cell(std::move(cell)) {}

  void TestBody() override {
    Stage& stage = m_stage.stageFor(m_cell.kind, m_cell.layout);
    const ScenarioOutcome outcome = play(m_cell.scenario, m_cell.layout, stage);
    EXPECT_EQ(outcome.complaint, "");
    EXPECT_EQ(outcome.charactersWrong, 0);
  }

 private:
  LazyStage& m_stage;
  MatrixCell m_cell;
};

// Takes the stage down with the suite that it was for.
class StageEnder : public testing::EmptyTestEventListener {
 public:
  explicit StageEnder(LazyStage& stage) : m_stage(stage) {}
  void OnTestSuiteEnd(const testing::TestSuite&) override { m_stage.end(); }

 private:
  LazyStage& m_stage;
};

void registerCell(LazyStage& stage, const MatrixCell& cell) {
  std::string suite = nameOf(cell.kind) + "_" + cell.layout.name;
  if (!isInShortForm(cell.scenario)) suite += "_thorough";
  testing::RegisterTest(suite.c_str(), cell.scenario.name.c_str(), nullptr, nullptr, __FILE__,
                        __LINE__, [&stage, cell]() -> MatrixTest* {
                          return std::make_unique<MatrixTest>(stage, cell).release();
                        });
}

void registerMatrix(LazyStage& stage) {
  for (const MatrixLayout& layout : matrixLayouts()) {
    for (const TargetKind kind : allTargetKinds()) {
      for (const Scenario& scenario : scenarioTable()) {
        if (!isPlayedIn(scenario, kind, layout)) continue;
        registerCell(stage, {.kind = kind, .layout = layout, .scenario = scenario});
      }
    }
  }
}

}  // namespace
}  // namespace zarvy::e2e

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  const std::string program = zarvy::e2e::programPath();
  if (program.empty()) {
    std::cerr << "There is no program to test.\n";
    return 2;
  }
  zarvy::e2e::LazyStage stage(program);
  zarvy::e2e::registerMatrix(stage);
  testing::UnitTest::GetInstance()->listeners().Append(
      std::make_unique<zarvy::e2e::StageEnder>(stage).release());
  const int result = RUN_ALL_TESTS();
  // A filter that fits nothing must not pass for success.
  return testing::UnitTest::GetInstance()->test_to_run_count() == 0 ? 2 : result;
}
