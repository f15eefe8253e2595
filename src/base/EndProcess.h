#pragma once

#include <chrono>

namespace zarvy {

// Ends the process at once, with `line` on standard error as its last words: for a fault after
// which going on would spoil what the user has. Nothing is cleaned up. Any thread.
[[noreturn]] void endProcess(const char* line);

// Ends the process with EXIT_FAILURE where it is still there after that time, whatever its threads
// wait for. The first call holds. Uses SIGALRM; may be called in the handler of a signal.
void endProcessWithin(std::chrono::seconds limit);

}  // namespace zarvy
