#pragma once

#include <sys/types.h>

namespace zarvy {

// Whether there is such a process that has not ended; one that has and waits for its parent to
// notice does not run. Any thread.
[[nodiscard]] bool isRunning(pid_t process);

// Whether `process` is `ancestor` or was started by it, over ten generations at most. False for the
// process that everything descends from. Any thread.
[[nodiscard]] bool descendsFrom(pid_t process, pid_t ancestor);

}  // namespace zarvy
