#include "base/posix/UserAccount.h"

#include <cerrno>
#include <pwd.h>
#include <unistd.h>
#include <vector>

#include <QFile>

namespace zarvy {

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
