#pragma once

#include <string>

namespace zarvy::benchmarks {

// What each key costs that somebody types and that completes no trigger, in a terminal, which is
// asked whether it reads a password, and elsewhere.
void measureKeys(const std::string& program);

}  // namespace zarvy::benchmarks
