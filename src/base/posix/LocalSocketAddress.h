#pragma once

#include <optional>
#include <sys/socket.h>
#include <sys/un.h>

#include <QByteArray>

#include "base/posix/FileDescriptor.h"

namespace zarvy {

// Where a program of this machine listens.
class LocalSocketAddress {
 public:
  enum class Kind {
    path,      // of a file
    abstract,  // a name that no file has, and that goes with who listens there
  };

  // Absent where the name is empty, or longer than the system takes.
  [[nodiscard]] static std::optional<LocalSocketAddress> of(const QByteArray& name, Kind kind);

  [[nodiscard]] const sockaddr* get() const {
    return reinterpret_cast<const sockaddr*>(&m_address);
  }
  [[nodiscard]] socklen_t length() const { return m_length; }

 private:
  LocalSocketAddress() = default;

  sockaddr_un m_address{};
  socklen_t m_length = 0;
};

// A socket that does not block; not open where no program takes connections there.
[[nodiscard]] FileDescriptor connectTo(const LocalSocketAddress& address);

}  // namespace zarvy
