#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "base/posix/OwnProcess.h"
#include "support/MemoryReader.h"

namespace zarvy {
namespace {

TEST(PrivateMemory, IsClosedToOtherProgramsOfTheUser) {
  const pid_t process = ::fork();
  if (process == 0) {
    if (!dropPrivileges()) ::_exit(1);
    ::raise(SIGSTOP);
    keepMemoryPrivate();
    ::raise(SIGSTOP);
    ::_exit(0);
  }
  ASSERT_EQ(::waitpid(process, nullptr, WUNTRACED), process);
  EXPECT_EQ(memoryAccess(process), MemoryAccess::open);
  ::kill(process, SIGCONT);
  ASSERT_EQ(::waitpid(process, nullptr, WUNTRACED), process);
  EXPECT_EQ(memoryAccess(process), MemoryAccess::denied);
  ::kill(process, SIGCONT);
  EXPECT_EQ(::waitpid(process, nullptr, 0), process);
}

}  // namespace
}  // namespace zarvy
