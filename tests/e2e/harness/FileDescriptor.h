#pragma once

#include <unistd.h>
#include <utility>

namespace zarvy::e2e {

// Owns one open file descriptor.
class FileDescriptor {
 public:
  FileDescriptor() = default;
  explicit FileDescriptor(int descriptor) : m_descriptor(descriptor) {}
  FileDescriptor(FileDescriptor&& other) noexcept
      : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    reset(std::exchange(other.m_descriptor, -1));
    return *this;
  }
  ~FileDescriptor() { reset(); }

  void reset(int descriptor = -1) {
    if (m_descriptor >= 0) ::close(m_descriptor);
    m_descriptor = descriptor;
  }

  [[nodiscard]] int get() const { return m_descriptor; }
  [[nodiscard]] bool isOpen() const { return m_descriptor >= 0; }

 private:
  int m_descriptor = -1;
};

}  // namespace zarvy::e2e
