#include "platform/posix/ProcessFamily.h"

#include <fstream>
#include <string>

namespace zarvy {

namespace {
constexpr int mostAncestors = 10;
}

// The name of a process stands in parentheses and may hold anything.
pid_t parentOf(pid_t process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/stat");
  std::string line;
  std::getline(file, line);
  const std::size_t nameEnd = line.rfind(')');
  constexpr std::size_t stateLength = 4;  // ") S "
  if (nameEnd == std::string::npos || nameEnd + stateLength >= line.size()) return 0;
  return static_cast<pid_t>(std::strtol(line.c_str() + nameEnd + stateLength, nullptr, 10));
}

bool descendsFrom(pid_t process, pid_t ancestor) {
  for (int generation = 0; generation < mostAncestors && process > 1; ++generation) {
    if (process == ancestor) return true;
    process = parentOf(process);
  }
  return false;
}

}  // namespace zarvy
