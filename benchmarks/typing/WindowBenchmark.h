#pragma once

#include <string>

namespace zarvy::benchmarks {

// How soon the quick search panel follows its hot key, and the form the trigger that asks for it:
// until the window is on the screen and has the keyboard. In small and in large libraries.
void measureWindows(const std::string& program);

}  // namespace zarvy::benchmarks
