#include "e2e/harness/ChildProcess.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <system_error>

namespace zarvy::e2e {

namespace {

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

// All that the child needs between fork and exec, laid out beforehand: other threads may have held
// the allocator's lock at the fork.
struct PreparedStart {
  explicit PreparedStart(const ProcessSpecification& specification)
      : arguments{specification.program}, descriptors(specification.descriptors) {
    for (const std::string& argument : specification.arguments) arguments.push_back(argument);
    for (const auto& [name, value] : specification.environment) {
      environment.push_back(name + "=" + value);
    }
    argumentPointers = pointersTo(arguments);
    environmentPointers = pointersTo(environment);
  }

  std::vector<std::string> arguments;
  std::vector<std::string> environment;
  std::vector<ProcessSpecification::Descriptor> descriptors;
  std::vector<char*> argumentPointers;
  std::vector<char*> environmentPointers;
};

// A descriptor of ours may stand where another one has to go, so that all of them are first moved
// out of the way.
void placeDescriptors(PreparedStart& start) {
  constexpr int outOfTheWay = 100;
  for (auto& descriptor : start.descriptors) {
    descriptor.ours = ::fcntl(descriptor.ours, F_DUPFD_CLOEXEC, outOfTheWay);
  }
  for (const auto& descriptor : start.descriptors) ::dup2(descriptor.ours, descriptor.theirs);
}

[[noreturn]] void becomeProgram(PreparedStart& start, pid_t parent, int output, int errors) {
  ::setpgid(0, 0);
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (::getppid() != parent) ::_exit(127);
  const int nothing = ::open("/dev/null", O_RDONLY);
  ::dup2(nothing, STDIN_FILENO);
  ::dup2(output, STDOUT_FILENO);
  ::dup2(errors, STDERR_FILENO);
  placeDescriptors(start);
  ::execvpe(start.argumentPointers[0], start.argumentPointers.data(),
            start.environmentPointers.data());
  ::_exit(127);
}

ExitStatus exitStatusOf(int status) {
  if (WIFSIGNALED(status)) return {.exitCode = 0, .signal = WTERMSIG(status)};
  return {.exitCode = WEXITSTATUS(status), .signal = 0};
}

}  // namespace

ChildProcess::ChildProcess(const ProcessSpecification& specification) {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
    throw std::system_error(errno, std::generic_category(), "pipe");
  }
  m_output.reset(ends[0]);
  FileDescriptor childOutput(ends[1]);
  const char* errorFile =
      specification.errorFile.empty() ? "/dev/null" : specification.errorFile.c_str();
  const FileDescriptor errors(::open(errorFile, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600));

  PreparedStart start(specification);
  const pid_t parent = ::getpid();
  m_pid = ::fork();
  if (m_pid < 0) throw std::system_error(errno, std::generic_category(), "fork");
  if (m_pid == 0) becomeProgram(start, parent, childOutput.get(), errors.get());
  ::setpgid(m_pid, m_pid);
  m_reader = std::thread([this] { readOutput(); });
}

ChildProcess::~ChildProcess() {
  ::kill(-m_pid, SIGKILL);
  if (!m_exit) ::waitpid(m_pid, nullptr, 0);
  m_reader.join();
}

bool ChildProcess::isRunning() {
  return !waitForExit(std::chrono::milliseconds(0));
}

void ChildProcess::sendSignal(int signal) {
  if (isRunning()) ::kill(m_pid, signal);
}

std::optional<ExitStatus> ChildProcess::waitForExit(std::chrono::milliseconds deadline) {
  if (m_exit) return m_exit;
  // The header of pidfd_open() in Debian 12 cannot be used from C++.
  const FileDescriptor process(static_cast<int>(::syscall(SYS_pidfd_open, m_pid, 0)));
  pollfd waiting{.fd = process.get(), .events = POLLIN, .revents = 0};
  ::poll(&waiting, 1, static_cast<int>(deadline.count()));
  int status = 0;
  if (::waitpid(m_pid, &status, WNOHANG) == m_pid) m_exit = exitStatusOf(status);
  return m_exit;
}

std::vector<std::string> ChildProcess::outputLines() const {
  const std::lock_guard lock(m_mutex);
  return m_lines;
}

bool ChildProcess::waitForLine(const LineTest& wanted, std::chrono::milliseconds deadline) const {
  std::unique_lock lock(m_mutex);
  const auto found = [&] { return std::any_of(m_lines.begin(), m_lines.end(), wanted); };
  m_changed.wait_for(lock, deadline, [&] { return m_outputEnded || found(); });
  return found();
}

void ChildProcess::readOutput() {
  std::string rest;
  std::array<char, 4096> bytes{};
  for (;;) {
    const ssize_t count = ::read(m_output.get(), bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) break;
    rest.append(bytes.data(), static_cast<std::size_t>(count));
    const std::lock_guard lock(m_mutex);
    for (auto end = rest.find('\n'); end != std::string::npos; end = rest.find('\n')) {
      m_lines.push_back(rest.substr(0, end));
      rest.erase(0, end + 1);
    }
    m_changed.notify_all();
  }
  const std::lock_guard lock(m_mutex);
  m_outputEnded = true;
  m_changed.notify_all();
}

}  // namespace zarvy::e2e
