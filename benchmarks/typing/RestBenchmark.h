#pragma once

#include <string>

namespace zarvy::benchmarks {

// What the program costs before anybody types: its start with a large library, and the memory and
// wake-ups of doing nothing.
void measureStart(const std::string& program);
void measureRest(const std::string& program);

}  // namespace zarvy::benchmarks
