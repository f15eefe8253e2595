#include "storage/CopyFile.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>

#include "base/FileDescriptor.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

// False where the system cannot copy between these two by itself, and nothing was copied.
bool copyBySystem(int from, int to) {
  constexpr std::size_t atOnce = 1U << 30U;
  bool hasCopied = false;
  for (;;) {
    const ssize_t count = ::copy_file_range(from, nullptr, to, nullptr, atOnce, 0);
    if (count > 0) hasCopied = true;
    if (count == 0) return hasCopied;
    if (count < 0 && errno != EINTR) return false;
  }
}

bool copyByHand(int from, int to) {
  std::array<char, 65536> bytes{};
  if (::lseek(from, 0, SEEK_SET) < 0 || ::ftruncate(to, 0) != 0 || ::lseek(to, 0, SEEK_SET) < 0) {
    return false;
  }
  for (;;) {
    const ssize_t count = ::read(from, bytes.data(), bytes.size());
    if (count == 0) return true;
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return false;
    for (ssize_t written = 0; written < count;) {
      const ssize_t step =
          ::write(to, bytes.data() + written, static_cast<std::size_t>(count - written));
      if (step < 0 && errno != EINTR) return false;
      if (step > 0) written += step;
    }
  }
}

}  // namespace

std::optional<QString> copyFile(const QString& from, const QString& to) {
  const FileDescriptor source(
      ::open(QFile::encodeName(from).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  struct stat status {};
  if (!source.isOpen() || ::fstat(source.get(), &status) != 0) return qt_error_string(errno);
  if (!S_ISREG(status.st_mode)) return u"Not a regular file"_s;
  const FileDescriptor copy(::open(QFile::encodeName(to).constData(),
                                   O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                                   S_IRUSR | S_IWUSR));
  if (!copy.isOpen()) return qt_error_string(errno);
  const bool isCopied =
      copyBySystem(source.get(), copy.get()) || copyByHand(source.get(), copy.get());
  if (isCopied && ::fsync(copy.get()) == 0) return std::nullopt;
  const QString error = qt_error_string(errno);
  ::unlink(QFile::encodeName(to).constData());
  return error;
}

}  // namespace zarvy
