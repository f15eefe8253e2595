#pragma once

#include <optional>
#include <unistd.h>
#include <utility>

namespace zarvy {

// Owns a file descriptor and closes it at the end. -1 stands for none.
class FileDescriptor {
 public:
  FileDescriptor() = default;
  explicit FileDescriptor(int descriptor) : m_descriptor(descriptor) {}
  ~FileDescriptor() { reset(); }

  FileDescriptor(FileDescriptor&& other) noexcept
      : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(m_descriptor, other.m_descriptor);
    return *this;
  }

  [[nodiscard]] bool isOpen() const { return m_descriptor >= 0; }
  [[nodiscard]] int get() const { return m_descriptor; }
  void reset() {
    if (isOpen()) ::close(std::exchange(m_descriptor, -1));
  }

 private:
  int m_descriptor = -1;
};

// Two ends that are open for this process alone: programs that it starts get neither. Absent where
// no descriptors are left; errno says why. Any thread.

// What is sent at one end is received at the other, both ways.
struct SocketPair {
  FileDescriptor own;
  FileDescriptor other;
};
[[nodiscard]] std::optional<SocketPair> makeSocketPair();

// The end for reading does not block.
struct Pipe {
  FileDescriptor reading;
  FileDescriptor writing;
};
[[nodiscard]] std::optional<Pipe> makePipe();

}  // namespace zarvy
