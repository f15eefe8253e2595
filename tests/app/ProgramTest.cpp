#include <algorithm>
#include <array>
#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr int deadline = 60'000;  // milliseconds; for a machine that does much else

// The built program, started without a display, in a home of its own.
class ProgramWithoutDisplay : public testing::Test {
 protected:
  ProgramWithoutDisplay() {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const auto* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "XDG_DATA_HOME"}) {
      environment.remove(QString::fromLatin1(name));
    }
    environment.insert(u"HOME"_s, m_home.path());
    // Without an address a bus would be started for the display.
    environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path=/dev/null"_s);
    environment.insert(u"XDG_RUNTIME_DIR"_s, m_home.path());
    m_program.setProcessEnvironment(environment);
    m_program.setProgram(QStringLiteral(ZARVY_PROGRAM));
  }

  ~ProgramWithoutDisplay() override {
    if (m_program.state() == QProcess::NotRunning) return;
    m_program.kill();
    m_program.waitForFinished(deadline);
  }

  // Everything printed so far, once it holds `line`.
  [[nodiscard]] QByteArray waitForLine(const QByteArray& line) {
    const QDeadlineTimer limit(deadline);
    while (!m_printed.contains(line + '\n') && !limit.hasExpired()) {
      m_program.waitForReadyRead(static_cast<int>(limit.remainingTime()));
      m_printed += m_program.readAllStandardOutput();
      if (m_program.state() == QProcess::NotRunning) break;
    }
    return m_printed;
  }

  // The library is written once the program has come up and taken it over.
  [[nodiscard]] bool waitForLibrary(const QString& dataHome = u".local/share"_s) {
    const QString path = m_home.filePath(dataHome + u"/Zarvy/folders.json"_s);
    const QDeadlineTimer limit(deadline);
    while (!QFile::exists(path) && !limit.hasExpired()) {
      if (m_program.waitForFinished(20)) return false;
    }
    return QFile::exists(path);
  }

  void sendSignal(int signal) { ::kill(static_cast<pid_t>(m_program.processId()), signal); }

  // As the kernel tells it of the running program.
  [[nodiscard]] bool ignores(int signal) const {
    QFile status(u"/proc/%1/status"_s.arg(m_program.processId()));
    if (!status.open(QIODevice::ReadOnly)) return false;
    const QByteArray label = "SigIgn:";
    const QByteArrayList lines = status.readAll().split('\n');
    const auto line = std::find_if(lines.begin(), lines.end(),
                                   [&](const QByteArray& text) { return text.startsWith(label); });
    if (line == lines.end()) return false;
    const quint64 mask = line->mid(label.size()).trimmed().toULongLong(nullptr, 16);
    return ((mask >> (signal - 1)) & 1U) != 0;
  }

  void expectCleanEnd() {
    ASSERT_TRUE(m_program.waitForFinished(deadline));
    EXPECT_EQ(m_program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(m_program.exitCode(), 0);
  }

  QTemporaryDir m_home;
  QProcess m_program;
  QByteArray m_printed;
};

// The user has started it without a display, and starts it again, with a display or without.
TEST_F(ProgramWithoutDisplay, GivesItsPlaceToOneThatIsStartedLater) {
  m_program.start();
  ASSERT_EQ(waitForLine("No X display can be reached."), "No X display can be reached.\n");
  ASSERT_TRUE(waitForLibrary());
  QProcess later;
  later.setProcessEnvironment(m_program.processEnvironment());
  later.start(m_program.program(), QStringList());
  expectCleanEnd();
  ASSERT_TRUE(later.waitForReadyRead(deadline));
  EXPECT_EQ(later.readAllStandardOutput(), "No X display can be reached.\n");
  later.terminate();
  EXPECT_TRUE(later.waitForFinished(deadline));
}

class EndedBySignal : public ProgramWithoutDisplay, public testing::WithParamInterface<int> {};

TEST_P(EndedBySignal, StaysUpWithOneLineAndEndsCleanly) {
  m_program.start();
  ASSERT_EQ(waitForLine("No X display can be reached."), "No X display can be reached.\n");
  ASSERT_TRUE(waitForLibrary());
  EXPECT_EQ(m_program.state(), QProcess::Running);
  sendSignal(GetParam());
  expectCleanEnd();
  m_printed += m_program.readAllStandardOutput();
  EXPECT_EQ(m_printed, "No X display can be reached.\nKeyboardMonitor: Stopped\n");
  EXPECT_EQ(m_program.readAllStandardError(), "");
}

INSTANTIATE_TEST_SUITE_P(, EndedBySignal, testing::Values(SIGTERM, SIGINT, SIGHUP),
                         [](const testing::TestParamInfo<int>& row) {
                           return std::string(sigabbrev_np(row.param));
                         });

TEST_F(ProgramWithoutDisplay, StaysUpAlsoWhereTheDisplayNamedDoesNotAnswer) {
  QProcessEnvironment environment = m_program.processEnvironment();
  environment.insert(u"DISPLAY"_s, u":4711"_s);
  environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
  m_program.setProcessEnvironment(environment);
  m_program.start();
  EXPECT_EQ(waitForLine("No X display can be reached."), "No X display can be reached.\n");
  ASSERT_TRUE(waitForLibrary());
  sendSignal(SIGTERM);
  expectCleanEnd();
}

TEST_F(ProgramWithoutDisplay, IgnoresWhatStandsOnTheCommandLine) {
  m_program.setArguments({u"--version"_s, u"-platform"_s, u"none"_s, u"-x"_s, u"file.txt"_s});
  m_program.start();
  EXPECT_EQ(waitForLine("No X display can be reached."), "No X display can be reached.\n");
  ASSERT_TRUE(waitForLibrary());
  sendSignal(SIGTERM);
  expectCleanEnd();
}

TEST_F(ProgramWithoutDisplay, OutlivesTheReaderOfItsOutput) {
  std::array<int, 2> pipe{};
  ASSERT_EQ(::pipe2(pipe.data(), O_CLOEXEC), 0);
  ::close(pipe[0]);
  m_program.setChildProcessModifier([output = pipe[1]] { ::dup2(output, STDOUT_FILENO); });
  m_program.start();
  ::close(pipe[1]);
  ASSERT_TRUE(waitForLibrary());
  sendSignal(SIGTERM);
  expectCleanEnd();
}

TEST_F(ProgramWithoutDisplay, EndsCleanlyWhenTheSignalComesBeforeItIsUp) {
  m_program.start();
  (void)waitForLine("No X display can be reached.");
  sendSignal(SIGTERM);
  expectCleanEnd();
}

// Goes on where another is started: the user wants no display, so the running one is as good.
class ProgramThatWantsNoDisplay : public ProgramWithoutDisplay {
 protected:
  ProgramThatWantsNoDisplay() {
    QProcessEnvironment environment = m_program.processEnvironment();
    environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    m_program.setProcessEnvironment(environment);
  }
};

TEST_F(ProgramThatWantsNoDisplay, IsTheOnlyOneHoweverTheFolderOfTheDocumentsIsWritten) {
  const QDir home(m_home.path());
  ASSERT_TRUE(home.mkpath(u"data/inner"_s));
  ASSERT_TRUE(QFile::link(home.filePath(u"data"_s), home.filePath(u"link"_s)));
  const auto startWith = [](QProcess& program, const QString& dataHome) {
    QProcessEnvironment environment = program.processEnvironment();
    environment.insert(u"XDG_DATA_HOME"_s, dataHome);
    program.setProcessEnvironment(environment);
    program.start();
  };
  QProcess other;
  other.setProcessEnvironment(m_program.processEnvironment());
  other.setProgram(m_program.program());
  startWith(m_program, home.filePath(u"data"_s));
  ASSERT_EQ(waitForLine("No X display can be reached."), "No X display can be reached.\n");
  ASSERT_TRUE(waitForLibrary(u"data"_s));
  ASSERT_TRUE(home.mkpath(u"elsewhere"_s));
  ASSERT_TRUE(QFile::link(home.filePath(u"data/Zarvy"_s), home.filePath(u"elsewhere/Zarvy"_s)));
  for (const QString& spelling :
       {u"data/"_s, u"/data"_s, u"data/./inner//.."_s, u"link"_s, u"link/"_s, u"link/inner/.."_s,
        u"not-there/../data"_s, u"elsewhere"_s}) {
    startWith(other, home.path() + u'/' + spelling);
    ASSERT_TRUE(other.waitForFinished(deadline)) << spelling.toStdString();
    EXPECT_EQ(other.readAllStandardOutput(), "Zarvy is running already.\n")
        << spelling.toStdString();
  }
  sendSignal(SIGTERM);
  expectCleanEnd();
}

// The folder comes into being with the first instance, and the one that comes then is the same.
TEST_F(ProgramThatWantsNoDisplay, IsTheOnlyOneAlsoWhereTheFolderWasNotThereWhenItStarted) {
  QProcessEnvironment environment = m_program.processEnvironment();
  environment.insert(u"XDG_DATA_HOME"_s, m_home.filePath(u"new//data/"_s));
  m_program.setProcessEnvironment(environment);
  m_program.start();
  ASSERT_EQ(waitForLine("No X display can be reached."), "No X display can be reached.\n");
  ASSERT_TRUE(waitForLibrary(u"new/data"_s));
  QProcess other;
  environment.insert(u"XDG_DATA_HOME"_s, m_home.filePath(u"new/data"_s));
  other.setProcessEnvironment(environment);
  other.start(m_program.program(), {});
  ASSERT_TRUE(other.waitForFinished(deadline));
  EXPECT_EQ(other.readAllStandardOutput(), "Zarvy is running already.\n");
  sendSignal(SIGTERM);
  expectCleanEnd();
}

// As on a disk that cannot be written.
TEST_F(ProgramThatWantsNoDisplay, IsTheOnlyOneAlsoWhereItsFolderTakesNoLock) {
  ASSERT_TRUE(QDir(m_home.path()).mkpath(u".local/share/Zarvy/.zarvy.lock"_s));
  m_program.start();
  ASSERT_EQ(waitForLine("No X display can be reached."), "No X display can be reached.\n");
  ASSERT_TRUE(waitForLibrary());
  QProcess other;
  other.setProcessEnvironment(m_program.processEnvironment());
  other.start(m_program.program(), {});
  ASSERT_TRUE(other.waitForFinished(deadline));
  EXPECT_EQ(other.readAllStandardOutput(), "Zarvy is running already.\n");
}

// No other user may connect, and what a killed program has left does not count.
TEST_F(ProgramThatWantsNoDisplay, TakesThePlaceOfOneThatWasKilled) {
  m_program.start();
  ASSERT_EQ(waitForLine("No X display can be reached."), "No X display can be reached.\n");
  ASSERT_TRUE(waitForLibrary());
  const QDir runtime(m_home.path());
  const QStringList sockets = runtime.entryList({u"zarvy-*.socket"_s}, QDir::System);
  ASSERT_EQ(sockets.size(), 1);
  struct stat status {};
  ASSERT_EQ(::stat(QFile::encodeName(runtime.filePath(sockets.front())).constData(), &status), 0);
  EXPECT_EQ(status.st_mode & 0077U, 0U);
  m_program.kill();
  ASSERT_TRUE(m_program.waitForFinished(deadline));
  m_printed.clear();
  m_program.start();
  EXPECT_EQ(waitForLine("No X display can be reached."), "No X display can be reached.\n");
  QProcess other;
  other.setProcessEnvironment(m_program.processEnvironment());
  other.start(m_program.program(), {});
  ASSERT_TRUE(other.waitForFinished(deadline));
  EXPECT_EQ(other.readAllStandardOutput(), "Zarvy is running already.\n");
}

// The exit status of a command would be lost where the system reaps the children by itself.
TEST_F(ProgramWithoutDisplay, WaitsForItsChildrenAlsoUnderAParentThatIgnoresTheEndOfItsOwn) {
  m_program.setProgram(u"env"_s);
  m_program.setArguments({u"--ignore-signal=CHLD"_s, QStringLiteral(ZARVY_PROGRAM)});
  m_program.start();
  ASSERT_EQ(waitForLine("No X display can be reached."), "No X display can be reached.\n");
  EXPECT_FALSE(ignores(SIGCHLD));
  EXPECT_TRUE(ignores(SIGPIPE));
  ASSERT_TRUE(waitForLibrary());
  sendSignal(SIGTERM);
  expectCleanEnd();
}

}  // namespace
}  // namespace zarvy
