#include "platform/posix/PseudoTerminals.h"

#include <charconv>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <termios.h>

#include "base/posix/FileDescriptor.h"

namespace zarvy {

namespace {

bool isMasterSide(const std::filesystem::path& descriptor) {
  std::error_code error;
  const std::filesystem::path file = std::filesystem::read_symlink(descriptor, error);
  return !error && (file == "/dev/ptmx" || file == "/dev/pts/ptmx");
}

std::optional<int> numberIn(const std::filesystem::path& descriptorInformation) {
  constexpr std::string_view label = "tty-index:";
  std::ifstream lines(descriptorInformation);
  for (std::string line; std::getline(lines, line);) {
    if (!line.starts_with(label)) continue;
    const std::size_t start = line.find_first_not_of(" \t", label.size());
    int number = 0;
    if (start == std::string::npos) return std::nullopt;
    const auto [end, error] = std::from_chars(&line[start], line.data() + line.size(), number);
    return error == std::errc() ? std::optional(number) : std::nullopt;
  }
  return std::nullopt;
}

}  // namespace

std::vector<int> pseudoTerminalsOf(pid_t process) {
  std::vector<int> numbers;
  const std::filesystem::path folder = "/proc/" + std::to_string(process);
  std::error_code error;
  std::filesystem::directory_iterator descriptors(folder / "fd", error);
  for (; !error && descriptors != std::filesystem::directory_iterator();
       descriptors.increment(error)) {
    const std::filesystem::path& descriptor = descriptors->path();
    if (!isMasterSide(descriptor)) continue;
    if (const auto number = numberIn(folder / "fdinfo" / descriptor.filename())) {
      numbers.push_back(*number);
    }
  }
  return numbers;
}

// An editor that runs a shell within itself turns off that lines are shown for good, and the
// carriage return of output with it, which a prompt leaves as it is.
//
// The other side is opened and closed, which changes nothing for those who have it open.
bool readsHiddenLine(int pseudoTerminal) {
  const std::string path = "/dev/pts/" + std::to_string(pseudoTerminal);
  const FileDescriptor terminal(::open(path.c_str(), O_RDONLY | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
  termios modes{};
  if (!terminal.isOpen() || ::tcgetattr(terminal.get(), &modes) != 0) return false;
  const bool isShownAsUsual = (modes.c_oflag & ONLCR) != 0;
  return isShownAsUsual && (modes.c_lflag & ICANON) != 0 && (modes.c_lflag & ECHO) == 0;
}

}  // namespace zarvy
