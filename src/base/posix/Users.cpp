#include "base/posix/Users.h"

#include <cerrno>
#include <pwd.h>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

#include <QFile>

namespace zarvy {

bool isOfThisUser(int connection) {
  ucred other{};
  socklen_t size = sizeof other;
  return ::getsockopt(connection, SOL_SOCKET, SO_PEERCRED, &other, &size) != 0 ||
         other.uid == ::getuid();
}

std::optional<QString> homeInUserList() {
  passwd user{};
  passwd* found = nullptr;
  std::vector<char> texts(1024);  // what `user` points into
  while (::getpwuid_r(::getuid(), &user, texts.data(), texts.size(), &found) == ERANGE) {
    texts.resize(2 * texts.size());
  }
  if (found == nullptr || found->pw_dir == nullptr || *found->pw_dir == '\0') return std::nullopt;
  return QFile::decodeName(found->pw_dir);
}

}  // namespace zarvy
