#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "e2e/harness/Environment.h"
#include "e2e/harness/FileDescriptor.h"

namespace zarvy::e2e {

// What to start, and how.
struct ProcessSpecification {
  struct Descriptor {
    int ours = -1;
    int theirs = -1;
  };

  std::string program;  // looked up in PATH where it holds no slash
  std::vector<std::string> arguments;
  Environment environment;
  std::string errorFile;                // standard error is appended there; empty drops it
  std::vector<Descriptor> descriptors;  // handed to the child beside the standard three
};

// How a process ended: by `exitCode`, or by `signal` where that is not 0.
struct ExitStatus {
  int exitCode = 0;
  int signal = 0;
  bool operator==(const ExitStatus&) const = default;
};

// A child in a process group of its own, whose standard output is collected line by line. The
// destructor kills the whole group and waits for the child; the kernel kills the child if the
// thread that started it ends first, so start children from the main thread. Throws
// std::runtime_error where the program cannot be started.
class ChildProcess {
 public:
  explicit ChildProcess(const ProcessSpecification& specification);
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  ~ChildProcess();

  [[nodiscard]] pid_t pid() const { return m_pid; }
  [[nodiscard]] bool isRunning();

  // Sends `signal` to the child alone; nothing happens once it has ended.
  void sendSignal(int signal);

  // Absent while it still runs after `deadline`.
  [[nodiscard]] std::optional<ExitStatus> waitForExit(std::chrono::milliseconds deadline);

  // What was written to standard output so far, complete lines only, without their line feeds.
  [[nodiscard]] std::vector<std::string> outputLines() const;

  // True as soon as a line satisfies `wanted`; false at the deadline or the end of the output.
  using LineTest = std::function<bool(const std::string&)>;
  [[nodiscard]] bool waitForLine(const LineTest& wanted, std::chrono::milliseconds deadline) const;

 private:
  void readOutput();

  pid_t m_pid = -1;
  FileDescriptor m_output;
  std::optional<ExitStatus> m_exit;
  mutable std::mutex m_mutex;
  mutable std::condition_variable m_changed;
  std::vector<std::string> m_lines;  // under m_mutex
  bool m_outputEnded = false;        // under m_mutex
  std::thread m_reader;
};

}  // namespace zarvy::e2e
