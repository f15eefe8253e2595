// Bytes through sockets and pipes, to the last one or as long as there is time.

#include <csignal>
#include <fcntl.h>
#include <string>
#include <sys/socket.h>
#include <sys/time.h>
#include <thread>

#include <gtest/gtest.h>

#include "base/posix/FileDescriptor.h"
#include "base/posix/TimedTransfers.h"
#include "base/posix/WholeTransfers.h"

namespace zarvy {
namespace {

using namespace std::chrono_literals;

// For a machine that does much else; nothing waits that long unless something is wrong.
constexpr auto patience = 60s;
constexpr auto shortTime = 20ms;

// More than a socket or a pipe holds.
std::string muchText() {
  std::string text(3'000'000, ' ');
  for (std::size_t at = 0; at < text.size(); ++at) text[at] = static_cast<char>('a' + at % 23);
  return text;
}

class Transfers : public testing::Test {
 protected:
  Transfers() : m_sockets(*makeSocketPair()), m_pipe(*makePipe()) {}

  [[nodiscard]] int own() const { return m_sockets.own.get(); }
  [[nodiscard]] int other() const { return m_sockets.other.get(); }

  SocketPair m_sockets;
  Pipe m_pipe;
  const std::string m_text = muchText();
};

// Interrupts every call of the system that waits.
class ManySignals {
 public:
  ManySignals() {
    struct sigaction action {};
    action.sa_handler = [](int) {};  // without SA_RESTART
    sigaction(SIGALRM, &action, &m_before);
    constexpr itimerval everyTwoMilliseconds{{0, 2000}, {0, 2000}};
    setitimer(ITIMER_REAL, &everyTwoMilliseconds, nullptr);
  }
  ~ManySignals() {
    constexpr itimerval never{};
    setitimer(ITIMER_REAL, &never, nullptr);
    sigaction(SIGALRM, &m_before, nullptr);
  }
  ManySignals(const ManySignals&) = delete;
  ManySignals& operator=(const ManySignals&) = delete;

 private:
  struct sigaction m_before {};
};

TEST_F(Transfers, MoveAllOfItThroughASocket) {
  const ManySignals signals;
  std::thread sender([this] { EXPECT_TRUE(sendAll(own(), m_text.data(), m_text.size())); });
  std::string received(m_text.size(), '\0');
  EXPECT_TRUE(receiveAll(other(), received.data(), received.size()));
  sender.join();
  EXPECT_TRUE(received == m_text);
}

TEST_F(Transfers, MoveAllOfItThroughAPipe) {
  const ManySignals signals;
  std::thread writer([this] {
    EXPECT_TRUE(writeAll(m_pipe.writing.get(), m_text.data(), m_text.size()));
    m_pipe.writing.reset();
  });
  const auto read =
      readToEnd(m_pipe.reading.get(), static_cast<qsizetype>(m_text.size()), patience);
  writer.join();
  ASSERT_TRUE(read);
  EXPECT_TRUE(*read == QByteArray::fromStdString(m_text));
}

TEST_F(Transfers, MoveAllOfItInTime) {
  const ManySignals signals;
  std::thread sender([this] {
    EXPECT_EQ(sendInTime(own(), m_text.data(), m_text.size(), patience), TransferEnd::done);
  });
  std::string received(m_text.size(), '\0');
  EXPECT_EQ(receiveInTime(other(), received.data(), received.size(), patience), TransferEnd::done);
  sender.join();
  EXPECT_TRUE(received == m_text);
}

TEST_F(Transfers, FailWhereTheOtherEndIsClosed) {
  ASSERT_TRUE(sendAll(other(), "ab", 2));
  m_sockets.other.reset();
  std::string received(3, '\0');
  EXPECT_FALSE(receiveAll(own(), received.data(), received.size()));
  EXPECT_FALSE(sendAll(own(), "a", 1)) << "and no signal has ended the process";
  EXPECT_EQ(receiveInTime(own(), received.data(), 1, patience), TransferEnd::broken);
  EXPECT_EQ(sendInTime(own(), "a", 1, patience), TransferEnd::broken);
}

TEST_F(Transfers, FailWhereADescriptorThatDoesNotBlockTakesNoMore) {
  ASSERT_EQ(::fcntl(m_pipe.writing.get(), F_SETFL, O_NONBLOCK), 0);
  EXPECT_FALSE(writeAll(m_pipe.writing.get(), m_text.data(), m_text.size()));
}

TEST_F(Transfers, EndWhenTheTimeIsOver) {
  char unit = 0;
  EXPECT_EQ(receiveInTime(own(), &unit, 1, shortTime), TransferEnd::timedOut);
  EXPECT_EQ(sendInTime(own(), m_text.data(), m_text.size(), shortTime), TransferEnd::timedOut);
  ASSERT_TRUE(writeAll(m_pipe.writing.get(), "a", 1));
  EXPECT_EQ(readToEnd(m_pipe.reading.get(), 100, shortTime), std::nullopt);
}

TEST_F(Transfers, FailWhereMoreComesThanIsAllowed) {
  ASSERT_TRUE(writeAll(m_pipe.writing.get(), "abc", 3));
  m_pipe.writing.reset();
  EXPECT_EQ(readToEnd(m_pipe.reading.get(), 2, patience), std::nullopt);
}

}  // namespace
}  // namespace zarvy
