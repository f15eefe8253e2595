#include <array>
#include <csignal>

#include <QApplication>
#include <QByteArray>

#include "ZarvyApp.h"
#include "base/StandardLineOutput.h"
#include "base/TerminationSignals.h"
#include "platform/x11/connection/DisplayProbe.h"

namespace {

// The platform plugins that Qt is to try, in their order. Where none loads, Qt ends the program;
// this one stays up, to say why nothing expands.
QByteArray platformPlugins() {
  const QByteArray chosen = qgetenv("QT_QPA_PLATFORM");
  const bool wantsX = chosen.isEmpty() || chosen.startsWith("xcb");
  if (wantsX && !zarvy::x11::canReachDisplay()) return "offscreen";
  return (chosen.isEmpty() ? "xcb" : chosen) + ";offscreen";
}

}  // namespace

int main(int argc, char* argv[]) {
  // Whoever reads the output, or a child process, may end before this program does.
  std::signal(SIGPIPE, SIG_IGN);
  // A parent that ignores the end of its children bequeaths that, and the exit status is then lost.
  std::signal(SIGCHLD, SIG_DFL);

  // The program has no options, and those of Qt are not for its users.
  QByteArray program = argc > 0 ? argv[0] : "zarvy";
  QByteArray option = "-platform";
  QByteArray plugins = platformPlugins();
  std::array arguments{program.data(), option.data(), plugins.data()};
  auto argumentCount = static_cast<int>(arguments.size());
  QApplication application(argumentCount, arguments.data());
  QApplication::setApplicationName(QStringLiteral("Zarvy"));
  QApplication::setQuitOnLastWindowClosed(false);

  const zarvy::TerminationSignals signals(&QCoreApplication::quit);
  zarvy::StandardLineOutput output;
  zarvy::ZarvyApp app(output);
  app.start();
  return QApplication::exec();
}
