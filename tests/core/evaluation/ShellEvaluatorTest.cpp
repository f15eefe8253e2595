#include <array>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/time.h>

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "base/posix/Processes.h"
#include "core/evaluation/ShellEvaluator.h"
#include "support/QtPrinters.h"

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace processes;

constexpr std::chrono::milliseconds shortLimit{300};
// Long enough for a shell to come up and set itself up, on a machine that does much else.
constexpr std::chrono::milliseconds mediumLimit{2000};

const auto timeoutMark = u"[Shell Timeout]"_s;

struct Row {
  const char* name;
  const char* command;
  QString expected;
};

const Row rows[] = {
    {"LosesOneLineFeed", "echo one", u"one"_s},
    {"LosesOnlyOneOfTwoLineFeeds", "printf 'one\\n\\n'", u"one\n"_s},
    {"KeepsTextWithoutLineFeed", "printf one", u"one"_s},
    {"KeepsACarriageReturn", "printf 'one\\r\\n'", u"one\r"_s},
    {"KeepsBlanksAndInnerLineFeeds", "printf '  a \\n\\n b  \\n'", u"  a \n\n b  "_s},
    {"IsEmptyForALoneLineFeed", "echo", u""_s},
    {"IsEmptyWithoutOutput", "true", u""_s},
    {"IsEmptyForAnEmptyCommand", "", u""_s},
    {"LeavesTheErrorStreamOfASuccessOut", "echo out; echo err >&2", u"out"_s},
    {"LeavesTheOutputOfAFailureOut", "echo out; exit 1", u"[Shell Error]"_s},
    {"MarksAFailure", "false", u"[Shell Error]"_s},
    {"SaysWhyItFailed", "echo out; echo why >&2; exit 1", u"[Shell Error: why]"_s},
    {"TrimsTheReason", "printf ' \\n\\t why \\n not \\302\\240\\n\\n' >&2; exit 3",
     u"[Shell Error: why \n not]"_s},
    {"TakesABlankReasonForNone", "printf ' \\n\\t' >&2; exit 1", u"[Shell Error]"_s},
    {"TakesAnInvalidReasonForNone", "printf 'why\\377' >&2; exit 1", u"[Shell Error]"_s},
    {"MarksAShellThatASignalEnds", "kill -9 $$", u"[Shell Error]"_s},
    {"MarksAShellThatASignalEndsAfterOutput", "echo out; kill -15 $$; sleep 60",
     u"[Shell Error]"_s},
    {"RunsAPipeline", "printf 'b\\na\\n' | sort | tr a-z A-Z", u"A\nB"_s},
    {"EndsAPipelineWhoseReaderIsGone", "yes | head -n 1", u"y"_s},
    {"SetsVariables", "x='a  b'; echo \"<$x>\"", u"<a  b>"_s},
    {"SubstitutesCommands", "echo $(echo inner)", u"inner"_s},
    {"KeepsQuotes", "echo \"it's\" '\"so\"'", u"it's \"so\""_s},
    {"TakesSeveralLines", "echo one\necho two\n", u"one\ntwo"_s},
    {"KeepsWhatIsNotAscii", "echo 'gr\u00fc\u00df \u20ac \U0001F600'",
     u"gr\u00fc\u00df \u20ac \U0001F600"_s},
    {"WaitsForABackgroundWriter", "(sleep 0.2; echo late) & echo early", u"early\nlate"_s},
    {"StaysInTheDirectory", "test \"$(pwd -P)\" = \"$ZARVY_TEST_FOLDER\" && echo same", u"same"_s},
    {"InheritsTheEnvironment", "echo \"$ZARVY_TEST_VALUE\"", u"a value"_s},
    {"LeadsAProcessGroup", "test \"$(cut -d ' ' -f 5 /proc/$$/stat)\" = $$ && echo leads",
     u"leads"_s},
    {"HasOnlyTheStandardDescriptors", "echo $(ls /proc/self/fd)", u"0 1 2 3"_s},  // 3: of ls
    {"GivesEmptyTextForAStrayByte", "printf 'ok\\377'", u""_s},
    {"GivesEmptyTextForAnOverlongForm", "printf '\\300\\200'", u""_s},
    {"GivesEmptyTextForASurrogate", "printf '\\355\\240\\200'", u""_s},
    {"GivesEmptyTextForHalfACharacter", "printf 'ok\\342\\202'", u""_s},
    {"GivesEmptyTextBeyondUnicode", "printf '\\364\\220\\200\\200'", u""_s},
    {"KeepsAByteOrderMark", "printf '\\357\\273\\277x'", u"\uFEFFx"_s},
    {"KeepsANonCharacter", "printf '\\357\\277\\277'", u"\uFFFF"_s},
    {"KeepsANul", "printf 'a\\000b'", QString(u"a\0b"_s)},
};

class ShellText : public testing::TestWithParam<std::tuple<const char*, Row>> {};

TEST_P(ShellText, IsAsExpected) {
  const auto& [shell, row] = GetParam();
  std::signal(SIGPIPE, SIG_IGN);                        // as the program does
  const int stray = fcntl(STDERR_FILENO, F_DUPFD, 50);  // inheritable
  setenv("ZARVY_TEST_VALUE", "a value", 1);
  setenv("ZARVY_TEST_FOLDER", std::filesystem::canonical(".").c_str(), 1);

  ChildReaper reaper;
  ShellEvaluator evaluator(reaper, {shell}, patience);
  EXPECT_EQ(evaluator.evaluate(QString::fromUtf8(row.command)), row.expected);
  EXPECT_FALSE(hasChildren());
  close(stray);
}

std::string nameOf(const testing::TestParamInfo<std::tuple<const char*, Row>>& test) {
  const auto& [shell, row] = test.param;
  return row.name + std::string("In_") + std::filesystem::path(shell).filename().string();
}

INSTANTIATE_TEST_SUITE_P(, ShellText,
                         testing::Combine(testing::Values("/bin/zsh", "/bin/bash", "/bin/sh"),
                                          testing::ValuesIn(rows)),
                         nameOf);

class Shell : public testing::Test {
 protected:
  ~Shell() override {
    EXPECT_TRUE(eventually([] { return !hasChildren(); }));
  }

  // The process ids that a command has written to the file "ids", one a line.
  [[nodiscard]] std::vector<pid_t> writtenIds() const {
    std::ifstream file(path("ids").toStdString());
    std::vector<pid_t> ids;
    for (pid_t id = 0; file >> id;) ids.push_back(id);
    return ids;
  }

  [[nodiscard]] QString path(const char* name) const {
    return m_folder.filePath(QString::fromLatin1(name));
  }

  [[nodiscard]] QString evaluate(const QString& command, std::chrono::milliseconds limit) {
    return ShellEvaluator(m_reaper, {"/bin/sh"}, limit).evaluate(command);
  }

  QTemporaryDir m_folder;
  ChildReaper m_reaper;
};

TEST_F(Shell, IsGivenTheCommandAsOneArgumentAfterMinusC) {
  EXPECT_EQ(evaluate(u"tr '\\000' '|' < /proc/$$/cmdline; true"_s, patience),
            u"/bin/sh|-c|tr '\\000' '|' < /proc/$$/cmdline; true|"_s);
}

TEST_F(Shell, IgnoresAndBlocksNoSignalThatTheProgramDoes) {
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGINT, SIG_IGN);
  sigset_t blocked;
  sigemptyset(&blocked);
  sigaddset(&blocked, SIGUSR1);
  pthread_sigmask(SIG_BLOCK, &blocked, nullptr);
  const QString blockedByChild = evaluate(u"sed -n 's/^SigBlk:.//p' /proc/self/status"_s, patience);
  const QString ignoredByChild = evaluate(u"sed -n 's/^SigIgn:.//p' /proc/self/status"_s, patience);
  pthread_sigmask(SIG_UNBLOCK, &blocked, nullptr);
  std::signal(SIGINT, SIG_DFL);
  bool isNumber = false;
  EXPECT_EQ(blockedByChild.toULongLong(&isNumber, 16), 0U);
  EXPECT_TRUE(isNumber);
  // Signals 32 and 33 are the C library's own.
  EXPECT_EQ(ignoredByChild.toULongLong(&isNumber, 16) & ~0x1'8000'0000ULL, 0U);
  EXPECT_TRUE(isNumber);
}

TEST_F(Shell, IsTheFirstThatIsThere) {
  const auto shellOf = [&](const QByteArrayList& shells) {
    return ShellEvaluator(m_reaper, shells, patience).evaluate(u"echo $0"_s);
  };
  EXPECT_EQ(shellOf({"/bin/bash", "/bin/sh"}), u"/bin/bash"_s);
  EXPECT_EQ(shellOf({"/bin/no-such-shell", "/bin/sh"}), u"/bin/sh"_s);
  EXPECT_EQ(ShellEvaluator(m_reaper).evaluate(u"echo $0"_s), u"/bin/zsh"_s);
}

TEST_F(Shell, ThatCannotBeStartedIsMarkedWithTheReason) {
  const auto markOf = [&](const QByteArrayList& shells) {
    return ShellEvaluator(m_reaper, shells, patience).evaluate(u"echo x"_s);
  };
  EXPECT_EQ(markOf({"/bin/no-such-shell"}), u"[Shell Error: No such file or directory]"_s);
  EXPECT_EQ(markOf({}), u"[Shell Error: No such file or directory]"_s);
  EXPECT_EQ(markOf({"/etc/passwd", "/bin/sh"}), u"[Shell Error: Permission denied]"_s);
  EXPECT_EQ(evaluate(QString(1'000'000, u'x'), patience),
            u"[Shell Error: Argument list too long]"_s);
}

TEST_F(Shell, IsNotStartedWithHalfACommand) {
  const QString touched = path("touched");
  const QString command = u"touch "_s + touched;
  EXPECT_EQ(evaluate(command + QChar(u'\0') + u"-and-more"_s, patience),
            u"[Shell Error: Invalid argument]"_s);
  EXPECT_EQ(evaluate(command + QChar(0xD800), patience),
            u"[Shell Error: Invalid or incomplete multibyte or wide character]"_s);
  EXPECT_FALSE(std::filesystem::exists(touched.toStdString()));
}

TEST_F(Shell, ReadsTheStandardInputOfTheProgram) {
  const int own = fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 10);
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
  ASSERT_EQ(write(ends[1], "typed\n", 6), 6);
  close(ends[1]);
  dup2(ends[0], STDIN_FILENO);
  close(ends[0]);
  const QString text = evaluate(u"cat"_s, patience);
  dup2(own, STDIN_FILENO);
  close(own);
  EXPECT_EQ(text, u"typed"_s);
}

TEST_F(Shell, WorksInAProgramWithoutStandardStreams) {
  std::array<int, 3> own{};
  for (int number = 0; number < 3; ++number) {
    own[static_cast<std::size_t>(number)] = fcntl(number, F_DUPFD_CLOEXEC, 10);
    close(number);
  }
  const QString success = evaluate(u"echo out; echo err >&2"_s, patience);
  const QString failure = evaluate(u"echo out; echo err >&2; exit 1"_s, patience);
  for (int number = 0; number < 3; ++number) {
    dup2(own[static_cast<std::size_t>(number)], number);
    close(own[static_cast<std::size_t>(number)]);
  }
  EXPECT_EQ(success, u"out"_s);
  EXPECT_EQ(failure, u"[Shell Error: err]"_s);
}

TEST_F(Shell, GivesAPipefulButNoMore) {
  EXPECT_EQ(evaluate(u"head -c 65536 /dev/zero | tr '\\000' x"_s, patience), QString(65'536, u'x'));
  EXPECT_EQ(evaluate(u"head -c 65537 /dev/zero | tr '\\000' x"_s, shortLimit), timeoutMark);
  EXPECT_EQ(evaluate(u"head -c 5000000 /dev/zero"_s, shortLimit), timeoutMark);
  EXPECT_EQ(evaluate(u"head -c 5000000 /dev/zero >&2; exit 1"_s, shortLimit), timeoutMark);
  EXPECT_TRUE(eventually([] { return !hasChildren(); }));
}

TEST_F(Shell, IsAskedToEndWhenItTakesTooLong) {
  EXPECT_EQ(evaluate(u"exec sleep 1000"_s, shortLimit), timeoutMark);
  EXPECT_TRUE(eventually([] { return !hasChildren(); }));
}

TEST_F(Shell, IsAskedToEndThoughItIsStopped) {
  EXPECT_EQ(evaluate(u"kill -STOP $$"_s, shortLimit), timeoutMark);
  EXPECT_TRUE(eventually([] { return !hasChildren(); }));
}

TEST_F(Shell, IsAskedToEndTogetherWithWhatItRuns) {
  EXPECT_EQ(
      evaluate(u"sleep 1000 & echo $! > "_s + path("ids") + u"; sleep 1000; true"_s, mediumLimit),
      timeoutMark);
  const auto ids = writtenIds();
  ASSERT_EQ(ids.size(), 1U);
  EXPECT_TRUE(eventually([&] { return hasEnded(ids.front()); }));
}

TEST_F(Shell, StaysBehindWhereItDoesNotListen) {
  const QString command =
      u"trap '' TERM; echo $$ > "_s + path("ids") + u"; while :; do sleep 1000; done"_s;
  EXPECT_EQ(evaluate(command, mediumLimit), timeoutMark);
  const auto ids = writtenIds();
  ASSERT_EQ(ids.size(), 1U);
  EXPECT_FALSE(hasEnded(ids.front()));
  kill(-ids.front(), SIGKILL);
  EXPECT_TRUE(eventually([] { return !hasChildren(); }));
}

TEST_F(Shell, IsNotWaitedForAtTheEndOfItsReaper) {
  {
    ChildReaper shortLived;
    const QString command =
        u"trap '' TERM; echo $$ > "_s + path("ids") + u"; while :; do sleep 1000; done"_s;
    EXPECT_EQ(ShellEvaluator(shortLived, {"/bin/sh"}, mediumLimit).evaluate(command), timeoutMark);
  }
  const auto ids = writtenIds();
  ASSERT_EQ(ids.size(), 1U);
  EXPECT_FALSE(hasEnded(ids.front()));
  kill(-ids.front(), SIGKILL);
  EXPECT_EQ(waitpid(ids.front(), nullptr, 0), ids.front());
}

TEST_F(Shell, ThatLeavesAWriterBehindTakesTooLongAndTheWriterIsLeftAlone) {
  EXPECT_EQ(evaluate(u"sleep 1000 & echo $! > "_s + path("ids") + u"; echo hi"_s, mediumLimit),
            timeoutMark);
  EXPECT_FALSE(hasChildren());
  const auto ids = writtenIds();
  ASSERT_EQ(ids.size(), 1U);
  EXPECT_FALSE(hasEnded(ids.front()));
  kill(ids.front(), SIGKILL);
}

TEST_F(Shell, ThatLeavesAProgramBehindWithoutItsOutputHasEnded) {
  EXPECT_EQ(evaluate(u"sleep 1000 >/dev/null 2>&1 & echo $! > "_s + path("ids") + u"; echo hi"_s,
                     patience),
            u"hi"_s);
  const auto ids = writtenIds();
  ASSERT_EQ(ids.size(), 1U);
  EXPECT_FALSE(hasEnded(ids.front()));
  kill(ids.front(), SIGKILL);
}

TEST_F(Shell, ThatLeavesAnEndlessWriterBehindTakesTooLongWithinBoundedMemory) {
  // Only the bound on the memory ends this within the limit.
  EXPECT_EQ(evaluate(u"yes & true"_s, std::chrono::hours(1)), timeoutMark);
  EXPECT_FALSE(hasChildren());
}

TEST_F(Shell, IsWaitedForWithoutBurningTime) {
  rusage before{};
  rusage after{};
  getrusage(RUSAGE_THREAD, &before);
  EXPECT_EQ(evaluate(u"sleep 1; (sleep 1; echo late) & echo early"_s, patience), u"early\nlate"_s);
  getrusage(RUSAGE_THREAD, &after);
  EXPECT_LE(after.ru_nvcsw - before.ru_nvcsw, 20);  // how often it slept; 5 in practice
  const auto seconds = [](const rusage& usage) {
    return static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
  };
  EXPECT_LT(seconds(after) - seconds(before), 1.0);  // of two
}

TEST_F(Shell, IsWaitedForThroughSignals) {
  struct sigaction action {};
  action.sa_handler = [](int) {};
  sigaction(SIGALRM, &action, nullptr);  // no SA_RESTART: every wait is interrupted
  itimerval every{{0, 5000}, {0, 5000}};
  setitimer(ITIMER_REAL, &every, nullptr);
  EXPECT_EQ(evaluate(u"sleep 0.3; (sleep 0.3; echo late) & echo early"_s, patience),
            u"early\nlate"_s);
  EXPECT_EQ(evaluate(u"exec sleep 1000"_s, shortLimit), timeoutMark);
  every = {};
  setitimer(ITIMER_REAL, &every, nullptr);
}

TEST_F(Shell, IsMarkedWhereTheProgramHasNoDescriptorLeft) {
  // Once with descriptors, on either road: UndefinedBehaviorSanitizer needs some to look at an
  // object of a type that it has not seen yet.
  ASSERT_EQ(evaluate(u"echo hi"_s, patience), u"hi"_s);
  ASSERT_EQ(ShellEvaluator(m_reaper, {"/no/shell"}).evaluate(u"echo"_s),
            u"[Shell Error: No such file or directory]"_s);
  rlimit own{};
  getrlimit(RLIMIT_NOFILE, &own);
  for (rlim_t left = 0; left < 8; ++left) {
    const auto open = openDescriptors();
    const rlimit few{static_cast<rlim_t>(std::stoi(*open.rbegin())) + 1 + left, own.rlim_max};
    setrlimit(RLIMIT_NOFILE, &few);
    const QString text = evaluate(u"echo hi"_s, patience);
    setrlimit(RLIMIT_NOFILE, &own);
    EXPECT_TRUE(text == u"hi"_s || text == u"[Shell Error: Too many open files]"_s)
        << text.toStdString();
    EXPECT_TRUE(left > 0 || text != u"hi"_s);
    EXPECT_EQ(openDescriptors(), open);
    EXPECT_FALSE(hasChildren());
  }
}

TEST_F(Shell, LeavesNoDescriptorAndNoProcessBehind) {
  const auto before = openDescriptors();
  for (int round = 0; round < 20; ++round) {
    EXPECT_EQ(evaluate(u"echo hi"_s, patience), u"hi"_s);
    EXPECT_EQ(evaluate(u"echo hi >&2; exit 1"_s, patience), u"[Shell Error: hi]"_s);
    EXPECT_EQ(evaluate(u"exec sleep 1000"_s, std::chrono::milliseconds(10)), timeoutMark);
    EXPECT_EQ(ShellEvaluator(m_reaper, {"/no/shell"}).evaluate(u"echo"_s),
              u"[Shell Error: No such file or directory]"_s);
  }
  EXPECT_TRUE(eventually([] { return !hasChildren(); }));
  EXPECT_TRUE(eventually([&] { return openDescriptors() == before; }));
}

TEST_F(Shell, HasFiveSeconds) {
  QElapsedTimer time;
  time.start();
  EXPECT_EQ(ShellEvaluator(m_reaper).evaluate(u"sleep 10"_s), timeoutMark);
  EXPECT_GE(time.elapsed(), 5000);
  EXPECT_TRUE(eventually([] { return !hasChildren(); }));
}

}  // namespace
}  // namespace zarvy
