#include "base/posix/PrivateMemory.h"

#include <sys/prctl.h>

namespace zarvy {

void keepMemoryPrivate() {
  ::prctl(PR_SET_DUMPABLE, 0, 0, 0, 0);
}

}  // namespace zarvy
