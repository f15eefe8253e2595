#include <array>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <future>
#include <sstream>
#include <sys/time.h>

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "base/posix/Processes.h"
#include "core/evaluation/JSEvaluator.h"
#include "fakes/RecordingLineOutput.h"
#include "support/QtPrinters.h"

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace processes;

constexpr std::chrono::milliseconds shortLimit{300};

const auto errorMark = u"[JS Error]"_s;
const auto timeoutMark = u"[JS Timeout]"_s;
const auto noStart = u"JSEvaluator: The script worker does not start: "_s;
const auto endlessLoop = u"for (;1;) ;"_s;

// Until the process has worked for a moment, so that it is in the middle of what it does.
void waitUntilBusy(pid_t process) {
  const unsigned long before = statOf(process).userTime;
  EXPECT_TRUE(eventually([&] { return statOf(process).userTime > before + 2; }));
}

class JSWorker : public testing::Test {
 protected:
  // The one process that there is; 0 if there are none or several.
  [[nodiscard]] static pid_t worker() {
    const auto children = runningChildren();
    return children.size() == 1 ? children.front() : 0;
  }

  RecordingLineOutput m_output;
  ChildReaper m_reaper;
  JSEvaluator m_evaluator{m_output, m_reaper, ScriptWorkerCommand::besideThisProgram(),
                          ScriptLimits{patience, patience}};
};

TEST_F(JSWorker, ThatIsKilledInTheMiddleCostsOneResult) {
  EXPECT_EQ(m_evaluator.evaluate(u"var a = 1; a"_s), u"1"_s);
  const pid_t first = worker();
  ASSERT_NE(first, 0);
  auto text = std::async(std::launch::async, [&] { return m_evaluator.evaluate(endlessLoop); });
  waitUntilBusy(first);
  kill(first, SIGKILL);
  EXPECT_EQ(text.get(), errorMark);
  EXPECT_EQ(m_evaluator.evaluate(u"typeof a"_s), u"undefined"_s);
  EXPECT_EQ(m_output.lines(), QStringList());
}

TEST_F(JSWorker, ThatIsKilledBetweenTwoScriptsCostsNone) {
  EXPECT_EQ(m_evaluator.evaluate(u"1"_s), u"1"_s);
  const pid_t first = worker();
  ASSERT_NE(first, 0);
  kill(first, SIGKILL);
  EXPECT_TRUE(eventually([&] { return hasEnded(first); }));
  EXPECT_EQ(m_evaluator.evaluate(u"1+1"_s), u"2"_s);
  EXPECT_EQ(m_output.lines(), QStringList());
}

TEST_F(JSWorker, IsReallyGoneAfterATimeout) {
  JSEvaluator evaluator(m_output, m_reaper, ScriptWorkerCommand::besideThisProgram(),
                        {shortLimit, patience});
  EXPECT_EQ(evaluator.evaluate(endlessLoop), timeoutMark);
  EXPECT_TRUE(eventually([] { return !hasChildren(); }));
}

TEST_F(JSWorker, EndsWhereAScriptLeavesMuchMemoryInUse) {
  EXPECT_EQ(m_evaluator.evaluate(u"var kept = new Uint8Array(160e6).fill(1); kept.length"_s),
            u"160000000"_s);
  const pid_t first = worker();
  EXPECT_TRUE(eventually([&] { return hasEnded(first); }));
  EXPECT_EQ(m_evaluator.evaluate(u"typeof kept"_s), u"undefined"_s);
  EXPECT_EQ(m_output.lines(), QStringList());
}

TEST_F(JSWorker, FreesWhatScriptsNoLongerReachAndStays) {
  EXPECT_EQ(m_evaluator.evaluate(u"var kept = 1; kept"_s), u"1"_s);
  const pid_t first = worker();
  ASSERT_NE(first, 0);
  EXPECT_EQ(m_evaluator.evaluate(u"(() => new Uint8Array(160e6).fill(1).length)()"_s),
            u"160000000"_s);
  EXPECT_TRUE(
      eventually([&] { return hasEnded(first) || residentMemoryOf(first) < 100LL * 1024 * 1024; }));
  EXPECT_EQ(m_evaluator.evaluate(u"kept"_s), u"1"_s);
  EXPECT_EQ(worker(), first);
}

TEST_F(JSWorker, EndsWithItsEvaluator) {
  {
    JSEvaluator evaluator(m_output, m_reaper);
    EXPECT_EQ(evaluator.evaluate(u"1"_s), u"1"_s);
  }
  EXPECT_TRUE(eventually([] { return !hasChildren(); }));
}

TEST_F(JSWorker, IsConfined) {
  EXPECT_EQ(m_evaluator.evaluate(u"1"_s), u"1"_s);
  const pid_t process = worker();
  ASSERT_NE(process, 0);
  int threads = 0;
  for (const auto& task :
       std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/task")) {
    std::ifstream file(task.path() / "status");
    std::ostringstream text;
    text << file.rdbuf();
    const std::string status = text.str();
    EXPECT_NE(status.find("Seccomp:\t2\n"), std::string::npos) << status;
    EXPECT_NE(status.find("NoNewPrivs:\t1\n"), std::string::npos) << status;
    ++threads;
  }
  EXPECT_GE(threads, 2);
}

// Which it would say on standard error.
TEST_F(JSWorker, MayDoAllThatItsWorkNeeds) {
  const QTemporaryDir folder;
  const std::string path = folder.filePath(u"errors"_s).toStdString();
  const int errors = dup(STDERR_FILENO);
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
  ASSERT_EQ(dup2(file, STDERR_FILENO), STDERR_FILENO);
  for (const QString& script : {
           u"1 + 1"_s,
           u"[now(), today(), time(), random(1, 6), uuid()].join()"_s,
           u"new Date().toLocaleString('sv') + new Intl.NumberFormat('ar').format(1e9)"_s,
           u"new Intl.DateTimeFormat('de', {dateStyle: 'long'}).formatRange(0, 1e12)"_s,
           u"['z', 'ä', 'ß'].sort(new Intl.Collator('de').compare).join()"_s,
           u"Promise.resolve(1).then(one => { kept = one })"_s,
           u"'x'.repeat(5e6).replace(/x/g, 'y').length"_s,
           u"(() => { let all = []; for (let i = 0; i < 1e6; ++i) all.push({i}); return 1 })()"_s,
           u"(() => new Uint8Array(160e6).fill(1).length)()"_s,
           u"(function deeper() { return 1 + deeper() })()"_s,
           u"1 + 1"_s,
       }) {
    EXPECT_NE(m_evaluator.evaluate(script), errorMark) << script.toStdString();
  }
  dup2(errors, STDERR_FILENO);
  close(errors);
  close(file);
  std::ostringstream printed;
  printed << std::ifstream(path).rdbuf();
  EXPECT_EQ(printed.str(), "");
}

TEST_F(JSWorker, IsTheFirstThatTheSystemGivesUpWhenMemoryRunsOut) {
  EXPECT_EQ(m_evaluator.evaluate(u"1"_s), u"1"_s);
  std::ifstream file("/proc/" + std::to_string(worker()) + "/oom_score_adj");
  int score = 0;
  file >> score;
  EXPECT_EQ(score, 1000);
}

TEST_F(JSWorker, LeavesNoDescriptorAndNoProcessBehind) {
  const auto before = openDescriptors();
  for (int round = 0; round < 5; ++round) {
    JSEvaluator evaluator(m_output, m_reaper, ScriptWorkerCommand::besideThisProgram(),
                          {shortLimit, patience});
    EXPECT_EQ(evaluator.evaluate(endlessLoop), timeoutMark);
    EXPECT_EQ(evaluator.evaluate(u"1"_s), u"1"_s);
  }
  EXPECT_TRUE(eventually([] { return !hasChildren(); }));
  EXPECT_TRUE(eventually([&] { return openDescriptors() == before; }));
}

TEST_F(JSWorker, IsSpokenToThroughSignals) {
  struct sigaction action {};
  action.sa_handler = [](int) {};
  sigaction(SIGALRM, &action, nullptr);  // no SA_RESTART: every wait is interrupted
  itimerval every{{0, 2000}, {0, 2000}};
  setitimer(ITIMER_REAL, &every, nullptr);
  EXPECT_EQ(m_evaluator.evaluate(u"'x'.repeat(5e6)"_s).size(), 5'000'000);
  JSEvaluator evaluator(m_output, m_reaper, ScriptWorkerCommand::besideThisProgram(),
                        {shortLimit, patience});
  EXPECT_EQ(evaluator.evaluate(endlessLoop), timeoutMark);
  every = {};
  setitimer(ITIMER_REAL, &every, nullptr);
}

// A program of its own that has a worker, and dies without a chance to end it.
void expectWorkerToEndWithItsProgram(const QString& lastScript) {
  std::array<int, 2> pipe{};
  ASSERT_EQ(pipe2(pipe.data(), O_CLOEXEC), 0);
  const pid_t program = fork();
  ASSERT_GE(program, 0);
  if (program == 0) {
    RecordingLineOutput output;
    ChildReaper reaper;
    JSEvaluator evaluator(output, reaper, ScriptWorkerCommand::besideThisProgram(),
                          {patience, patience});
    (void)evaluator.evaluate(u"1"_s);
    const auto children = runningChildren();
    const pid_t worker = children.size() == 1 ? children.front() : 0;
    (void)!write(pipe[1], &worker, sizeof(worker));
    if (!lastScript.isEmpty()) (void)evaluator.evaluate(lastScript);
    while (true) pause();
  }
  pid_t worker = 0;
  EXPECT_EQ(read(pipe[0], &worker, sizeof(worker)), static_cast<ssize_t>(sizeof(worker)));
  EXPECT_NE(worker, 0);
  if (!lastScript.isEmpty()) waitUntilBusy(worker);
  EXPECT_FALSE(hasEnded(worker));
  kill(program, SIGKILL);
  EXPECT_EQ(waitpid(program, nullptr, 0), program);
  EXPECT_TRUE(eventually([&] { return hasEnded(worker); }));
  close(pipe[0]);
  close(pipe[1]);
}

TEST(JSWorkerOfAProgramThatDies, EndsWhileItWaits) {
  expectWorkerToEndWithItsProgram(QString());
}

TEST(JSWorkerOfAProgramThatDies, EndsInTheMiddleOfAScript) {
  expectWorkerToEndWithItsProgram(endlessLoop);
}

// A worker that is not ours: a shell script, which finds the socket where ours does.
class StrangeWorker : public testing::Test {
 protected:
  // A worker that does as told, by a script of sh.
  [[nodiscard]] ScriptWorkerCommand workerThat(const std::string& behaves) {
    const QString path = m_folder.filePath(u"worker"_s);
    {
      std::ofstream file(path.toStdString());
      file << "#!/bin/sh\n" << behaves << "\n";
    }
    std::filesystem::permissions(path.toStdString(), std::filesystem::perms::owner_all);
    return {path, {}};
  }

  [[nodiscard]] QString textWith(const std::string& behaviour, ScriptLimits limits) {
    return JSEvaluator(m_output, m_reaper, workerThat(behaviour), limits).evaluate(u"1"_s);
  }

  void expectNoStart(const QString& program, const QString& reason) {
    JSEvaluator evaluator(m_output, m_reaper, {program, {}}, {patience, patience});
    for (int round = 0; round < 2; ++round) {
      EXPECT_EQ(evaluator.evaluate(u"1"_s), errorMark);
      EXPECT_EQ(m_output.takeLines(), QStringList(noStart + reason));
    }
  }

  static constexpr ScriptLimits patient{patience, patience};
  QTemporaryDir m_folder;
  RecordingLineOutput m_output;
  ChildReaper m_reaper;
};

TEST_F(StrangeWorker, ThatIsMissingIsReported) {
  const auto before = openDescriptors();
  expectNoStart(m_folder.filePath(u"missing"_s), u"No such file or directory"_s);
  expectNoStart(u"/etc/passwd"_s, u"Permission denied"_s);
  expectNoStart(QString(), u"No such file or directory"_s);
  EXPECT_EQ(openDescriptors(), before);
}

TEST_F(StrangeWorker, ThatEndsAtOnceIsReported) {
  expectNoStart(u"/bin/true"_s, u"Connection reset by peer"_s);
  EXPECT_TRUE(eventually([] { return !hasChildren(); }));
}

TEST_F(StrangeWorker, ThatDoesNotComeUpIsReported) {
  EXPECT_EQ(textWith("exec sleep 1000", {patience, shortLimit}), errorMark);
  EXPECT_EQ(m_output.lines(), QStringList(noStart + u"Connection timed out"_s));
  EXPECT_TRUE(eventually([] { return !hasChildren(); }));
}

TEST_F(StrangeWorker, ThatSpeaksAnotherVersionIsReported) {
  EXPECT_EQ(textWith("printf '\\001\\000\\000\\000' >&3; exec sleep 1000", patient), errorMark);
  EXPECT_EQ(m_output.lines(), QStringList(noStart + u"Protocol error"_s));
}

#define READY "printf '\\002\\000\\000\\000' >&3; "
#define NONE "\\000\\000\\000\\000"
#define ONE "\\001\\000\\000\\000"
#define REPLY ONE
#define QUESTION NONE

TEST_F(StrangeWorker, IsBelievedWhereItKeepsToWhatIsAgreed) {
  EXPECT_EQ(textWith(READY "printf '" REPLY ONE ONE ONE ONE "x\\000y\\000' >&3; exec sleep 1000",
                     patient),
            u"x"_s);
  EXPECT_EQ(m_output.lines(), QStringList(u"JS Exception: y"_s));
}

TEST_F(StrangeWorker, IsNotBelievedBeyondThat) {
  for (const char *const header : {
           "\\004\\000\\000\\000" NONE NONE NONE,  // an unknown outcome
           ONE "\\002\\000\\000\\000" NONE NONE,   // neither thrown nor not
           ONE NONE "\\001\\000\\000\\002" NONE,   // a text that is one unit too long
           ONE ONE NONE "\\377\\377\\377\\377",    // such a description
       }) {
    const std::string behaviour =
        READY "printf '" REPLY + std::string(header) + "' >&3; sleep 1000";
    EXPECT_EQ(textWith(behaviour, patient), errorMark);
  }
  EXPECT_EQ(textWith(READY "printf '\\002\\000\\000\\000' >&3; sleep 1000", patient), errorMark);
  // The clocks at an instant that no script has.
  EXPECT_EQ(
      textWith(READY "printf '" QUESTION NONE "\\000\\000\\000\\177' >&3; sleep 1000", patient),
      errorMark);
  EXPECT_EQ(m_output.lines(), QStringList());
}

TEST_F(StrangeWorker, ThatNeverStopsAskingHasTheTimeOfAScript) {
  EXPECT_EQ(textWith(READY "while printf '" QUESTION NONE NONE "' >&3; do :; done",
                     {shortLimit, patience}),
            timeoutMark);
  EXPECT_TRUE(eventually([] { return !hasChildren(); }));
}

// The time in which it comes up is not the script's.
TEST_F(StrangeWorker, MayTakeLongerToComeUpThanAScriptMayTake) {
  const ScriptLimits limits{std::chrono::seconds(1), patience};
  EXPECT_EQ(textWith("sleep 1.2; " READY "printf '" REPLY ONE NONE ONE NONE
                     "x\\000' >&3; exec sleep 1000",
                     limits),
            u"x"_s);
}

TEST_F(StrangeWorker, ThatStopsInTheMiddleOfItsReplyHasTheTimeOfAScript) {
  const ScriptLimits limits{shortLimit, patience};
  EXPECT_EQ(textWith(READY "printf '" REPLY ONE "' >&3; exec sleep 1000", limits), timeoutMark);
  EXPECT_EQ(textWith(READY "printf '" REPLY ONE NONE ONE NONE "x' >&3; exec sleep 1000", limits),
            timeoutMark);
  EXPECT_TRUE(eventually([] { return !hasChildren(); }));
}

TEST_F(StrangeWorker, ThatEndsInTheMiddleOfItsReplyHasFailed) {
  EXPECT_EQ(textWith(READY "printf '" REPLY ONE "' >&3", patient), errorMark);
  EXPECT_EQ(textWith(READY "printf '" REPLY ONE NONE ONE NONE "x' >&3", patient), errorMark);
  EXPECT_EQ(textWith(READY, patient), errorMark);
  EXPECT_EQ(m_output.lines(), QStringList());
}

TEST_F(StrangeWorker, ThatSaysMoreThanItWasAskedIsReplaced) {
  JSEvaluator evaluator(
      m_output, m_reaper,
      workerThat(READY "printf '" REPLY ONE NONE ONE NONE "x\\000more' >&3; exec sleep 1000"),
      patient);
  for (int round = 0; round < 3; ++round) EXPECT_EQ(evaluator.evaluate(u"1"_s), u"x"_s);
}

TEST_F(StrangeWorker, ThatDoesNotReadCannotHoldItsProgramUp) {
  JSEvaluator evaluator(m_output, m_reaper, workerThat(READY "exec sleep 1000"),
                        {shortLimit, patience});
  EXPECT_EQ(evaluator.evaluate(QString(5'000'000, u' ')), timeoutMark);
}

}  // namespace
}  // namespace zarvy
