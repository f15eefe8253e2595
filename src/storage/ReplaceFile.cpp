#include "storage/ReplaceFile.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "base/FileDescriptor.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

bool writeAll(int descriptor, const QByteArray& content) {
  qsizetype written = 0;
  while (written < content.size()) {
    const ssize_t count = ::write(descriptor, content.constData() + written,
                                  static_cast<size_t>(content.size() - written));
    if (count < 0 && errno != EINTR) return false;
    if (count > 0) written += count;
  }
  return true;
}

bool synchronize(int descriptor) {
  int result = 0;
  do {
    result = ::fsync(descriptor);
  } while (result != 0 && errno == EINTR);
  // Some file systems have nothing to synchronise, above all for folders.
  return result == 0 || errno == EINVAL;
}

QString lastError() {
  return qt_error_string(errno);
}

}  // namespace

std::optional<QString> replaceFile(const QString& path, const QByteArray& content) {
  const QFileInfo target(path);
  const QByteArray folder = QFile::encodeName(target.path());
  const QByteArray name = QFile::encodeName(path);
  while (true) {
    QByteArray temporary = folder + "/." + QFile::encodeName(target.fileName()) + ".XXXXXX";
    // Made with mode 0600 whatever the umask; locked as long as it is open.
    const FileDescriptor descriptor(::mkostemp(temporary.data(), O_CLOEXEC));
    if (!descriptor.isOpen()) return lastError();
    static_cast<void>(::flock(descriptor.get(), LOCK_EX));
    // Before it was locked another process may have removed it as one that was left behind.
    if (::access(temporary.constData(), F_OK) != 0 && errno == ENOENT) continue;
    if (!writeAll(descriptor.get(), content) || !synchronize(descriptor.get()) ||
        std::rename(temporary.constData(), name.constData()) != 0) {
      const QString error = lastError();
      ::unlink(temporary.constData());
      return error;
    }
    return synchronizeFolder(target.path());
  }
}

std::optional<QString> synchronizeFolder(const QString& folder) {
  const FileDescriptor descriptor(
      ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (descriptor.isOpen() && synchronize(descriptor.get())) return std::nullopt;
  return lastError();
}

void removeUnfinishedReplacements(const QString& folder) {
  const QDir directory(folder);
  const QStringList left = directory.entryList({u".*.json.??????"_s}, QDir::Files | QDir::Hidden);
  for (const QString& name : left) {
    const QByteArray path = QFile::encodeName(directory.filePath(name));
    const FileDescriptor file(::open(path.constData(), O_RDONLY | O_CLOEXEC));
    // Whoever is writing it holds the lock; where there are no locks, there is nobody to ask.
    const bool isHeld =
        file.isOpen() && ::flock(file.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    if (!isHeld) ::unlink(path.constData());
  }
}

}  // namespace zarvy
