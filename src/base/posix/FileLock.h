#pragma once

namespace zarvy {

// A lock on the whole of an open file, for all who ask for one. It goes when the last
// descriptor of that opening is closed, at the latest with the process. Any thread.

enum class FileLock {
  taken,
  heldByAnother,
  impossible,  // some file systems have no locks
};

// Does not wait for another.
[[nodiscard]] FileLock tryToLock(int file);

// Waits for the lock as long as another has it. Does nothing on a file system without locks.
void lockIfPossible(int file);

}  // namespace zarvy
