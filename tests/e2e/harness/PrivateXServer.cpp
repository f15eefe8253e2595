#include "e2e/harness/PrivateXServer.h"

#include <array>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>

namespace zarvy::e2e {

namespace {

// The first line that comes through the pipe, without its line feed; empty at the deadline.
std::string readLine(int descriptor, std::chrono::milliseconds deadline) {
  const auto end = std::chrono::steady_clock::now() + deadline;
  std::string line;
  for (;;) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
        end - std::chrono::steady_clock::now());
    pollfd waiting{.fd = descriptor, .events = POLLIN, .revents = 0};
    if (left.count() <= 0 || ::poll(&waiting, 1, static_cast<int>(left.count())) <= 0) return {};
    char byte = 0;
    if (::read(descriptor, &byte, 1) != 1) return {};
    if (byte == '\n') return line;
    line += byte;
  }
}

}  // namespace

PrivateXServer::PrivateXServer(const std::string& logFolder,
                               const std::vector<std::string>& furtherArguments) {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe for the X server");
  const FileDescriptor reading(ends[0]);
  FileDescriptor writing(ends[1]);
  constexpr int displayDescriptor = 3;
  std::vector<std::string> arguments = {"-displayfd",  std::to_string(displayDescriptor),
                                        "-screen",     "0",
                                        "1280x800x24", "-nolisten",
                                        "tcp",         "-noreset"};
  arguments.insert(arguments.end(), furtherArguments.begin(), furtherArguments.end());
  m_process.emplace(
      ProcessSpecification{.program = "Xvfb",
                           .arguments = arguments,
                           .environment = environmentWithHome(logFolder),
                           .errorFile = logFolder + "/xvfb.log",
                           .descriptors = {{.ours = writing.get(), .theirs = displayDescriptor}}});
  writing.reset();
  const std::string number = readLine(reading.get(), std::chrono::seconds(30));
  if (number.empty()) throw std::runtime_error("Xvfb did not come up");
  m_display = ":" + number;
}

void PrivateXServer::kill() {
  m_process.reset();
}

}  // namespace zarvy::e2e
