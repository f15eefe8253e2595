#include <algorithm>
#include <array>
#include <climits>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include <QByteArray>

#include <gtest/gtest.h>

#include "base/StandardStreams.h"

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

TEST(StandardDescriptorsTest, OpensTheNullDeviceInPlaceOfThoseThatAreClosed) {
  for (const auto& closed :
       std::vector<std::vector<int>>{{}, {0}, {1}, {2}, {0, 1}, {0, 2}, {1, 2}, {0, 1, 2}}) {
    EXPECT_EXIT(exitWithCountOfWrong(closed), testing::ExitedWithCode(0), "")
        << testing::PrintToString(closed);
  }
}

// Standard error led into a pipe for the time of a test.
class StandardErrorMessagesTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(::pipe2(m_pipe.data(), O_CLOEXEC), 0);
    ::fcntl(m_pipe[0], F_SETFL, O_NONBLOCK);
    m_saved = ::dup(STDERR_FILENO);
    ::dup2(m_pipe[1], STDERR_FILENO);
    writeToolkitMessagesWithoutWaiting();
  }

  void TearDown() override {
    qInstallMessageHandler(nullptr);
    ::dup2(m_saved, STDERR_FILENO);
    ::close(m_saved);
    ::close(m_pipe[0]);
    ::close(m_pipe[1]);
  }

  [[nodiscard]] QByteArray takeWritten() const {
    QByteArray all;
    std::array<char, 4096> bytes{};
    for (ssize_t count = 1; count > 0;) {
      count = ::read(m_pipe[0], bytes.data(), bytes.size());
      if (count > 0) all.append(bytes.data(), count);
    }
    return all;
  }

  void fillPipe() const {
    ::fcntl(m_pipe[1], F_SETFL, O_NONBLOCK);
    while (::write(m_pipe[1], ".", 1) == 1) {
    }
    ::fcntl(m_pipe[1], F_SETFL, 0);
  }

 private:
  std::array<int, 2> m_pipe{};
  int m_saved = -1;
};

TEST_F(StandardErrorMessagesTest, AreWrittenALineEach) {
  qWarning("one");
  qCritical("two");
  EXPECT_EQ(takeWritten(), "one\ntwo\n");
}

TEST_F(StandardErrorMessagesTest, AreDroppedWhereTheyWouldWait) {
  fillPipe();
  qWarning("lost");
  EXPECT_FALSE(takeWritten().contains("lost"));
  qWarning("kept");
  EXPECT_EQ(takeWritten(), "kept\n");
}

TEST_F(StandardErrorMessagesTest, AreCutToWhatCanBeWrittenAtOnce) {
  qWarning("%s", QByteArray(10 * PIPE_BUF, 'x').constData());
  EXPECT_EQ(takeWritten(), QByteArray(PIPE_BUF - 1, 'x') + '\n');
}

}  // namespace
}  // namespace zarvy
