#pragma once

namespace zarvy {

// Takes from the whole process, all of its threads, and for good: opening files, sockets, starting
// programs, and whatever else a script has no use for. Such a call then fails with EPERM, and the
// first unexpected one is told on standard error; on a thread that blocks all signals an unexpected
// one ends the process. What is open stays open.
// Throws std::system_error where the kernel refuses, and nothing is taken then.
void enterSandbox();

// What the process gives up before it runs anything: dumping its memory to a file, being looked
// into by others, and its life where the machine runs out of memory.
void giveUpPrivileges();

}  // namespace zarvy
