// Locks on files, and files under a name of their own.

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "base/posix/FileLock.h"
#include "base/posix/TemporaryFile.h"

namespace zarvy {
namespace {

class PosixFiles : public testing::Test {
 protected:
  [[nodiscard]] std::string path(const std::string& name) const {
    return m_folder.path().toStdString() + "/" + name;
  }

  [[nodiscard]] FileDescriptor open(const std::string& name) const {
    return FileDescriptor(::open(path(name).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRWXU));
  }

  const QTemporaryDir m_folder;
};

TEST_F(PosixFiles, AreLockedAsLongAsTheyAreOpen) {
  FileDescriptor first = open("file");
  const FileDescriptor second = open("file");
  EXPECT_EQ(tryToLock(first.get()), FileLock::taken);
  EXPECT_EQ(tryToLock(second.get()), FileLock::heldByAnother);
  first.reset();
  lockIfPossible(second.get());
  EXPECT_EQ(tryToLock(open("file").get()), FileLock::heldByAnother);
}

TEST_F(PosixFiles, ThatAreNotOpenHaveNoLock) {
  EXPECT_EQ(tryToLock(-1), FileLock::impossible);
}

TEST_F(PosixFiles, ThatAreTemporaryHaveANameOfTheirOwnAndAreForTheUserAlone) {
  const mode_t before = ::umask(0);
  const TemporaryFile first = makeTemporaryFile(path("a."), ".end");
  const TemporaryFile second = makeTemporaryFile(path("a."), ".end");
  ::umask(before);
  ASSERT_TRUE(first.descriptor.isOpen() && second.descriptor.isOpen());
  EXPECT_NE(first.path, second.path);
  EXPECT_TRUE(first.path.starts_with(path("a."))) << first.path;
  EXPECT_TRUE(first.path.ends_with(".end")) << first.path;
  EXPECT_EQ(first.path.size(), path("a.").size() + uniqueLength + 4);
  struct stat status {};
  ASSERT_EQ(::stat(first.path.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0600U);
}

TEST_F(PosixFiles, ThatCannotBeMadeSayWhy) {
  const TemporaryFile file = makeTemporaryFile(path("missing/a."), ".end");
  EXPECT_EQ(errno, ENOENT);
  EXPECT_FALSE(file.descriptor.isOpen());
}

}  // namespace
}  // namespace zarvy
