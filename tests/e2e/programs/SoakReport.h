#pragma once

#include <map>
#include <string>
#include <utility>

#include "e2e/scenarios/ScenarioPlayer.h"

namespace zarvy::e2e {

// Adds up what was typed, application by layout.
class SoakReport {
 public:
  void add(const std::string& target, const std::string& layout, const std::string& scenario,
           const ScenarioOutcome& outcome);

  [[nodiscard]] bool isAllRight() const;
  void print() const;

 private:
  struct Row {
    qsizetype charactersSent = 0;
    qsizetype charactersWrong = 0;
    qsizetype typedDeleted = 0;
    int scenarios = 0;
    int scenariosWrong = 0;
    std::string firstComplaint;
  };

  std::map<std::pair<std::string, std::string>, Row> m_rows;
};

}  // namespace zarvy::e2e
