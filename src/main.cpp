#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <thread>
#include <unistd.h>

#include <QApplication>
#include <QByteArray>
#include <QDir>
#include <QIcon>
#include <QSessionManager>

#include "SingleInstance.h"
#include "ZarvyApp.h"
#include "base/EndProcess.h"
#include "base/StandardLineOutput.h"
#include "base/StandardStreams.h"
#include "base/TerminationSignals.h"
#include "platform/desktop/ProgramStart.h"
#include "platform/posix/DeathWatch.h"
#include "storage/DataStore.h"

namespace {

// From the wish to end on. Whatever does not answer, a display or a disk, does not hold it up.
constexpr std::chrono::seconds longestEnd{5};

// For the toolkit to leave in order, whose threads wait for a bus that hangs without limit.
constexpr std::chrono::milliseconds patienceWithToolkit{500};

void limitEnd() {
  zarvy::endProcessWithin(longestEnd);
}

// No display was there when it started, and none can be added; somebody who starts the program
// again on a display wants it there.
bool isWithoutDisplay() {
  const QString offscreen = QStringLiteral("offscreen");
  return QGuiApplication::platformName() == offscreen &&
         qEnvironmentVariable("QT_QPA_PLATFORM") != offscreen;
}

// That of the documents. Where there is none, their place in the temporary folder is not to be
// made.
QString folderOfInstance() {
  if (const auto support = zarvy::DataStore::desktopApplicationSupport()) {
    return *support + QStringLiteral("/Zarvy");
  }
  return QDir::tempPath() + QStringLiteral("/.zarvy-%1").arg(getuid());
}

struct Running {
  zarvy::ZarvyApp& app;
  zarvy::SingleInstance& instance;
  zarvy::StandardLineOutput& output;
};

// Where a disk or the sound server does not answer there is no end in order; what could be saved
// has been.
void endInOrder(const Running& running, int status) {
  limitEnd();
  running.instance.stopListening();
  const bool hasEnded = running.app.end();
  running.output.finish();
  if (!hasEnded) std::_Exit(status);
  std::thread([status] {
    std::this_thread::sleep_for(patienceWithToolkit);
    std::_Exit(status);
  }).detach();
}

// Qt leaves by exit() where its own connection to the display breaks; the program ends in order all
// the same.
int runToTheEnd(const Running& program) {
  // NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): handlers get no argument
  static const Running* running = nullptr;
  running = &program;
  std::atexit([] {
    if (running) endInOrder(*running, EXIT_FAILURE);
  });
  const int status = QApplication::exec();
  running = nullptr;
  endInOrder(program, status);
  return status;
}

}  // namespace

int main(int argc, char* argv[]) {
  zarvy::openMissingStandardDescriptors();
  zarvy::writeToolkitMessagesWithoutWaiting();
  // Anyone who reads the output, or a child process, may end before this program does.
  std::signal(SIGPIPE, SIG_IGN);
  // A parent that ignores the end of its children bequeaths that, and the exit status is then lost.
  std::signal(SIGCHLD, SIG_DFL);
  const zarvy::DeathWatch deathWatch(&zarvy::releaseKeysLeftBy);

  // The program has no options, and those of Qt are not for its users.
  QByteArray program = argc > 0 ? argv[0] : "zarvy";
  QByteArray option = "-platform";
  QByteArray plugins = zarvy::toolkitPlugins();
  std::array arguments{program.data(), option.data(), plugins.data()};
  auto argumentCount = static_cast<int>(arguments.size());
  QApplication application(argumentCount, arguments.data());
  QApplication::setApplicationName(QStringLiteral("Zarvy"));
  QGuiApplication::setDesktopFileName(QStringLiteral("zarvy"));
  QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/zarvy.svg")));
  QApplication::setQuitOnLastWindowClosed(false);
  // A desktop that restores its session would start it beside the login item.
  QObject::connect(
      &application, &QGuiApplication::saveStateRequest, &application,
      [](QSessionManager& session) { session.setRestartHint(QSessionManager::RestartNever); });
  QIcon::setFallbackThemeName(QStringLiteral("breeze"));

  zarvy::StandardLineOutput output;
  zarvy::SingleInstance instance(folderOfInstance());
  if (!instance.becomeOnlyOne()) {
    output.print(QStringLiteral("Zarvy is running already."));
    return 0;
  }
  zarvy::keepToolkitFromServicesThatHang();
  const zarvy::TerminationSignals signals(&QCoreApplication::quit, &limitEnd);
  zarvy::ZarvyApp app(output);
  app.start();
  instance.listen([&app] {
    if (isWithoutDisplay()) {
      QCoreApplication::quit();
      return false;
    }
    app.openManageSnippets();
    return true;
  });
  return runToTheEnd({.app = app, .instance = instance, .output = output});
}
