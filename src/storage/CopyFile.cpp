#include "storage/CopyFile.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

#include <QFile>

#include "base/FileDescriptor.h"
#include "storage/ReadFile.h"

namespace zarvy {

std::optional<QString> copyFile(const QString& from, const QString& to) {
  // One that never ends would never be copied either.
  if (const auto content = readFile(from); !content) return content.error().description();
  QFile source(from);
  if (!source.copy(to)) return source.errorString();
  const bool isPrivate = QFile::setPermissions(to, QFile::ReadOwner | QFile::WriteOwner);
  const FileDescriptor copy(::open(QFile::encodeName(to).constData(), O_RDONLY | O_CLOEXEC));
  if (isPrivate && copy.isOpen() && ::fsync(copy.get()) == 0) return std::nullopt;
  const QString error = qt_error_string(errno);
  QFile::remove(to);
  return error;
}

}  // namespace zarvy
