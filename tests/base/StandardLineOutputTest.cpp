#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

#include <QByteArray>

#include <gtest/gtest.h>

#include "base/StandardLineOutput.h"

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;

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

  StandardLineOutput m_output;

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

TEST_F(StandardLineOutputTest, LosesItsLinesWithoutHarmWhenNobodyReads) {
  closeReadingEnd();
  m_output.print(u"unheard"_s);
  m_output.print(u"again"_s);
}

}  // namespace
}  // namespace zarvy
