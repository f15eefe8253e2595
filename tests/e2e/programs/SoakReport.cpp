#include "e2e/programs/SoakReport.h"

#include <algorithm>
#include <iomanip>
#include <iostream>

namespace zarvy::e2e {

void SoakReport::add(const std::string& target, const std::string& layout,
                     const std::string& scenario, const ScenarioOutcome& outcome) {
  Row& row = m_rows[{target, layout}];
  row.charactersSent += outcome.charactersSent;
  row.charactersWrong += outcome.charactersWrong;
  row.typedDeleted += outcome.typedDeleted;
  ++row.scenarios;
  if (outcome.complaint.empty() && outcome.charactersWrong == 0) return;
  ++row.scenariosWrong;
  if (row.firstComplaint.empty()) row.firstComplaint = scenario + ": " + outcome.complaint;
}

bool SoakReport::isAllRight() const {
  return !m_rows.empty() && std::all_of(m_rows.begin(), m_rows.end(), [](const auto& entry) {
    return entry.second.charactersWrong == 0 && entry.second.scenariosWrong == 0;
  });
}

void SoakReport::print() const {
  Row total;
  std::cout << "| target | layout | characters sent | characters wrong | typed ones deleted | "
               "scenarios | scenarios wrong "
               "| first wrong example |\n|---|---|---:|---:|---:|---:|---:|---|\n";
  const auto printRow = [](const std::string& target, const std::string& layout, const Row& row) {
    std::cout << "| " << target << " | " << layout << " | " << row.charactersSent << " | "
              << row.charactersWrong << " | " << row.typedDeleted << " | " << row.scenarios << " | "
              << row.scenariosWrong << " | " << row.firstComplaint << " |\n";
  };
  for (const auto& [key, row] : m_rows) {
    printRow(key.first, key.second, row);
    total.charactersSent += row.charactersSent;
    total.charactersWrong += row.charactersWrong;
    total.typedDeleted += row.typedDeleted;
    total.scenarios += row.scenarios;
    total.scenariosWrong += row.scenariosWrong;
  }
  printRow("all", "all", total);
  std::cout.flush();
}

}  // namespace zarvy::e2e
