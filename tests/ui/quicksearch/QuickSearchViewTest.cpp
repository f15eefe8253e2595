#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPalette>
#include <QScopeGuard>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include "support/QtPrinters.h"
#include "ui/controls/Keycap.h"
#include "ui/quicksearch/QuickSearchList.h"
#include "ui/quicksearch/QuickSearchView.h"
#include "ui/quicksearch/SearchedLibrary.h"
#include "ui/screenshots/DesktopTheme.h"
#include "ui/style/SystemColors.h"
#include "ui/style/Tones.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

QList<Snippet> numbered(int count) {
  QList<Snippet> snippets;
  for (int index = 0; index < count; ++index) {
    snippets.append(
        searchedSnippet(u"Title "_s + QString::number(index), u";t"_s + QString::number(index)));
  }
  return snippets;
}

class QuickSearchViews : public testing::Test {
 protected:
  void open(const QList<Snippet>& snippets, const QList<Folder>& folders = {}) {
    m_view = std::make_unique<QuickSearchView>(
        snippets, folders, [this](const Snippet& snippet) { m_chosen.append(snippet.title); },
        [this] { ++m_dismissals; });
    m_view->setFixedSize(600, 370);
    m_view->show();
    m_view->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_view.get()));
    m_view->focusSearch();
  }

  [[nodiscard]] QLineEdit& field() const { return *m_view->findChild<QLineEdit*>(); }
  [[nodiscard]] QuickSearchList& list() const { return *m_view->findChild<QuickSearchList*>(); }
  void press(Qt::Key key) const { QTest::keyClick(&field(), key); }
  void type(const QString& text) const { QTest::keyClicks(&field(), text); }

  [[nodiscard]] bool isConsumed(Qt::Key key) const {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(m_view.get(), &event);
    return event.isAccepted();
  }

  // The row that the list shows as the selected one.
  [[nodiscard]] int shownRow() const {
    const QModelIndexList rows = list().selectionModel()->selectedIndexes();
    return rows.size() == 1 ? rows.first().row() : -1;
  }

  [[nodiscard]] QStringList visibleTexts() const {
    QStringList texts;
    for (const QLabel* label : m_view->findChildren<QLabel*>()) {
      if (label->isVisible()) texts.append(label->text());
    }
    return texts;
  }

  std::unique_ptr<QuickSearchView> m_view;
  QStringList m_chosen;
  int m_dismissals = 0;
};

TEST_F(QuickSearchViews, BeginWithNothingTypedAndTheFirstRow) {
  open(numbered(3));
  EXPECT_TRUE(m_view->isSearchFocused());
  EXPECT_EQ(m_view->searchText(), QString());
  EXPECT_EQ(field().placeholderText(), u"Search snippets..."_s);
  EXPECT_EQ(m_view->selectedIndex(), 0);
  EXPECT_EQ(shownRow(), 0);
  EXPECT_EQ(list().model()->rowCount(), 3);
}

TEST_F(QuickSearchViews, BeginAtTheTop) {
  open(numbered(50));
  EXPECT_EQ(list().verticalScrollBar()->value(), 0);
  EXPECT_GT(list().verticalScrollBar()->maximum(), 0);
}

TEST_F(QuickSearchViews, GoUpAndDownWithoutGoingRound) {
  open(numbered(3));
  const QSignalSpy changes(m_view.get(), &QuickSearchView::selectedIndexChanged);
  press(Qt::Key_Up);
  EXPECT_EQ(m_view->selectedIndex(), 0);
  EXPECT_EQ(changes.count(), 0);
  press(Qt::Key_Down);
  press(Qt::Key_Down);
  EXPECT_EQ(m_view->selectedIndex(), 2);
  EXPECT_EQ(changes.count(), 2);
  press(Qt::Key_Down);
  EXPECT_EQ(m_view->selectedIndex(), 2);
  EXPECT_EQ(shownRow(), 2);
  EXPECT_EQ(changes.count(), 2);
  press(Qt::Key_Up);
  EXPECT_EQ(m_view->selectedIndex(), 1);
  EXPECT_EQ(shownRow(), 1);
  EXPECT_TRUE(m_view->isSearchFocused());
}

TEST_F(QuickSearchViews, KeepTheArrowsAndEscapeToThemselves) {
  open({});
  for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Escape}) {
    EXPECT_TRUE(isConsumed(key)) << key;
  }
  EXPECT_FALSE(isConsumed(Qt::Key_F5));
  EXPECT_EQ(m_view->selectedIndex(), 0);
  EXPECT_EQ(m_dismissals, 1);
}

TEST_F(QuickSearchViews, ChooseTheSelectedRowOnReturn) {
  open(numbered(3));
  press(Qt::Key_Down);
  press(Qt::Key_Return);
  EXPECT_EQ(m_chosen, QStringList{u"Title 1"_s});
  press(Qt::Key_Enter);
  EXPECT_EQ(m_chosen, (QStringList{u"Title 1"_s, u"Title 1"_s})) << "on the number pad too";
  EXPECT_EQ(m_dismissals, 0);
}

TEST_F(QuickSearchViews, ChooseAmongWhatWasFound) {
  open(libraryOf({{u"Signature"_s, u";x"_s}, {u"Other"_s, u";o"_s}, {u"sig"_s, u";y"_s}}));
  type(u"sig"_s);
  press(Qt::Key_Return);
  EXPECT_EQ(m_chosen, QStringList{u"sig"_s});
}

TEST_F(QuickSearchViews, DoNothingOnReturnWhereNothingIsFound) {
  open(numbered(3));
  type(u"zebra"_s);
  press(Qt::Key_Return);
  press(Qt::Key_Down);
  press(Qt::Key_Up);
  press(Qt::Key_Return);
  EXPECT_EQ(m_chosen, QStringList());
  EXPECT_EQ(m_view->selectedIndex(), 0);
  EXPECT_EQ(shownRow(), -1);
}

TEST_F(QuickSearchViews, DismissOnEscape) {
  open(numbered(3));
  type(u"1"_s);
  press(Qt::Key_Escape);
  EXPECT_EQ(m_dismissals, 1);
  EXPECT_EQ(m_chosen, QStringList());
}

TEST_F(QuickSearchViews, SelectTheFirstRowAtEachChangeOfTheText) {
  open(numbered(30));
  const auto goDown = [this] {
    for (int step = 0; step < 5; ++step) press(Qt::Key_Down);
    EXPECT_EQ(m_view->selectedIndex(), 5);
  };
  goDown();
  type(u"t"_s);
  EXPECT_EQ(m_view->selectedIndex(), 0);
  EXPECT_EQ(shownRow(), 0);
  EXPECT_EQ(list().verticalScrollBar()->value(), 0);
  goDown();
  press(Qt::Key_Backspace);
  EXPECT_EQ(m_view->selectedIndex(), 0);
  EXPECT_EQ(shownRow(), 0);
}

TEST_F(QuickSearchViews, KeepTheRowWhereOnlyTheCaretMoves) {
  open(numbered(3));
  type(u"t"_s);
  press(Qt::Key_Down);
  press(Qt::Key_Left);
  press(Qt::Key_Home);
  EXPECT_EQ(m_view->selectedIndex(), 1);
}

TEST_F(QuickSearchViews, ScrollTheSelectedRowToTheMiddle) {
  open(numbered(50));
  const auto distance = [this] {
    const QRect row = list().visualRect(list().model()->index(m_view->selectedIndex(), 0));
    return std::abs(row.center().y() - list().viewport()->rect().center().y());
  };
  press(Qt::Key_Down);
  EXPECT_EQ(list().verticalScrollBar()->value(), 0) << "the end allows no more";
  for (int step = 0; step < 20; ++step) press(Qt::Key_Down);
  EXPECT_LE(distance(), 1);
  press(Qt::Key_Up);
  EXPECT_LE(distance(), 1);
  for (int step = 0; step < 40; ++step) press(Qt::Key_Down);
  EXPECT_EQ(m_view->selectedIndex(), 49);
  EXPECT_EQ(list().verticalScrollBar()->value(), list().verticalScrollBar()->maximum());
}

TEST_F(QuickSearchViews, ChooseARowThatIsClicked) {
  open(numbered(10));
  const auto place = [this](int row) {
    return list().visualRect(list().model()->index(row, 0)).center();
  };
  QTest::mouseClick(list().viewport(), Qt::LeftButton, Qt::NoModifier, place(3));
  EXPECT_EQ(m_chosen, QStringList{u"Title 3"_s});
  QTest::mouseClick(list().viewport(), Qt::RightButton, Qt::NoModifier, place(2));
  EXPECT_EQ(m_chosen.size(), 1);
  QTest::mousePress(list().viewport(), Qt::LeftButton, Qt::NoModifier, place(4));
  EXPECT_EQ(shownRow(), 0) << "only the keyboard moves the selection";
  QTest::mouseRelease(list().viewport(), Qt::LeftButton, Qt::NoModifier, place(1));
  EXPECT_EQ(m_chosen.size(), 1) << "let go over another row";
  EXPECT_TRUE(m_view->isSearchFocused());
}

TEST_F(QuickSearchViews, IgnoreAClickBelowTheLastRow) {
  open(numbered(2));
  QTest::mouseClick(list().viewport(), Qt::LeftButton, Qt::NoModifier,
                    list().viewport()->rect().bottomLeft());
  EXPECT_EQ(m_chosen, QStringList());
}

TEST_F(QuickSearchViews, CountInTheFooter) {
  open(numbered(12));
  EXPECT_TRUE(visibleTexts().contains(u"12 snippets"_s));
  type(u"title 1"_s);
  EXPECT_TRUE(visibleTexts().contains(u"3 of 12 snippets"_s));
  field().clear();
  EXPECT_TRUE(visibleTexts().contains(u"12 snippets"_s));
  type(u" "_s);
  EXPECT_TRUE(visibleTexts().contains(u"12 of 12 snippets"_s));
  type(u"zebra"_s);
  EXPECT_TRUE(visibleTexts().contains(u"0 of 12 snippets"_s));
}

TEST_F(QuickSearchViews, CountOneSnippetAsTheyCountMany) {
  open(numbered(1));
  EXPECT_TRUE(visibleTexts().contains(u"1 snippets"_s));
}

TEST_F(QuickSearchViews, HintAtTheKeysInTheFooter) {
  open(numbered(1));
  QStringList keys;
  for (const Keycap* key : m_view->findChildren<Keycap*>()) keys.append(key->accessibleName());
  EXPECT_EQ(keys, (QStringList{u"up arrow"_s, u"down arrow"_s, u"return"_s, u"esc"_s}));
  EXPECT_EQ(visibleTexts(), (QStringList{u"1 snippets"_s, u"navigate"_s, u"expand"_s, u"close"_s}));
}

TEST_F(QuickSearchViews, SayThatNothingWasFound) {
  open(numbered(3));
  EXPECT_FALSE(visibleTexts().contains(u"No snippets found"_s));
  type(u"zebra"_s);
  EXPECT_TRUE(visibleTexts().contains(u"No snippets found"_s));
  EXPECT_FALSE(list().isVisible());
  field().clear();
  EXPECT_FALSE(visibleTexts().contains(u"No snippets found"_s));
  EXPECT_TRUE(list().isVisible());
}

TEST_F(QuickSearchViews, SayThatNothingWasFoundInAnEmptyLibrary) {
  open({});
  EXPECT_TRUE(visibleTexts().contains(u"No snippets found"_s));
  EXPECT_TRUE(visibleTexts().contains(u"0 snippets"_s));
  press(Qt::Key_Return);
  EXPECT_EQ(m_chosen, QStringList());
}

TEST_F(QuickSearchViews, ReportEachChangeOfTheText) {
  open(numbered(3));
  const QSignalSpy changes(m_view.get(), &QuickSearchView::searchTextChanged);
  type(u"ab"_s);
  EXPECT_EQ(changes.count(), 2);
  EXPECT_EQ(m_view->searchText(), u"ab"_s);
}

TEST_F(QuickSearchViews, KeepTheKeyboardInTheSearchField) {
  open(numbered(3));
  press(Qt::Key_Tab);
  EXPECT_TRUE(m_view->isSearchFocused());
  press(Qt::Key_Backtab);
  EXPECT_TRUE(m_view->isSearchFocused());
}

TEST_F(QuickSearchViews, NameTheirPartsForAScreenReader) {
  open(libraryOf({{u"<i>Hello</i>"_s, u";hi"_s}}));
  EXPECT_EQ(field().accessibleName(), u"Search snippets"_s);
  EXPECT_EQ(list().accessibleName(), u"Snippets"_s);
  QAccessibleInterface* const rows = QAccessible::queryAccessibleInterface(&list());
  ASSERT_NE(rows, nullptr);
  ASSERT_EQ(rows->childCount(), 1);
  EXPECT_EQ(rows->child(0)->text(QAccessible::Name), u"<i>Hello</i>, ;hi"_s);
  EXPECT_TRUE(rows->child(0)->state().selected);
}

TEST_F(QuickSearchViews, FollowTheFontOfTheDesktop) {
  open(numbered(3));
  const QFont font = QApplication::font();
  const double field13 = field().font().pointSizeF();
  const int row = list().sizeHintForRow(0);
  QFont larger = font;
  larger.setPointSizeF(font.pointSizeF() * 2);
  QApplication::setFont(larger);
  QApplication::processEvents();
  EXPECT_DOUBLE_EQ(field().font().pointSizeF(), field13 * 2);
  EXPECT_GT(list().sizeHintForRow(0), row);
  QApplication::setFont(font);
  QApplication::processEvents();
  EXPECT_DOUBLE_EQ(field().font().pointSizeF(), field13);
}

// The colour that stands for nothing else at this place of a row.
QColor colorIn(const QImage& image, const QPoint& place) {
  return image.pixelColor(place * image.devicePixelRatio());
}

QImage paintedRow(const QuickSearchModel& model, const QPalette& palette, bool isSelected,
                  const QFont& font = QApplication::font(), int height = 50) {
  QImage image(600, height, QImage::Format_ARGB32_Premultiplied);
  image.fill(palette.color(QPalette::Window));
  QPainter painter(&image);
  QStyleOptionViewItem option;
  option.rect = image.rect();
  option.palette = palette;
  option.font = font;
  option.state.setFlag(QStyle::State_Selected, isSelected);
  const QuickSearchRow row;
  row.paint(&painter, option, model.index(0, 0));
  return image;
}

TEST(QuickSearchRows, ShowTheColourOfTheFolderAndTheSelection) {
  const Folder folder = searchedFolder(FolderColor::purple);
  Snippet snippet = searchedSnippet(u"Title"_s, u";t"_s);
  snippet.folderID = folder.id;
  const QuickSearchModel model({snippet}, {folder});
  for (const QColor& window : {QColor(0xEF, 0xF0, 0xF1), QColor(0x2A, 0x2E, 0x32)}) {
    const QPalette palette(window);
    const QImage plain = paintedRow(model, palette, false);
    const QImage selected = paintedRow(model, palette, true);
    const QPoint circle(22, 25);
    const QPoint background(580, 25);
    const QColor purple = systemColor(SystemColor::purple, palette);
    EXPECT_EQ(colorIn(plain, circle), purple);
    EXPECT_EQ(colorIn(selected, circle), purple);
    EXPECT_EQ(colorIn(plain, background), window);
    EXPECT_NE(colorIn(selected, background), window);
    EXPECT_NE(colorIn(selected, background), palette.color(QPalette::Highlight)) << "faint";
  }
}

// Of what is drawn in `area` on `ground`. Thin strokes never show their colour, thick ones do.
double strongestContrast(const QImage& image, const QRect& area, const QColor& ground) {
  double strongest = 1;
  for (int y = area.top(); y <= area.bottom(); ++y) {
    for (int x = area.left(); x <= area.right(); ++x) {
      strongest = std::max(strongest, contrastBetween(image.pixelColor(x, y), ground));
    }
  }
  return strongest;
}

QFont thickFont() {
  QFont font = QApplication::font();
  font.setPixelSize(90);
  return font;
}

TEST(QuickSearchRows, ShowTheTriggerSoThatItCanBeRead) {
  const QuickSearchModel model({searchedSnippet(QString(), u"HHH"_s)}, {});
  for (const QString& theme : {u"light"_s, u"dark"_s}) {
    for (const bool isSelected : {false, true}) {
      const QImage row = paintedRow(model, desktopPalette(theme), isSelected, thickFont(), 260);
      const QColor ground = colorIn(row, {580, 130});
      EXPECT_GE(strongestContrast(row, {40, 100, 500, 160}, ground), 4.5)
          << theme.toStdString() << isSelected;
    }
  }
}

TEST(QuickSearchHints, ShowTheKeysSoThatTheyCanBeRead) {
  for (const QString& theme : {u"light"_s, u"dark"_s}) {
    Keycap key(u"HH"_s, std::nullopt, nullptr);
    key.setPalette(desktopPalette(theme));
    key.setFont(thickFont());
    key.resize(key.sizeHint());
    QImage image(key.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(key.palette().color(QPalette::Window));
    key.render(&image, {}, {}, QWidget::DrawChildren);
    const QColor ground = colorIn(image, {image.width() / 2, 2});
    EXPECT_GE(strongestContrast(image, image.rect(), ground), 4.5) << theme.toStdString();
  }
}

TEST_F(QuickSearchViews, WriteEverythingSoThatItCanBeRead) {
  const QPalette before = QApplication::palette();
  const auto restored = qScopeGuard([&before] { QApplication::setPalette(before); });
  for (const QString& theme : {u"light"_s, u"dark"_s}) {
    QApplication::setPalette(desktopPalette(theme));
    open({});
    const QImage image = m_view->grab().toImage();
    for (const QLabel* label : m_view->findChildren<QLabel*>()) {
      if (!label->isVisible()) continue;
      const QColor ground = colorIn(image, label->mapTo(m_view.get(), QPoint()));
      EXPECT_GE(contrastBetween(label->palette().color(QPalette::WindowText), ground), 4.5)
          << label->text().toStdString();
    }
  }
}

TEST(QuickSearchRows, DrawTextsThatAWindowWouldRatherNotHave) {
  for (const QString& title :
       {QString(10'000, u'm'), QString(10'000, u'\u200B'), u"\U0001F600"_s.repeated(5'000),
        u"\u05E9\u05DC\u05D5\u05DD "_s.repeated(2'000), u"a\nb\tc\u2028d"_s, QString(),
        QString(QChar(0xD800)), u"<img src=x>&amp;"_s}) {
    const QuickSearchModel model({searchedSnippet(title, title)}, {});
    const QImage row = paintedRow(model, QPalette(QColor(Qt::white)), false);
    EXPECT_EQ(colorIn(row, {595, 15}), QColor(Qt::white)) << "nothing beyond its end";
  }
}

}  // namespace
}  // namespace zarvy
