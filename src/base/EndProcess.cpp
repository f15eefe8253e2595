#include "base/EndProcess.h"

#include <cstdio>
#include <cstdlib>

namespace zarvy {

void endProcess(const char* line) {
  std::fprintf(stderr, "%s\n", line);
  std::abort();
}

}  // namespace zarvy
