#include "base/StandardLineOutput.h"

#include <cerrno>
#include <unistd.h>

#include <QByteArray>

namespace zarvy {

void StandardLineOutput::print(const QString& line) {
  QByteArray bytes = line.toUtf8();
  bytes.append('\n');
  const char* rest = bytes.constData();
  auto left = static_cast<size_t>(bytes.size());
  while (left > 0) {
    const ssize_t written = ::write(STDOUT_FILENO, rest, left);
    if (written < 0) {
      if (errno == EINTR) continue;
      return;
    }
    rest += written;
    left -= static_cast<size_t>(written);
  }
}

}  // namespace zarvy
