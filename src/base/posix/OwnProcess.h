#pragma once

#include <string>

#include <QString>

namespace zarvy {

// The path of the program that this process runs, whatever it was called by. Any thread.
[[nodiscard]] QString pathOfOwnProgram();

// From now on other programs of the user can neither open the memory of this process nor become its
// debugger, and the system writes no dump of it when it crashes. Who has opened it before keeps it.
// Programs that it starts are not affected. Any thread; stays so.
//
// Services that look at a caller's /proc/<pid>/root refuse it then: the desktop's portals do, but
// for a caller that they have looked at before.
void keepMemoryPrivate();

// Gives the calling thread the name that debuggers and lists of threads show; the system keeps the
// first 15 bytes of it.
void nameThisThread(const std::string& name);

}  // namespace zarvy
