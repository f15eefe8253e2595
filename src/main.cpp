#include <csignal>

#include <QApplication>

#include "ZarvyApp.h"
#include "base/StandardLineOutput.h"
#include "base/TerminationSignals.h"
#include "platform/x11/connection/DisplayProbe.h"

namespace {

// Qt ends a program whose display it cannot reach. This one stays up, to say why nothing expands.
void choosePlatformPlugin() {
  const QByteArray chosen = qgetenv("QT_QPA_PLATFORM");
  const bool wantsX = chosen.isEmpty() || chosen.startsWith("xcb");
  if (!wantsX) return;
  if (!zarvy::x11::canReachDisplay()) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
  } else if (chosen.isEmpty()) {
    qputenv("QT_QPA_PLATFORM", "xcb");
  }
}

}  // namespace

int main(int argc, char* argv[]) {
  // Whoever reads the output, or a child process, may end before this program does.
  std::signal(SIGPIPE, SIG_IGN);
  // A parent that ignores the end of its children bequeaths that, and the exit status is then lost.
  std::signal(SIGCHLD, SIG_DFL);
  choosePlatformPlugin();

  // The program has no options, and those of Qt are not for its users.
  int ownArgumentCount = argc > 0 ? 1 : 0;
  QApplication application(ownArgumentCount, argv);
  QApplication::setApplicationName(QStringLiteral("Zarvy"));
  QApplication::setQuitOnLastWindowClosed(false);

  const zarvy::TerminationSignals signals(&QCoreApplication::quit);
  zarvy::StandardLineOutput output;
  zarvy::ZarvyApp app(output);
  app.start();
  return QApplication::exec();
}
