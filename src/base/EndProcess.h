#pragma once

namespace zarvy {

// Ends the process at once, with `line` on standard error as its last words: for a fault after
// which going on would spoil what the user has. Nothing is cleaned up. Any thread.
[[noreturn]] void endProcess(const char* line);

}  // namespace zarvy
