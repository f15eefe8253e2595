#include "storage/ReadFile.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

#include <QFile>

#include "base/posix/ErrorText.h"
#include "base/posix/FileDescriptor.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr qint64 mebibyte = qint64{1} << 20;

JsonError errorOfReading() {
  return {{}, textOfError(errno)};
}

}  // namespace

JsonResult<QByteArray> readFile(const QString& path, qint64 largest) {
  const FileDescriptor descriptor(
      ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  struct stat status {};
  if (!descriptor.isOpen() || ::fstat(descriptor.get(), &status) != 0) return errorOfReading();
  if (S_ISDIR(status.st_mode)) return JsonError{{}, textOfError(EISDIR)};
  if (!S_ISREG(status.st_mode)) return JsonError{{}, u"Not a regular file"_s};
  QFile file;
  if (!file.open(descriptor.get(), QIODevice::ReadOnly | QIODevice::Unbuffered)) {
    return JsonError{{}, file.errorString()};
  }
  QByteArray content;
  content.reserve(static_cast<qsizetype>(std::clamp<qint64>(status.st_size, 0, largest)));
  QByteArray piece;
  do {
    piece = file.read(mebibyte);
    content += piece;
  } while (!piece.isEmpty() && content.size() <= largest);
  if (file.error() != QFileDevice::NoError) return JsonError{{}, file.errorString()};
  if (content.size() > largest) {
    return JsonError{{}, u"Larger than %1 MiB"_s.arg(largest / mebibyte)};
  }
  return content;
}

}  // namespace zarvy
