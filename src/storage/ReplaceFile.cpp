#include "storage/ReplaceFile.h"

#include <cerrno>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include <QFile>

#include "base/posix/ErrorText.h"
#include "base/posix/FileDescriptor.h"
#include "base/posix/FileLock.h"
#include "base/posix/TemporaryFile.h"
#include "base/posix/WholeTransfers.h"

namespace zarvy {
namespace {

bool synchronize(int descriptor) {
  int result = 0;
  do {
    result = ::fsync(descriptor);
  } while (result != 0 && errno == EINTR);
  // Some file systems have nothing to synchronise, above all for folders.
  return result == 0 || errno == EINVAL;
}

QString lastError() {
  return textOfError(errno);
}

// The file that `path` leads to, whether or not there is one. A circle of links stays what it is.
std::filesystem::path behindLinks(const QString& path) {
  constexpr int mostLinks = 40;  // as the system's own limit
  std::filesystem::path place(QFile::encodeName(path).toStdString());
  for (int links = 0; links < mostLinks; ++links) {
    std::error_code error;
    const auto target = std::filesystem::read_symlink(place, error);
    if (error) return place;
    place = place.parent_path() / target;
  }
  return QFile::encodeName(path).toStdString();
}

// What stands before and behind the characters that make the name of a temporary file unique.
// The ending is what no other program gives to its own, which may lie in the same folder.
std::string temporaryStart(const std::filesystem::path& place) {
  return std::string(".").append(place.filename().string()).append(".");
}
constexpr std::string_view temporaryEnd = ".zarvy-save";

bool isTemporaryOf(const std::filesystem::path& place, const std::string& name) {
  const std::string start = temporaryStart(place);
  return name.size() == start.size() + uniqueLength + temporaryEnd.size() &&
         name.starts_with(start) && name.ends_with(temporaryEnd);
}

// The user has put the file there, and decided who may read it.
void keepMode(const std::filesystem::path& place, int descriptor) {
  struct stat status {};
  if (::stat(place.c_str(), &status) != 0) return;
  static_cast<void>(::fchmod(descriptor, status.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO)));
}

bool isOldFile(int descriptor) {
  constexpr time_t oldAge = 3600;  // seconds
  struct stat status {};
  return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
         ::time(nullptr) - status.st_mtime >= oldAge;
}

void removeIfLeftBehind(const std::filesystem::path& file) {
  const FileDescriptor opened(::open(file.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  if (!opened.isOpen() || !isOldFile(opened.get())) return;
  // The process that is writing it holds the lock. On a file system without locks its age decides.
  if (tryToLock(opened.get()) != FileLock::heldByAnother) ::unlink(file.c_str());
}

}  // namespace

std::optional<QString> replaceFile(const QString& path, const QByteArray& content) {
  const std::filesystem::path place = behindLinks(path);
  const std::filesystem::path folder = place.parent_path();
  const bool isBehindLink = place != QFile::encodeName(path).toStdString();
  while (true) {
    const auto [descriptor, temporary] =
        makeTemporaryFile((folder / temporaryStart(place)).native(), temporaryEnd);
    if (!descriptor.isOpen()) return lastError();
    lockIfPossible(descriptor.get());  // as long as it is open
    // Before it was locked another process may have removed it as one that was left behind.
    if (::access(temporary.c_str(), F_OK) != 0 && errno == ENOENT) continue;
    if (isBehindLink) keepMode(place, descriptor.get());
    if (!writeAll(descriptor.get(), content.constData(),
                  static_cast<std::size_t>(content.size())) ||
        !synchronize(descriptor.get()) || std::rename(temporary.c_str(), place.c_str()) != 0) {
      const QString error = lastError();
      ::unlink(temporary.c_str());
      return error;
    }
    return synchronizeFolder(QFile::decodeName(folder.c_str()));
  }
}

std::optional<QString> synchronizeFolder(const QString& folder) {
  const FileDescriptor descriptor(
      ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (descriptor.isOpen() && synchronize(descriptor.get())) return std::nullopt;
  return lastError();
}

void removeUnfinishedReplacements(const QString& path) {
  const std::filesystem::path place = behindLinks(path);
  std::error_code error;
  std::filesystem::directory_iterator files(place.parent_path(), error);
  for (; !error && files != std::filesystem::directory_iterator(); files.increment(error)) {
    if (isTemporaryOf(place, files->path().filename())) removeIfLeftBehind(files->path());
  }
}

}  // namespace zarvy
