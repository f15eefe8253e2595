#include <array>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <QByteArray>
#include <QDeadlineTimer>

#include <gtest/gtest.h>

#include "base/StandardLineOutput.h"

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

// Standard output led into a pipe for the time of a test. A packet pipe, which keeps apart what
// was written apart.
class StandardLineOutputTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(::pipe2(m_pipe.data(), O_CLOEXEC | O_DIRECT | O_NONBLOCK), 0);
    m_savedOutput = ::dup(STDOUT_FILENO);
    m_savedHandler = std::signal(SIGPIPE, SIG_IGN);
    ::dup2(m_pipe[1], STDOUT_FILENO);
  }

  void TearDown() override {
    ::dup2(m_savedOutput, STDOUT_FILENO);
    std::signal(SIGPIPE, m_savedHandler);
    ::close(m_savedOutput);
    ::close(m_pipe[0]);
    ::close(m_pipe[1]);
  }

  // What one write call has written; empty where there was none.
  [[nodiscard]] QByteArray takeWrite() const {
    QByteArray bytes(4096, Qt::Uninitialized);
    const ssize_t count = ::read(m_pipe[0], bytes.data(), static_cast<size_t>(bytes.size()));
    return count > 0 ? bytes.first(count) : QByteArray();
  }

  void closeReadingEnd() { m_pipe[0] = (::close(m_pipe[0]), -1); }

  // Until no more goes in.
  void fillPipe() const {
    while (::write(m_pipe[1], ".", 1) == 1) {
    }
    // The program's own end waits, as that of a shell does.
    ::fcntl(m_pipe[1], F_SETFL, O_DIRECT);
  }

  // All that was written so far, the filling apart.
  [[nodiscard]] QByteArray takeAll() const {
    QByteArray all;
    for (QByteArray bytes = takeWrite(); !bytes.isEmpty(); bytes = takeWrite()) {
      if (bytes != ".") all += bytes;
    }
    return all;
  }

  // As takeAll(), for lines that others are still writing.
  [[nodiscard]] QByteArray takeAllUntil(const QByteArray& last) const {
    QByteArray all;
    const QDeadlineTimer deadline(30s);
    while (!all.endsWith(last) && !deadline.hasExpired()) {
      pollfd readable{.fd = m_pipe[0], .events = POLLIN, .revents = 0};
      ::poll(&readable, 1, 100);
      all += takeAll();
    }
    return all;
  }

  StandardLineOutput m_output{{.patience = 30s}};

 private:
  std::array<int, 2> m_pipe{};
  int m_savedOutput = -1;
  void (*m_savedHandler)(int) = nullptr;
};

TEST_F(StandardLineOutputTest, WritesEachLineAtOnceInOneWrite) {
  m_output.print(u"EXPANDING to: 'für 😀...'"_s);
  m_output.print(u""_s);
  EXPECT_EQ(takeWrite(), QByteArray("EXPANDING to: 'für 😀...'\n"));
  EXPECT_EQ(takeWrite(), QByteArray("\n"));
  EXPECT_EQ(takeWrite(), QByteArray());
}

TEST_F(StandardLineOutputTest, ShowsControlCharactersInPlaceOfSendingThem) {
  m_output.print(u"two\nlines\t\x1b]52;c;\x07 \x7f \u009b ü"_s);
  EXPECT_EQ(takeWrite(), QByteArray("two\\nlines\\x09\\x1b]52;c;\\x07 \\x7f \\x9b ü\n"));
}

TEST_F(StandardLineOutputTest, DoesNotEndTheProcessWhenTheReaderIsGone) {
  closeReadingEnd();
  m_output.print(u"unheard"_s);
  m_output.print(u"again"_s);
}

// What takes longer than this waits without limit.
constexpr std::chrono::seconds soon{10};

TEST_F(StandardLineOutputTest, WaitsOnceForAnOutputThatBlocksAndKeepsTheLinesInTheirOrder) {
  StandardLineOutput output({.patience = 10ms});
  fillPipe();
  const QDeadlineTimer deadline(soon);
  QByteArray expected;
  for (int line = 0; line < 900; ++line) {
    output.print(QString::number(line));
    expected += QByteArray::number(line) + '\n';
  }
  EXPECT_FALSE(deadline.hasExpired());
  EXPECT_EQ(takeAllUntil("899\n"), expected);
}

TEST_F(StandardLineOutputTest, WritesAtOnceAgainAfterAnOutputThatBlocked) {
  StandardLineOutput output({.patience = 10ms});
  fillPipe();
  output.print(u"late"_s);
  EXPECT_EQ(takeAllUntil("late\n"), "late\n");
  output.finish();
  output.print(u"at once"_s);
  output.finish();
  EXPECT_EQ(takeAll(), "at once\n");
}

TEST_F(StandardLineOutputTest, LosesWhatIsPrintedBeyondItsLimitWhileTheOutputBlocks) {
  StandardLineOutput output({.patience = 10ms, .lines = 3});
  fillPipe();
  for (int line = 1; line <= 5; ++line) output.print(QString::number(line));
  EXPECT_EQ(takeAllUntil("3\n"), "1\n2\n3\n");
  output.finish();
  output.print(u"6"_s);
  EXPECT_EQ(takeAllUntil("6\n"), "6\n");
}

TEST_F(StandardLineOutputTest, EndsWhileTheOutputBlocks) {
  const QDeadlineTimer deadline(soon);
  fillPipe();
  {
    StandardLineOutput output({.patience = 10ms});
    output.print(u"lost"_s);
    output.finish();
  }
  EXPECT_FALSE(deadline.hasExpired());
  EXPECT_EQ(takeAllUntil("lost\n"), "lost\n");  // the process lives on
}

}  // namespace
}  // namespace zarvy
