#pragma once

#include <sys/types.h>
#include <vector>

namespace zarvy {

// The numbers of the pseudoterminals whose master side the process holds: one for each tab of a
// terminal, or each pane of a terminal multiplexer. Empty for all other programs, and where nothing
// can be learned of the process. Reads /proc: 30 to 150 us. Any thread.
[[nodiscard]] std::vector<int> pseudoTerminalsOf(pid_t process);

// Whether the line that is typed into that pseudoterminal is read without being shown, as prompts
// for passwords have it. False if there is none of that number. Some 5 us. Any thread.
[[nodiscard]] bool readsHiddenLine(int pseudoTerminal);

}  // namespace zarvy
