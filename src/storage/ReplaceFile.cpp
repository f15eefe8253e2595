#include "storage/ReplaceFile.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

class FileDescriptor {
 public:
  explicit FileDescriptor(int descriptor) : m_descriptor(descriptor) {}
  ~FileDescriptor() {
    if (isOpen()) ::close(m_descriptor);
  }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;

  [[nodiscard]] bool isOpen() const { return m_descriptor >= 0; }
  [[nodiscard]] int get() const { return m_descriptor; }

  // Some file systems tell of a failed write only here.
  [[nodiscard]] bool close() { return ::close(std::exchange(m_descriptor, -1)) == 0; }

 private:
  int m_descriptor;
};

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

bool synchronizeFolder(const QByteArray& folder) {
  const FileDescriptor descriptor(::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  return descriptor.isOpen() && synchronize(descriptor.get());
}

QString lastError() {
  return qt_error_string(errno);
}

}  // namespace

std::optional<QString> replaceFile(const QString& path, const QByteArray& content) {
  const QFileInfo target(path);
  const QByteArray folder = QFile::encodeName(target.path());
  const QByteArray name = QFile::encodeName(path);
  QByteArray temporary = folder + "/." + QFile::encodeName(target.fileName()) + ".XXXXXX";

  // Made with mode 0600 whatever the umask.
  FileDescriptor descriptor(::mkostemp(temporary.data(), O_CLOEXEC));
  if (!descriptor.isOpen()) return lastError();
  const bool isComplete = writeAll(descriptor.get(), content) && synchronize(descriptor.get()) &&
                          descriptor.close() &&
                          std::rename(temporary.constData(), name.constData()) == 0;
  if (!isComplete) {
    const QString error = lastError();
    ::unlink(temporary.constData());
    return error;
  }
  if (!synchronizeFolder(folder)) return lastError();
  return std::nullopt;
}

void removeUnfinishedReplacements(const QString& folder) {
  QDir directory(folder);
  const QStringList left = directory.entryList({u".*.json.??????"_s}, QDir::Files | QDir::Hidden);
  for (const QString& name : left) directory.remove(name);
}

}  // namespace zarvy
