#include "base/posix/FileLock.h"

#include <cerrno>
#include <sys/file.h>

namespace zarvy {

FileLock tryToLock(int file) {
  if (::flock(file, LOCK_EX | LOCK_NB) == 0) return FileLock::taken;
  return errno == EWOULDBLOCK ? FileLock::heldByAnother : FileLock::impossible;
}

void lockIfPossible(int file) {
  static_cast<void>(::flock(file, LOCK_EX));
}

}  // namespace zarvy
