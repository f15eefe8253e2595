// Loaded into the program under test ahead of the system's library: gives it a disk that is full or
// does not answer. The trouble lies in the folder that ZARVY_TROUBLED_FOLDER names, and is whatever
// the file ".trouble" in there says: "full" has every write fail, "silent" has every opening of a
// file wait until the file says something else.

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

namespace {

const char* troubledFolder() {
  return std::getenv("ZARVY_TROUBLED_FOLDER");
}

// Past the functions below.
std::string trouble() {
  const std::string path = std::string(troubledFolder()) + "/.trouble";
  const long file = ::syscall(SYS_openat, AT_FDCWD, path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return {};
  char text[16] = {};
  const long length = ::syscall(SYS_read, file, text, sizeof text - 1);
  ::syscall(SYS_close, file);
  return {text, static_cast<std::size_t>(length < 0 ? 0 : length)};
}

bool isTroubled(const char* path) {
  const char* const folder = troubledFolder();
  return folder && path && std::strncmp(path, folder, std::strlen(folder)) == 0;
}

bool isTroubled(int file) {
  char name[64];
  char path[4096];
  std::snprintf(name, sizeof name, "/proc/self/fd/%d", file);
  const ssize_t length = ::readlink(name, path, sizeof path - 1);
  if (length < 0) return false;
  path[length] = '\0';
  return isTroubled(path);
}

void waitWhileSilent() {
  const timespec moment{0, 5'000'000};
  while (trouble() == "silent") ::nanosleep(&moment, nullptr);
}

mode_t modeOf(int flags, va_list rest) {
  const bool makes = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
  return makes ? va_arg(rest, mode_t) : 0;
}

int openTroubled(int folder, const char* path, int flags, mode_t mode) {
  if (isTroubled(path)) waitWhileSilent();
  return static_cast<int>(::syscall(SYS_openat, folder, path, flags, mode));
}

}  // namespace

extern "C" {

int open(const char* path, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = modeOf(flags, rest);
  va_end(rest);
  return openTroubled(AT_FDCWD, path, flags, mode);
}

int open64(const char* path, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = modeOf(flags, rest);
  va_end(rest);
  return openTroubled(AT_FDCWD, path, flags, mode);
}

int openat(int folder, const char* path, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = modeOf(flags, rest);
  va_end(rest);
  return openTroubled(folder, path, flags, mode);
}

ssize_t write(int file, const void* data, size_t size) {
  if (troubledFolder() && isTroubled(file) && trouble() == "full") {
    errno = ENOSPC;
    return -1;
  }
  return ::syscall(SYS_write, file, data, size);
}

}  // extern "C"
