#pragma once

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <set>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "e2e/harness/WaitUntil.h"

// What tests want to know about processes.
namespace zarvy::processes {

// For a machine that does much else. Nothing waits that long unless something is wrong.
constexpr std::chrono::seconds patience{60};

[[nodiscard]] inline bool eventually(const std::function<bool()>& condition) {
  return e2e::waitUntil(condition, patience, std::chrono::milliseconds(2));
}

// What this process has open, by number.
[[nodiscard]] inline std::set<std::string> openDescriptors() {
  std::set<std::string> numbers;
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
    std::error_code gone;
    const auto target = std::filesystem::read_symlink(entry.path(), gone);
    if (!gone && !target.string().ends_with("/fd")) numbers.insert(entry.path().filename());
  }
  return numbers;
}

// Running and unreaped ones alike.
[[nodiscard]] inline bool hasChildren() {
  siginfo_t info{};
  return ::waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) == 0 || errno != ECHILD;
}

struct Stat {
  char state = '?';  // as ps shows it; ? where there is no such process
  pid_t parent = 0;
  unsigned long userTime = 0;  // clock ticks
};

[[nodiscard]] inline Stat statOf(pid_t process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/stat");
  std::string line;
  if (!std::getline(file, line)) return {};
  std::istringstream fields(line.substr(line.rfind(')') + 2));
  Stat stat;
  fields >> stat.state >> stat.parent;
  std::string skipped;
  for (int field = 5; field < 14; ++field) fields >> skipped;
  fields >> stat.userTime;
  return stat;
}

// Resident, in bytes; 0 where there is no such process.
[[nodiscard]] inline long long residentMemoryOf(pid_t process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/statm");
  long long addressSpace = 0;
  long long resident = 0;
  file >> addressSpace >> resident;
  return resident * ::sysconf(_SC_PAGESIZE);
}

// Reaped, or only waiting for it: with all of its threads, so that nothing of it is open any more.
[[nodiscard]] inline bool hasEnded(pid_t process) {
  const char state = statOf(process).state;
  if (state == '?' || state == 'X') return true;
  if (state != 'Z') return false;
  int threads = 0;
  std::error_code gone;
  std::filesystem::directory_iterator task("/proc/" + std::to_string(process) + "/task", gone);
  for (; !gone && task != std::filesystem::directory_iterator(); task.increment(gone)) ++threads;
  return gone || threads <= 1;
}

[[nodiscard]] inline std::vector<pid_t> runningChildren() {
  std::vector<pid_t> children;
  for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
    const std::string name = entry.path().filename();
    if (name.find_first_not_of("0123456789") != std::string::npos) continue;
    const auto process = static_cast<pid_t>(std::stol(name));
    if (statOf(process).parent == ::getpid() && !hasEnded(process)) children.push_back(process);
  }
  return children;
}

}  // namespace zarvy::processes
