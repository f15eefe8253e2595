#pragma once

#include <string>

namespace zarvy::benchmarks {

// How soon the program's first key follows the key that completes a trigger.
void measureReaction(const std::string& program);

}  // namespace zarvy::benchmarks
