#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>

#include "ui/fillin/FillInHarness.h"
#include "ui/fillin/FillInWindowController.h"
#include "ui/screenshots/ScreenScene.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

using namespace std::chrono_literals;

struct FillInStage {
  FillInHarness harness;
  FillInWindowController controller{harness.services()};

  void show(const Snippet& snippet, FolderColor color) {
    controller.show(
        snippet, color, [] { return QString(); }, [](const QMap<QString, QString>&) {}, [] {});
  }
};

QWidget* window() {
  return QApplication::activeWindow();
}

Snippet letter() {
  Snippet snippet;
  snippet.title = u"Meeting invitation"_s;
  snippet.trigger = u";meet"_s;
  snippet.replacement =
      u"Dear {{field:Name:required}},\n\nwould {{dropdown:Day:Monday,Tuesday,Thursday}} at "
      u"{{field:Time:10:30}} suit you{{?:Place}} in the small meeting room on the third floor"
      u"{{/?}}? I have noted {{date:+7d}} as the latest date.\n\n{{textarea:Remarks}}\n\n"
      u"Kind regards, {{date:long}}"_s;
  snippet.replacement.replace(u"{{field:Time:10:30}}"_s, u"{{field:Time:half past ten}}"_s);
  return snippet;
}

std::shared_ptr<void> openLetter() {
  auto stage = std::make_shared<FillInStage>();
  stage->harness.fieldDefaults.replaceAll({{u"Time"_s, u"a quarter past nine"_s}});
  stage->show(letter(), FolderColor::blue);
  return stage;
}

// As a user has begun to fill it in.
void fillInLetter() {
  auto& name = named<QLineEdit>(*window(), u"Name"_s);
  name.setFocus();
  QTest::keyClicks(&name, u"Ada Lovelace"_s);
}

std::shared_ptr<void> openBare() {
  auto stage = std::make_shared<FillInStage>();
  Snippet snippet;
  snippet.title = u"Signature"_s;
  snippet.trigger = u"sig(?<n>\\d+)"_s;
  snippet.isRegexTrigger = true;
  snippet.replacement = u"Kind regards\n{{clipboard}}"_s;
  stage->show(snippet, FolderColor::orange);
  return stage;
}

// Whatever a library can hold that a window would rather not.
std::shared_ptr<void> openOdd() {
  auto stage = std::make_shared<FillInStage>();
  Snippet snippet;
  snippet.title = u"\U0001F4E6 <b>Order</b> & more"_s;
  snippet.trigger = u";a trigger that is rather longer than anybody would want to type"_s;
  snippet.replacement =
      u"{{field:<b>Bold</b> & plain:required}} {{field:"_s +
      u"A name without an end "_s.repeated(40) +
      u"}} {{field:\u05E9\u05DC\u05D5\u05DD \u05E2\u05D5\u05DC\u05DD:\u05E9\u05DC\u05D5\u05DD}} "
      u"{{dropdown:\U0001F3A8 Colour:red,green}} {{?:"_s +
      u"A section without an end "_s.repeated(40) + u"}}"_s + u"nospace"_s.repeated(40) +
      u"{{/?}}"_s;
  stage->show(snippet, FolderColor::pink);
  return stage;
}

void scrollDown() {
  QScrollBar* const bar = window()->findChild<QScrollArea*>()->verticalScrollBar();
  bar->setValue(bar->maximum());
}

}  // namespace

QList<ScreenScene> fillInScenes() {
  return {
      {u"fill-in"_s, openLetter, fillInLetter},
      {u"fill-in-empty"_s, openBare},
      {u"fill-in-odd"_s, openOdd},
      {u"fill-in-scrolled"_s, openOdd, scrollDown},
  };
}

}  // namespace zarvy
