#include <QApplication>
#include <QTest>

#include "fakes/FakeWorkspace.h"
#include "fakes/Journal.h"
#include "fakes/ManualScheduler.h"
#include "ui/quicksearch/QuickSearchWindowController.h"
#include "ui/quicksearch/SearchedLibrary.h"
#include "ui/screenshots/ScreenScene.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

struct QuickSearchStage {
  Journal journal;
  FakeWorkspace workspace{journal};
  ManualScheduler scheduler;
  QuickSearchWindowController controller{{scheduler, workspace}};
};

std::shared_ptr<void> open(const QList<Snippet>& snippets, const QList<Folder>& folders) {
  auto stage = std::make_shared<QuickSearchStage>();
  stage->controller.show(snippets, folders, [](const Snippet&) {});
  return stage;
}

void press(Qt::Key key) {
  QTest::keyClick(QApplication::focusWidget(), key);
}

void type(const QString& text) {
  QTest::keyClicks(QApplication::focusWidget(), text);
}

const QList<Folder>& folders() {
  static const QList<Folder> all{
      searchedFolder(FolderColor::blue), searchedFolder(FolderColor::green),
      searchedFolder(FolderColor::orange), searchedFolder(FolderColor::purple)};
  return all;
}

QList<Snippet> everydayLibrary() {
  QList<Snippet> snippets = libraryOf({
      {u"Email signature"_s, u";sig"_s},
      {u"Today's date"_s, u";date"_s},
      {u"Thank you for your email"_s, u";ty"_s},
      {u"Meeting invitation"_s, u";meet"_s},
      {u"Signature of the whole team"_s, u";team"_s},
      {u"Postal address"_s, u";addr"_s},
      {u"Signed letter, formal"_s, u";letter"_s},
      {u"Number of an order"_s, u"ord(?<n>\\d+)"_s},
      {u"Bank account"_s, u";iban"_s},
  });
  const int places[] = {0, 1, 0, 3, 0, 2, 3, -1, 2};
  for (qsizetype index = 0; index < snippets.size(); ++index) {
    const int place = places[index];
    if (place >= 0) snippets[index].folderID = folders().at(place).id;
  }
  return snippets;
}

std::shared_ptr<void> openEveryday() {
  return open(everydayLibrary(), folders());
}

void searchForSignature() {
  type(u"sig"_s);
  press(Qt::Key_Down);
}

std::shared_ptr<void> openLong() {
  QList<Snippet> snippets;
  for (int round = 0; round < 20; ++round) snippets.append(everydayLibrary());
  return open(snippets, folders());
}

void goFarDown() {
  for (int step = 0; step < 40; ++step) press(Qt::Key_Down);
}

// Whatever a library can hold that a panel would rather not.
std::shared_ptr<void> openOddNames() {
  return open(libraryOf({{u"\U0001F4E6 <b>Order</b> &amp; more"_s, u"<i>;order</i>"_s},
                         {u"A title without an end "_s.repeated(450),
                          u";a trigger without an end"_s.repeated(40)},
                         {u"\u05E9\u05DC\u05D5\u05DD \u05E2\u05D5\u05DC\u05DD!"_s,
                          u";\u05E9\u05DC\u05D5\u05DD"_s},
                         {u"Several\nlines\tand a tab"_s, u";lines"_s},
                         {QString(), u";untitled"_s},
                         {u"\u4F60\u597D\uFF0C\u4E16\u754C"_s, u";\u4F60\u597D"_s}}),
              {});
}

}  // namespace

QList<ScreenScene> quickSearchScenes() {
  return {
      {u"quick-search"_s, openEveryday},
      {u"quick-search-found"_s, openEveryday, searchForSignature},
      {u"quick-search-long"_s, openLong, goFarDown},
      {u"quick-search-nothing"_s, openEveryday, [] { type(u"zebra"_s); }},
      {u"quick-search-odd"_s, openOddNames},
  };
}

}  // namespace zarvy
