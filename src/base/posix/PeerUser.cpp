#include "base/posix/PeerUser.h"

#include <sys/socket.h>
#include <unistd.h>

namespace zarvy {

bool isOfThisUser(int connection) {
  ucred other{};
  socklen_t size = sizeof other;
  return ::getsockopt(connection, SOL_SOCKET, SO_PEERCRED, &other, &size) != 0 ||
         other.uid == ::getuid();
}

}  // namespace zarvy
