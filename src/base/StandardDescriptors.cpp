#include "base/StandardDescriptors.h"

#include <fcntl.h>
#include <initializer_list>
#include <unistd.h>

namespace zarvy {

void openMissingStandardDescriptors() {
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    // The system gives the lowest number that is free, which is this one.
    if (::fcntl(descriptor, F_GETFD) < 0) static_cast<void>(::open("/dev/null", O_RDWR));
  }
}

}  // namespace zarvy
