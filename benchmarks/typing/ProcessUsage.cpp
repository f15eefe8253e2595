#include "typing/ProcessUsage.h"

#include <ctime>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <string_view>

namespace zarvy::benchmarks {

namespace {

// The sum of the fields of these names in a file of lines "name: number". Throws where one is
// missing.
std::uint64_t sumOfFields(const std::filesystem::path& path,
                          std::initializer_list<std::string_view> names) {
  std::ifstream file(path);
  std::uint64_t sum = 0;
  std::size_t found = 0;
  for (std::string line; std::getline(file, line);) {
    for (const std::string_view name : names) {
      if (!line.starts_with(name) || line.substr(name.size(), 1) != ":") continue;
      sum += std::stoull(line.substr(name.size() + 1));
      ++found;
    }
  }
  if (found != names.size()) throw std::runtime_error("cannot read " + path.string());
  return sum;
}

std::filesystem::path folderOf(pid_t process) {
  return std::filesystem::path("/proc") / std::to_string(process);
}

}  // namespace

Milliseconds cpuTime(pid_t process) {
  clockid_t clock = 0;
  timespec used{};
  if (::clock_getcpuclockid(process, &clock) != 0 || ::clock_gettime(clock, &used) != 0) {
    throw std::runtime_error("the CPU time of a process cannot be read");
  }
  return std::chrono::seconds(used.tv_sec) + std::chrono::nanoseconds(used.tv_nsec);
}

double privateMemory(pid_t process) {
  constexpr double kibibytesPerMebibyte = 1024;
  const auto kibibytes =
      sumOfFields(folderOf(process) / "smaps_rollup", {"Private_Clean", "Private_Dirty"});
  return static_cast<double>(kibibytes) / kibibytesPerMebibyte;
}

std::uint64_t contextSwitches(pid_t process) {
  std::uint64_t sum = 0;
  for (const auto& task : std::filesystem::directory_iterator(folderOf(process) / "task")) {
    sum += sumOfFields(task.path() / "status",
                       {"voluntary_ctxt_switches", "nonvoluntary_ctxt_switches"});
  }
  return sum;
}

}  // namespace zarvy::benchmarks
