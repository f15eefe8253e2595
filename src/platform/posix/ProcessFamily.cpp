#include "platform/posix/ProcessFamily.h"

#include <cstdlib>
#include <fstream>
#include <string>

namespace zarvy {

namespace {

constexpr int mostAncestors = 10;

// What stands behind the name of the process, which is in parentheses and may hold anything: its
// state and its parent, "S 1 ..." for example. Empty where it cannot be learned.
std::string stateOf(pid_t process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/stat");
  std::string line;
  std::getline(file, line);
  const std::size_t nameEnd = line.rfind(')');
  return nameEnd == std::string::npos || nameEnd + 2 >= line.size() ? std::string()
                                                                    : line.substr(nameEnd + 2);
}

// 0 if there is none, or it cannot be learned.
pid_t parentOf(pid_t process) {
  const std::string state = stateOf(process);
  return state.empty() ? 0 : static_cast<pid_t>(std::strtol(state.c_str() + 1, nullptr, 10));
}

}  // namespace

bool isRunning(pid_t process) {
  const std::string state = stateOf(process);
  return !state.empty() && state.front() != 'Z' && state.front() != 'X';
}

bool descendsFrom(pid_t process, pid_t ancestor) {
  for (int generation = 0; generation < mostAncestors && process > 1; ++generation) {
    if (process == ancestor) return true;
    process = parentOf(process);
  }
  return false;
}

}  // namespace zarvy
