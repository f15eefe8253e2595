#pragma once

#include <memory>
#include <string>

#include "e2e/harness/Stage.h"
#include "e2e/scenarios/Scenario.h"

namespace zarvy::e2e {

// One stage at a time, with the program and an application on it, kept from scenario to scenario of
// one application on one layout: starting a browser for each would cost more than all the rest.
class LazyStage {
 public:
  // `program` is the path of the program under test; empty plays without one.
  explicit LazyStage(std::string program) : m_program(std::move(program)) {}

  // Throws std::runtime_error where something does not come up.
  [[nodiscard]] Stage& stageFor(TargetKind kind, const MatrixLayout& layout) {
    if (m_stage && m_kind == kind && m_layout == layout.name) return *m_stage;
    end();
    auto stage = std::make_unique<Stage>(layout.keyboard());
    if (!m_program.empty()) stage->startProgram(m_program, matrixLibrary());
    stage->startTarget(kind);
    if (layout.lockedByHand) lockSecondGroup(stage->person());
    m_stage = std::move(stage);
    m_kind = kind;
    m_layout = layout.name;
    return *m_stage;
  }

  void end() { m_stage.reset(); }

 private:
  static void lockSecondGroup(Person& person) {
    person.press(XKB_KEY_Alt_L, Body::serverKeyboard);
    person.press(XKB_KEY_Shift_L, Body::serverKeyboard);
    person.releaseAll();
  }

  std::string m_program;
  std::unique_ptr<Stage> m_stage;
  TargetKind m_kind = TargetKind::xterm;
  std::string m_layout;
};

}  // namespace zarvy::e2e
