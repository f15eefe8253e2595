// A process that saves in a loop is killed at each of its system calls in turn, as a program can be
// at any moment. What the disk holds changes at system calls only.

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <string>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include <gtest/gtest.h>

#include "storage/DataFolder.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr qint64 fillerSize = 200'000;
constexpr int savesToWatch = 3;

// A document of some size that tells a complete one from a mixture of two.
QMap<QString, QString> documentOf(int generation) {
  const QChar letter(u'a' + generation % 26);
  return {{u"filler"_s, QString(fillerSize, letter)},
          {u"generation"_s, QString::number(generation)},
          {u"letter"_s, letter}};
}

[[noreturn]] void saveForEver(const DataStore& store) {
  for (int generation = 1;; ++generation) store.saveFieldDefaults(documentOf(generation));
}

// A child process that stops before and behind each of its system calls.
class TracedChild {
 public:
  template <typename Work>
  explicit TracedChild(Work work) : m_process(::fork()) {
    if (m_process != 0) return;
    if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) ::_exit(1);
    ::raise(SIGSTOP);
    work();
    ::_exit(0);
  }

  ~TracedChild() { kill(); }
  TracedChild(const TracedChild&) = delete;
  TracedChild& operator=(const TracedChild&) = delete;

  // False where the machine does not allow it.
  [[nodiscard]] bool isTraced() {
    return waitForStop() &&
           ::ptrace(PTRACE_SETOPTIONS, m_process, nullptr, PTRACE_O_TRACESYSGOOD) == 0;
  }

  // Lets it go on through `count` stops. False where it ended on the way.
  [[nodiscard]] bool goOn(int count) {
    for (; count > 0; --count) {
      if (::ptrace(PTRACE_SYSCALL, m_process, nullptr, nullptr) != 0 || !waitForStop()) {
        return false;
      }
    }
    return true;
  }

  // The number of the system call that it stopped before; -1 where it stopped elsewhere.
  [[nodiscard]] long enteredCall() const {
    __ptrace_syscall_info info{};
    if (::ptrace(PTRACE_GET_SYSCALL_INFO, m_process, sizeof info, &info) <= 0) return -1;
    if (info.op != PTRACE_SYSCALL_INFO_ENTRY) return -1;
    return static_cast<long>(info.entry.nr);
  }

  void kill() {
    if (m_hasEnded) return;
    ::kill(m_process, SIGKILL);
    while (waitForStop()) {
    }
  }

 private:
  // False where it has ended.
  bool waitForStop() {
    int status = 0;
    while (::waitpid(m_process, &status, 0) < 0) {
      if (errno != EINTR) return false;
    }
    m_hasEnded = !WIFSTOPPED(status);
    return !m_hasEnded;
  }

  pid_t m_process;
  bool m_hasEnded = false;
};

// Of the calls that say when a file reaches the disk and its name; empty for any other.
std::string nameOfCall(long number) {
  switch (number) {
    case SYS_fsync:
      return "fsync";
#ifdef SYS_rename
    case SYS_rename:
#endif
    case SYS_renameat:
    case SYS_renameat2:
      return "rename";
    default:
      return {};
  }
}

class KilledSave : public DataFolder {
 protected:
  // The generation that the document holds now; fails unless it is a complete one.
  [[nodiscard]] int generation() {
    const QMap<QString, QString> document = m_store.loadFieldDefaults();
    const int generation = document.value(u"generation"_s).toInt();
    EXPECT_EQ(document, documentOf(generation));
    EXPECT_EQ(m_output.takeLines(), QStringList());
    return generation;
  }
};

TEST_F(KilledSave, LeavesTheOldDocumentOrTheNewOneWhereverItIsKilled) {
  int killsWithTemporaryFile = 0;
  int latest = 0;
  for (int stop = 1; latest < savesToWatch; ++stop) {
    SCOPED_TRACE(stop);
    m_store.saveFieldDefaults(documentOf(0));
    TracedChild child([this] { saveForEver(m_store); });
    if (!child.isTraced()) GTEST_SKIP() << "processes cannot be traced here";
    ASSERT_TRUE(child.goOn(stop));
    child.kill();
    const int found = generation();
    // How many system calls a save takes can differ from one child to the next.
    latest = std::max(latest, found);
    if (files().size() > 1) ++killsWithTemporaryFile;
    for (const QString& name : files()) makeOld(name);
    m_store.removeUnfinishedSaves();
    ASSERT_EQ(files(), QStringList{u"field_defaults.json"_s});
  }
  // It was really killed in the middle of saves: several calls lie between making the temporary
  // file and renaming it.
  EXPECT_GE(killsWithTemporaryFile, 4 * savesToWatch);
}

// What makes a save survive a loss of power cannot be seen in the files, only in the calls.
TEST_F(KilledSave, BringsTheContentAndThenTheFolderToTheDisk) {
  m_store.saveFieldDefaults(documentOf(0));
  TracedChild child([this] {
    m_store.saveFieldDefaults(documentOf(1));
    ::_exit(0);
  });
  if (!child.isTraced()) GTEST_SKIP() << "processes cannot be traced here";
  std::vector<std::string> calls;
  while (child.goOn(1)) {
    const auto name = nameOfCall(child.enteredCall());
    if (!name.empty()) calls.push_back(name);
  }
  EXPECT_EQ(calls, (std::vector<std::string>{"fsync", "rename", "fsync"}));
  EXPECT_EQ(generation(), 1);
}

// Another process may clear up between the making of the temporary file and its locking.
TEST_F(KilledSave, IsNotLostToAProcessThatTakesItForUnfinished) {
  m_store.saveFieldDefaults(documentOf(0));
  TracedChild child([this] {
    m_store.saveFieldDefaults(documentOf(1));
    ::_exit(0);
  });
  if (!child.isTraced()) GTEST_SKIP() << "processes cannot be traced here";
  int lockings = 0;
  while (child.goOn(1)) {
    if (child.enteredCall() != SYS_flock) continue;
    if (++lockings == 1) {
      EXPECT_EQ(files().size(), 2);
      for (const QString& name : files()) makeOld(name);
      m_store.removeUnfinishedSaves();
      EXPECT_EQ(files(), QStringList{u"field_defaults.json"_s});
    }
  }
  EXPECT_EQ(lockings, 2);
  EXPECT_EQ(generation(), 1);
  EXPECT_EQ(files(), QStringList{u"field_defaults.json"_s});
}

}  // namespace
}  // namespace zarvy
