#pragma once

#include <mutex>
#include <thread>
#include <vector>

#include "base/posix/ChildProcess.h"
#include "base/posix/WakeUp.h"

namespace zarvy {

// Reaps the children that their owners have let go, each as it ends, on a thread of its own that
// sleeps in between. Children that outlive the reaper are left to the system.
class ChildReaper {
 public:
  // Throws std::system_error where the process has no descriptor or no thread left.
  ChildReaper();
  ~ChildReaper();

  ChildReaper(const ChildReaper&) = delete;
  ChildReaper& operator=(const ChildReaper&) = delete;

  // Any thread. Does not block.
  void adopt(ChildProcess child);

 private:
  void reapAsTheyEnd();

  WakeUp m_wakeUp;                      // raised when one of the two below has changed
  std::mutex m_mutex;                   // guards the two below
  std::vector<ChildProcess> m_adopted;  // that the thread has yet to take over
  bool m_ending = false;
  std::thread m_thread;
};

}  // namespace zarvy
