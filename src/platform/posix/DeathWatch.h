#pragma once

#include <functional>
#include <sys/types.h>

#include "base/posix/FileDescriptor.h"

namespace zarvy {

// A second process, which sleeps until this one has ended. Where this one was killed or crashed,
// and so could not tidy up, that one does it.
//
// It is a copy of this process as it was when the object was made, without its open files, and
// ignores the signals by which a terminal or a session ends all its processes together. It cannot
// help where it is killed first.
class DeathWatch {
 public:
  // While there is no other thread yet. `tidyUp` is called in the second process, with the number
  // that this process had, unless the object came to its end. Does nothing where there can be no
  // second process. Returns once that one watches.
  explicit DeathWatch(const std::function<void(pid_t died)>& tidyUp);

  // This process ends in order.
  ~DeathWatch();
  DeathWatch(const DeathWatch&) = delete;
  DeathWatch& operator=(const DeathWatch&) = delete;

 private:
  FileDescriptor m_lifeLine;  // closed by the system at the latest when the process has ended
};

}  // namespace zarvy
