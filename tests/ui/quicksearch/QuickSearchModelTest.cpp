#include <QAbstractItemModelTester>
#include <QColor>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include "support/QtPrinters.h"
#include "ui/quicksearch/QuickSearchModel.h"
#include "ui/quicksearch/SearchedLibrary.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

QStringList titlesOf(const QuickSearchModel& model) {
  QStringList titles;
  for (int row = 0; row < model.rowCount(); ++row) {
    titles.append(model.index(row, 0).data().toString());
    EXPECT_EQ(model.snippetAt(row).title, titles.last());
  }
  return titles;
}

TEST(QuickSearchModels, KeepTheRulesOfAModel) {
  QuickSearchModel model(libraryOf({{u"One"_s, u";1"_s}, {u"Two"_s, u";2"_s}}), {});
  const QAbstractItemModelTester tester(&model,
                                        QAbstractItemModelTester::FailureReportingMode::Warning);
  for (const QString& text : {u"o"_s, u"on"_s, u"none"_s, u""_s, u";"_s}) {
    model.setSearchText(text);
  }
  EXPECT_EQ(titlesOf(model), (QStringList{u"One"_s, u"Two"_s}));
}

TEST(QuickSearchModels, ShowWhatASearchFinds) {
  QuickSearchModel model(libraryOf({{u"A one"_s, u""_s}, {u"Two"_s, u""_s}, {u"one"_s, u""_s}}),
                         {});
  EXPECT_EQ(titlesOf(model), (QStringList{u"A one"_s, u"Two"_s, u"one"_s}));
  const QSignalSpy resets(&model, &QuickSearchModel::modelReset);
  model.setSearchText(u"ONE"_s);
  EXPECT_EQ(titlesOf(model), (QStringList{u"one"_s, u"A one"_s}));
  EXPECT_EQ(resets.count(), 1);
  EXPECT_EQ(model.snippetCount(), 3);
  model.setSearchText({});
  EXPECT_EQ(titlesOf(model), (QStringList{u"A one"_s, u"Two"_s, u"one"_s}));
}

TEST(QuickSearchModels, TellTitleTriggerAndColourOfTheFolder) {
  const Folder folder = searchedFolder(FolderColor::green);
  Snippet inFolder = searchedSnippet(u"<b>In</b>"_s, u";in"_s);
  inFolder.folderID = folder.id;
  Snippet ofLostFolder = searchedSnippet(u"Lost"_s, u";lost"_s);
  ofLostFolder.folderID = QUuid::createUuid();
  const QuickSearchModel model({inFolder, ofLostFolder, searchedSnippet(u"None"_s, u";none"_s)},
                               {searchedFolder(FolderColor::red), folder});
  const QModelIndex first = model.index(0, 0);
  EXPECT_EQ(first.data().toString(), u"<b>In</b>"_s);
  EXPECT_EQ(first.data(QuickSearchModel::triggerRole).toString(), u";in"_s);
  EXPECT_EQ(first.data(Qt::AccessibleTextRole).toString(), u"<b>In</b>, ;in"_s);
  const auto color = [&model](int row) {
    return model.index(row, 0).data(QuickSearchModel::folderColorRole).value<FolderColor>();
  };
  EXPECT_EQ(color(0), FolderColor::green);
  EXPECT_EQ(color(1), FolderColor::gray);
  EXPECT_EQ(color(2), FolderColor::gray);
}

}  // namespace
}  // namespace zarvy
