#include <csignal>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "platform/posix/DeathWatch.h"
#include "support/QtPrinters.h"

namespace zarvy {
namespace {

// A process with a DeathWatch, which writes the number of who died into a file.
class DeathWatchTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(m_folder.isValid());
    // What outlives the watched process becomes a child of this one, which can wait for its end.
    ASSERT_EQ(::prctl(PR_SET_CHILD_SUBREAPER, 1), 0);
  }
  void TearDown() override { ::prctl(PR_SET_CHILD_SUBREAPER, 0); }

  template <typename End>
  [[nodiscard]] pid_t runUntil(End end) const {
    const pid_t watched = ::fork();
    if (watched != 0) return watched;
    ::setpgid(0, 0);  // the job of a shell
    {
      const DeathWatch watch([this](pid_t died) { write(died); });
      end();
    }
    ::_exit(0);
  }

  // Returns once the process and what watched it have ended.
  static void awaitBoth(pid_t watched) {
    EXPECT_EQ(::waitpid(watched, nullptr, 0), watched);
    EXPECT_GT(::waitpid(-1, nullptr, 0), 0) << "no process watched";
    EXPECT_EQ(::waitpid(-1, nullptr, 0), -1);
  }

  [[nodiscard]] QByteArray written() const {
    QFile file(path());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

 private:
  [[nodiscard]] QString path() const { return m_folder.filePath(QStringLiteral("died")); }

  void write(pid_t died) const {
    QFile file(path());
    if (file.open(QIODevice::WriteOnly)) file.write(QByteArray::number(died));
  }

  QTemporaryDir m_folder;
};

TEST_F(DeathWatchTest, TidiesUpWhereTheProcessIsKilled) {
  const pid_t watched = runUntil([] { ::raise(SIGKILL); });
  awaitBoth(watched);
  EXPECT_EQ(written(), QByteArray::number(watched));
}

TEST_F(DeathWatchTest, TidiesUpWhereAShellKillsTheJob) {
  const pid_t watched = runUntil([] { ::kill(0, SIGKILL); });
  awaitBoth(watched);
  EXPECT_EQ(written(), QByteArray::number(watched));
}

TEST_F(DeathWatchTest, DoesNothingWhereTheProcessEndsInOrder) {
  const pid_t watched = runUntil([] {});
  awaitBoth(watched);
  EXPECT_EQ(written(), "");
}

}  // namespace
}  // namespace zarvy
