#include "storage/PrivateFolder.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "base/posix/ErrorText.h"
#include "base/posix/FileDescriptor.h"
#include "storage/ReplaceFile.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

std::optional<QString> makePrivateFolder(const QString& path) {
  const QString parent = QFileInfo(path).path();
  if (!QDir().mkpath(parent)) return u"cannot make the folder "_s + parent;
  if (::mkdir(QFile::encodeName(path).constData(), S_IRWXU) != 0) {
    return errno == EEXIST ? std::nullopt : std::optional(textOfError(errno));
  }
  return synchronizeFolder(parent);
}

bool belongsToAnother(const QString& path) {
  struct stat status {};
  if (::stat(QFile::encodeName(path).constData(), &status) != 0) return false;
  constexpr uid_t administrator = 0;
  return status.st_uid != ::geteuid() && status.st_uid != administrator;
}

void takeRightsFromOthers(const QString& path) {
  const FileDescriptor file(
      ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  struct stat status {};
  if (!file.isOpen() || ::fstat(file.get(), &status) != 0) return;
  const bool isPrivate = (status.st_mode & (S_IRWXG | S_IRWXO)) == 0;
  if (isPrivate || status.st_uid != ::geteuid()) return;
  static_cast<void>(::fchmod(file.get(), status.st_mode & S_IRWXU));
}

}  // namespace zarvy
