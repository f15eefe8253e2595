#include "base/posix/ThreadName.h"

#include <pthread.h>

namespace zarvy {

void nameThisThread(const std::string& name) {
  constexpr std::size_t longestName = 15;
  pthread_setname_np(pthread_self(), name.substr(0, longestName).c_str());
}

}  // namespace zarvy
