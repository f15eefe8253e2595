#pragma once

#include <cstdint>
#include <sys/types.h>

#include "typing/Statistics.h"

// What the kernel tells of a process. All throw std::runtime_error once the process has gone.
namespace zarvy::benchmarks {

// The CPU time that all threads of the process have used so far, those that have ended among them.
[[nodiscard]] Milliseconds cpuTime(pid_t process);

// The memory that no other process shares, in MiB.
[[nodiscard]] double privateMemory(pid_t process);

// How often its threads have been switched away from, willingly or not, since they began. Every
// wake-up ends in one.
[[nodiscard]] std::uint64_t contextSwitches(pid_t process);

}  // namespace zarvy::benchmarks
