#include "base/EndProcess.h"

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace zarvy {

void endProcess(const char* line) {
  std::fprintf(stderr, "%s\n", line);
  std::abort();
}

void endProcessWithin(std::chrono::seconds limit) {
  static std::atomic_flag isLimited = ATOMIC_FLAG_INIT;
  if (isLimited.test_and_set()) return;
  struct sigaction action {};
  action.sa_handler = [](int) { ::_exit(EXIT_FAILURE); };
  ::sigaction(SIGALRM, &action, nullptr);
  ::alarm(static_cast<unsigned>(limit.count()));
}

}  // namespace zarvy
