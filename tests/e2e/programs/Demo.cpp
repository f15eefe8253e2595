// Shows the program at work without a display of one's own: a private desktop, an editor, and a few
// triggers of the first-run library typed as a person would. Exit status 0 only if the editor holds
// what it should.

#include <iostream>

#include <QCommandLineParser>
#include <QCoreApplication>

#include "e2e/harness/SystemTray.h"
#include "e2e/harness/WaitUntil.h"
#include "e2e/programs/ProgramPath.h"
#include "e2e/programs/Screenshot.h"
#include "e2e/scenarios/ScenarioPlayer.h"

namespace zarvy::e2e {
namespace {

using namespace Qt::Literals::StringLiterals;

const QString thanks = u"Thank you for your email. I'll get back to you shortly."_s;

struct DemoStep {
  QString typed;  // ahead of the trigger
  QString trigger;
  QString expansion;
};

const std::vector<DemoStep>& demoSteps() {
  static const std::vector<DemoStep> steps = {
      {u"Good morning!\n\n"_s, u";ty"_s, thanks},
      {u"\n\nKind regards\n\nPS: "_s, u";ty"_s, thanks},
      {u"\n(In brackets, too: "_s, u";ty"_s, thanks},
  };
  return steps;
}

void print(const char* when, const QString& text) {
  std::cout << when << "[" << text.toStdString() << "]" << std::endl;
}

// Types one trigger and gives whether the editor then holds what it should.
bool showStep(Stage& stage, const DemoStep& step, QString& text) {
  text += step.typed;
  const QString before = text + step.trigger.chopped(1);
  stage.person().type(step.typed + step.trigger.chopped(1));
  const bool isTyped = settlesAt(stage.target(), {before, before.size()});
  print("before: ", stage.target().state().text);
  stage.person().type(step.trigger.right(1));
  text += step.expansion;
  const EditorState expected{text, text.size()};
  const bool isExpanded = settlesAt(stage.target(), expected);
  const EditorState actual = stage.target().state();
  print("after:  ", actual.text);
  if (!isExpanded) std::cout << "wrong:  " << complaintAbout(expected, actual) << std::endl;
  return isTyped && isExpanded;
}

// Takes a picture of the menu behind the icon in the tray.
int showMenu(const std::string& program, const QString& picture) {
  Stage stage({.layouts = "us"});
  SystemTray tray(stage.connection(), stage.environment(), stage.makeFolder("tray"));
  stage.startProgramWithFirstRunLibrary(program);
  const bool isOpen = tray.clickIconOf("Zarvy") && tray.waitForMenuOf("Zarvy", true);
  constexpr QSize size(300, 250);
  QImage corner;
  const bool isDrawn =
      isOpen && waitUntil(
                    [&] {
                      const QImage screen = screenImage(stage.connection());
                      corner = screen.copy(QRect(QPoint(screen.width() - size.width(), 0), size));
                      return corner.pixelColor(size.width() / 2, size.height() / 2) != Qt::black;
                    },
                    std::chrono::seconds(20));
  const bool isSaved = isDrawn && savePicture(corner, picture);
  std::cout << (isSaved ? "menu: " : "no picture of the menu: ") << picture.toStdString()
            << std::endl;
  return isSaved ? 0 : 1;
}

int show(const std::string& program, const QString& screenshot) {
  Stage stage({.layouts = "us"});
  stage.startProgramWithFirstRunLibrary(program);
  stage.startTarget(TargetKind::featherpad);
  bool isRight = true;
  QString text;
  for (const DemoStep& step : demoSteps()) isRight = showStep(stage, step, text) && isRight;
  if (!screenshot.isEmpty()) {
    const bool isSaved = savePicture(screenImage(stage.connection()), screenshot);
    std::cout << (isSaved ? "screenshot: " : "no screenshot: ") << screenshot.toStdString()
              << std::endl;
    isRight = isSaved && isRight;
  }
  const bool hasEnded = stage.program()->terminate() == ExitStatus{};
  if (!hasEnded) std::cout << "The program did not end as it was asked to." << std::endl;
  return isRight && hasEnded ? 0 : 1;
}

}  // namespace
}  // namespace zarvy::e2e

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  QCommandLineParser parser;
  const QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                      QStringLiteral("Where the picture goes."),
                                      QStringLiteral("path"));
  const QCommandLineOption program(QStringLiteral("program"),
                                   QStringLiteral("The program to show."), QStringLiteral("path"));
  const QCommandLineOption menu(
      QStringLiteral("menu"),
      QStringLiteral("Only a picture of the menu in the tray, and where it goes."),
      QStringLiteral("path"));
  parser.addOptions({screenshot, program, menu});
  parser.addHelpOption();
  parser.process(application);
  const std::string path =
      parser.isSet(program) ? parser.value(program).toStdString() : zarvy::e2e::programPath();
  if (path.empty()) {
    std::cerr << "There is no program to show.\n";
    return 2;
  }
  try {
    if (parser.isSet(menu)) return zarvy::e2e::showMenu(path, parser.value(menu));
    return zarvy::e2e::show(path, parser.value(screenshot));
  } catch (const std::exception& error) {
    std::cerr << "The demonstration failed: " << error.what() << "\n";
    return 1;
  }
}
