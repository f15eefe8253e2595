#include <cstdlib>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "base/EndProcess.h"

namespace zarvy {
namespace {

using namespace std::chrono_literals;

TEST(EndProcess, ComesInTimeThoughTheProcessWaitsForSomething) {
  const pid_t process = ::fork();
  if (process == 0) {
    endProcessWithin(1s);
    endProcessWithin(1000s);
    for (;;) ::pause();
  }
  int status = 0;
  ASSERT_EQ(::waitpid(process, &status, 0), process);
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), EXIT_FAILURE);
}

}  // namespace
}  // namespace zarvy
