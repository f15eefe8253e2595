#pragma once

#include <optional>
#include <sys/types.h>

#include <QDeadlineTimer>

#include "base/posix/FileDescriptor.h"

namespace zarvy {

// A child process of this one, whose end can be waited for without asking again and again. Its
// number is not given to another process before it has been reaped. One thread at a time.
class ProcessHandle {
 public:
  // Throws std::system_error where the system gives none. `child` has not been reaped.
  explicit ProcessHandle(pid_t child);

  // Readable once the child has ended.
  [[nodiscard]] int endDescriptor() const { return m_end.get(); }

  // Sleeps until the child has ended. False where the deadline comes first.
  [[nodiscard]] bool waitForEnd(const QDeadlineTimer& deadline) const;

  // Takes an ended child from the kernel: its exit status, or the signal that ended it. -1 where
  // somebody else has taken it. Absent while it runs. Does not block.
  [[nodiscard]] std::optional<int> reap() const;

 private:
  FileDescriptor m_end;
};

}  // namespace zarvy
