#include "storage/PrivateFolder.h"

#include <cerrno>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "storage/ReplaceFile.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

std::optional<QString> makePrivateFolder(const QString& path) {
  const QString parent = QFileInfo(path).path();
  if (!QDir().mkpath(parent)) return u"cannot make the folder "_s + parent;
  if (::mkdir(QFile::encodeName(path).constData(), S_IRWXU) != 0) {
    return errno == EEXIST ? std::nullopt : std::optional(qt_error_string(errno));
  }
  return synchronizeFolder(parent);
}

}  // namespace zarvy
