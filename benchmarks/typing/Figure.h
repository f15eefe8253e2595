#pragma once

#include <optional>
#include <string>

namespace zarvy::benchmarks {

// One row of the table of results. Smaller is better.
struct Figure {
  std::string title;
  double value = 0;
  std::string unit;
  std::optional<double> budget = {};  // in the same unit; absent where there is none
};

// Writes it to standard output as a line of JSON.
void print(const Figure& figure);

}  // namespace zarvy::benchmarks
