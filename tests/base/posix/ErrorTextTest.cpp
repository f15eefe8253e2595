#include <cerrno>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "base/posix/ErrorText.h"

namespace zarvy {
namespace {

TEST(ErrorText, IsTheSystemsOwn) {
  const std::pair<int, std::string> texts[] = {
      {EACCES, "Permission denied"},
      {EMFILE, "Too many open files"},
      {ENOENT, "No such file or directory"},
      {ENOSPC, "No space left on device"},
      {EISDIR, "Is a directory"},
      {EROFS, "Read-only file system"},
      {ENOTDIR, "Not a directory"},
      {EIO, "Input/output error"},
  };
  for (const auto& [error, text] : texts) EXPECT_EQ(textOfError(error).toStdString(), text);
}

}  // namespace
}  // namespace zarvy
