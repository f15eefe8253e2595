#pragma once

#include <optional>
#include <sys/types.h>
#include <vector>

#include <QByteArrayList>
#include <QDeadlineTimer>

#include "base/posix/FileDescriptor.h"

namespace zarvy {

// A child process that leads a process group of its own, has every signal at its default, and none
// of this program's file descriptors but those that it is given. One thread at a time. The kernel
// keeps an ended child until it is reaped: an owner that lets go of one that may still run hands it
// to a ChildReaper.
class ChildProcess {
 public:
  // Stands for the descriptor of the same number in this program.
  static constexpr int inherited = -1;

  // Starts the program whose path is the first of `arguments`. The child finds the descriptors of
  // the list under the numbers 0, 1, 2 and so on. The environment and the working directory are
  // this program's. Throws std::system_error with the system's reason where it cannot be started.
  ChildProcess(const QByteArrayList& arguments, const std::vector<int>& descriptors);

  // The same with an environment of its own: "NAME=value" each.
  ChildProcess(const QByteArrayList& arguments, const std::vector<int>& descriptors,
               const QByteArrayList& environment);

  [[nodiscard]] pid_t id() const { return m_id; }

  // Readable once the child has ended.
  [[nodiscard]] int endDescriptor() const { return m_end.get(); }

  // Sleeps until the child has ended. False where the deadline comes first.
  [[nodiscard]] bool waitForEnd(const QDeadlineTimer& deadline) const;

  // Sends `signal` to the child and to what it has started. Not after it has been reaped.
  void signalGroup(int signal) const;

  // Takes an ended child from the kernel: its exit status, or the signal that ended it. -1 where
  // it has been taken already. Absent while it runs. Does not block.
  [[nodiscard]] std::optional<int> reap() const;

 private:
  explicit ChildProcess(pid_t id);

  pid_t m_id = -1;
  FileDescriptor m_end;  // a handle of the child, by which its end is waited for
};

}  // namespace zarvy
