#include <array>
#include <csignal>
#include <fcntl.h>
#include <system_error>

#include <gtest/gtest.h>

#include "base/posix/ChildProcess.h"
#include "base/posix/ChildReaper.h"
#include "base/posix/Processes.h"

namespace zarvy {
namespace {

using namespace processes;

ChildProcess start(const QByteArray& command) {
  return ChildProcess({"/bin/sh", "-c", command},
                      {ChildProcess::inherited, ChildProcess::inherited, ChildProcess::inherited});
}

TEST(ChildProcess, TellsTheExitStatusOnceItHasEnded) {
  ChildProcess child = start("exit 7");
  ASSERT_TRUE(child.waitForEnd(QDeadlineTimer(patience)));
  EXPECT_EQ(child.reap(), 7);
  EXPECT_FALSE(hasChildren());
}

TEST(ChildProcess, TellsTheSignalThatEndedIt) {
  ChildProcess child = start("kill -USR1 $$");
  ASSERT_TRUE(child.waitForEnd(QDeadlineTimer(patience)));
  EXPECT_EQ(child.reap(), SIGUSR1);
}

TEST(ChildProcess, TellsNothingWhileItRuns) {
  ChildProcess child = start("exec sleep 1000");
  EXPECT_FALSE(child.waitForEnd(QDeadlineTimer(0)));
  EXPECT_FALSE(child.waitForEnd(QDeadlineTimer(50)));
  EXPECT_EQ(child.reap(), std::nullopt);
  child.signalGroup(SIGKILL);
  ASSERT_TRUE(child.waitForEnd(QDeadlineTimer(patience)));
  EXPECT_EQ(child.reap(), SIGKILL);
}

TEST(ChildProcess, IsNotTakenForRunningAfterItHasBeenReapedElsewhere) {
  ChildProcess child = start("exit 0");
  ASSERT_EQ(waitpid(child.id(), nullptr, 0), child.id());
  EXPECT_TRUE(child.reap().has_value());
  EXPECT_NE(child.reap(), 0);
}

TEST(ChildProcess, FindsTheDescriptorsUnderTheNumbersOfTheirPlaces) {
  std::array<std::array<int, 2>, 2> pipes{};
  for (auto& ends : pipes) ASSERT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
  ChildProcess child({"/bin/sh", "-c", "printf a >&3; printf b >&4"},
                     {ChildProcess::inherited, ChildProcess::inherited, ChildProcess::inherited,
                      pipes[1][1], pipes[0][1]});
  ASSERT_TRUE(child.waitForEnd(QDeadlineTimer(patience)));
  EXPECT_EQ(child.reap(), 0);
  std::array<char, 2> read{};
  EXPECT_EQ(::read(pipes[1][0], read.data(), 1), 1);
  EXPECT_EQ(::read(pipes[0][0], &read[1], 1), 1);
  EXPECT_EQ(std::string(read.begin(), read.end()), "ab");
  for (const auto& ends : pipes) {
    close(ends[0]);
    close(ends[1]);
  }
}

TEST(ChildProcess, SaysWhyItCannotBeStarted) {
  const auto before = openDescriptors();
  try {
    const ChildProcess child({"/no/such/program"}, {0});
    FAIL() << "it was started";
  } catch (const std::system_error& error) {
    EXPECT_EQ(error.code(), std::errc::no_such_file_or_directory);
  }
  EXPECT_FALSE(hasChildren());
  EXPECT_EQ(openDescriptors(), before);
}

TEST(ChildReaper, TakesEachChildAsItEnds) {
  const auto before = openDescriptors();
  {
    ChildReaper reaper;
    ChildProcess ended = start("exit 0");
    ASSERT_TRUE(ended.waitForEnd(QDeadlineTimer(patience)));
    ChildProcess later = start("exec sleep 1000");
    const pid_t last = later.id();
    reaper.adopt(std::move(later));
    reaper.adopt(std::move(ended));
    for (int i = 0; i < 20; ++i) reaper.adopt(start("exit 1"));
    EXPECT_TRUE(eventually([&] { return runningChildren() == std::vector<pid_t>{last}; }));
    kill(last, SIGKILL);
    EXPECT_TRUE(eventually([] { return !hasChildren(); }));
  }
  EXPECT_EQ(openDescriptors(), before);
}

TEST(ChildReaper, TakesWhatHasEndedWithItWhenItGoes) {
  {
    ChildReaper reaper;
    ChildProcess child = start("exit 0");
    ASSERT_TRUE(child.waitForEnd(QDeadlineTimer(patience)));
    reaper.adopt(std::move(child));
  }
  EXPECT_FALSE(hasChildren());
}

}  // namespace
}  // namespace zarvy
