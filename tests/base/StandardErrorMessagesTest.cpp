#include <array>
#include <climits>
#include <fcntl.h>
#include <unistd.h>

#include <QByteArray>

#include <gtest/gtest.h>

#include "base/StandardErrorMessages.h"

namespace zarvy {
namespace {

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
