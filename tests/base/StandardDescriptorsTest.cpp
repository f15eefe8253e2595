#include <algorithm>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include <gtest/gtest.h>

#include "base/StandardDescriptors.h"

namespace zarvy {
namespace {

bool isNothing(int descriptor) {
  struct stat wanted {};
  struct stat found {};
  return ::stat("/dev/null", &wanted) == 0 && ::fstat(descriptor, &found) == 0 &&
         wanted.st_rdev == found.st_rdev;
}

// In a child of its own, of which nothing but the exit status is left: how many of 0, 1 and 2 are
// not as they ought to be. The pipe stands for what was open before.
[[noreturn]] void exitWithCountOfWrong(const std::vector<int>& closed) {
  int ends[2]{};
  if (::pipe(ends) != 0) ::_exit(100);
  for (const int descriptor : {0, 1, 2}) ::dup2(ends[1], descriptor);
  for (const int descriptor : closed) ::close(descriptor);
  openMissingStandardDescriptors();
  int wrong = 0;
  for (const int descriptor : {0, 1, 2}) {
    const bool wasClosed = std::find(closed.begin(), closed.end(), descriptor) != closed.end();
    const bool isAsItOught =
        isNothing(descriptor) == wasClosed && (!wasClosed || ::write(descriptor, "x", 1) == 1);
    if (!isAsItOught) ++wrong;
  }
  const int next = ::open("/dev/zero", O_RDONLY);
  if (next <= 2) wrong += 10;
  ::_exit(wrong);
}

TEST(StandardDescriptorsTest, OpensNothingInPlaceOfThoseThatAreClosed) {
  for (const auto& closed :
       std::vector<std::vector<int>>{{}, {0}, {1}, {2}, {0, 1}, {0, 2}, {1, 2}, {0, 1, 2}}) {
    EXPECT_EXIT(exitWithCountOfWrong(closed), testing::ExitedWithCode(0), "")
        << testing::PrintToString(closed);
  }
}

}  // namespace
}  // namespace zarvy
