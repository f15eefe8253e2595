#pragma once

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

}  // namespace zarvy
