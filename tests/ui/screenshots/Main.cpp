// Takes a picture of every scene, light and dark, at 100, 150 and 200 %, on a private X server with
// a window manager:
//
//   zarvy_ui_screenshots <folder> [<scene>...]
//
// Calls itself for each picture, since the scale of a process is settled when it starts. Exit
// status 0 only if every picture was taken and Qt complained of nothing.

#include <chrono>
#include <filesystem>
#include <iostream>
#include <string_view>
#include <utility>

#include <QApplication>
#include <QDir>

#include "e2e/harness/ChildProcess.h"
#include "ui/desktop/PrivateDesktop.h"
#include "ui/screenshots/Photograph.h"
#include "ui/screenshots/ScreenScene.h"

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;

class Studio {
 public:
  explicit Studio(QString folder) : m_folder(std::move(folder)) { QDir().mkpath(m_folder); }

  [[nodiscard]] bool take(const QString& scene, const QString& theme, int percent) {
    const QString path = m_folder + u"/%1-%2-%3.png"_s.arg(scene, theme, QString::number(percent));
    e2e::Environment environment = m_desktop.environment();
    environment["QT_SCALE_FACTOR"] = std::to_string(percent / 100.0);
    e2e::ChildProcess child(
        {.program = std::filesystem::read_symlink("/proc/self/exe").string(),
         .arguments = {"--take", scene.toStdString(), theme.toStdString(), path.toStdString()},
         .environment = environment,
         .errorFile = "/dev/stderr",
         .descriptors = {}});
    const bool isTaken = child.waitForExit(std::chrono::seconds(60)) == e2e::ExitStatus{};
    std::cout << (isTaken ? "" : "FAILED: ") << path.toStdString() << std::endl;
    return isTaken;
  }

 private:
  const QString m_folder;
  const PrivateDesktop m_desktop;
};

int takeAll(const QString& folder, const QStringList& wanted) {
  Studio studio(folder);
  bool isComplete = true;
  int count = 0;
  for (const ScreenScene& scene : screenScenes()) {
    if (!wanted.isEmpty() && !wanted.contains(scene.name)) continue;
    for (const QString& theme : {u"light"_s, u"dark"_s}) {
      for (const int percent : {100, 150, 200}) {
        ++count;
        isComplete = studio.take(scene.name, theme, percent) && isComplete;
      }
    }
  }
  return isComplete && count > 0 ? 0 : 1;
}

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): handlers get no argument
bool hasComplained = false;

int takeOne(int argc, char** argv) {
  qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& message) {
    hasComplained = hasComplained || (type != QtDebugMsg && type != QtInfoMsg);
    std::cerr << message.toStdString() << std::endl;
  });
  const QApplication application(argc, argv);
  const QStringList arguments = QApplication::arguments();
  const bool isTaken = photograph(arguments.at(2), arguments.at(3), arguments.at(4));
  return isTaken && !hasComplained ? 0 : 1;
}

}  // namespace
}  // namespace zarvy

int main(int argc, char** argv) {
  if (argc == 5 && std::string_view(argv[1]) == "--take") return zarvy::takeOne(argc, argv);
  if (argc < 2) {
    std::cerr << "usage: zarvy_ui_screenshots <folder> [<scene>...]\n";
    return 2;
  }
  QStringList arguments;
  for (int index = 1; index < argc; ++index) arguments.append(QString::fromLocal8Bit(argv[index]));
  try {
    return zarvy::takeAll(arguments.first(), arguments.sliced(1));
  } catch (const std::exception& error) {
    std::cerr << "No pictures: " << error.what() << "\n";
    return 1;
  }
}
