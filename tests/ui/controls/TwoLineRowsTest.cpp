#include <QApplication>
#include <QPainter>
#include <QStringListModel>

#include <gtest/gtest.h>

#include "support/QtPrinters.h"
#include "ui/controls/TwoLineRows.h"
#include "ui/screenshots/DesktopTheme.h"
#include "ui/style/Tones.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

class SomeRows final : public TwoLineRows {
 public:
  SomeRows(TwoLineRow row, const Look& look) : TwoLineRows(look, nullptr), m_row(std::move(row)) {}

 protected:
  [[nodiscard]] TwoLineRow rowAt(const QModelIndex& /*index*/) const override { return m_row; }

 private:
  const TwoLineRow m_row;
};

constexpr int width = 400;
constexpr int height = 50;

QStyleOptionViewItem optionFor(const QPalette& palette) {
  QStyleOptionViewItem option;
  option.rect = QRect(0, 0, width, height);
  option.palette = palette;
  option.font = QApplication::font();
  return option;
}

QImage drawn(const TwoLineRow& row, const QPalette& palette) {
  QImage image(width, height, QImage::Format_RGB32);
  image.fill(palette.color(QPalette::Window));
  QPainter painter(&image);
  const QStringListModel model({u"one"_s});
  SomeRows(row, {}).paint(&painter, optionFor(palette), model.index(0));
  return image;
}

bool isInked(const QImage& image, const QRect& area, const QColor& ground) {
  for (int y = area.top(); y <= area.bottom(); ++y) {
    for (int x = area.left(); x <= area.right(); ++x) {
      if (image.pixelColor(x, y) != ground) return true;
    }
  }
  return false;
}

TEST(TwoLineRowsDelegates, ShowADotInFrontAndALabelAtTheEndWhereThereAreSuch) {
  for (const QString& theme : {u"light"_s, u"dark"_s}) {
    const QPalette palette = desktopPalette(theme);
    const QColor ground = palette.color(QPalette::Window);
    const QRect front(18, 0, 8, height);
    const QRect end(width - 100, 0, 82, height);
    const QImage bare = drawn({.title = {}, .detail = {}}, palette);
    EXPECT_FALSE(isInked(bare, front, ground));
    EXPECT_FALSE(isInked(bare, end, ground));
    const QImage dotted = drawn({.title = {}, .detail = {}, .dot = SystemColor::teal}, palette);
    EXPECT_EQ(dotted.pixelColor(22, 25), systemColor(SystemColor::teal, palette));
    const QImage labelled = drawn(
        {.title = {}, .detail = {}, .label = FolderLabel{u"Work"_s, SystemColor::teal}}, palette);
    EXPECT_TRUE(isInked(labelled, end, ground));
    EXPECT_FALSE(isInked(labelled, {width - 17, 0, 17, height}, ground)) << "beyond the row";
  }
}

TEST(TwoLineRowsDelegates, CutATitleShortInFrontOfTheLabel) {
  const QPalette palette = desktopPalette(u"light"_s);
  const FolderLabel label{u"Work"_s, SystemColor::teal};
  const QImage with = drawn({.title = u"m"_s.repeated(200), .detail = {}, .label = label}, palette);
  const int labelWidth = label.sizeHint(QApplication::font()).width();
  const QRect gap(width - 18 - labelWidth - 8, 0, 6, height);
  EXPECT_FALSE(isInked(with, gap, palette.color(QPalette::Window)));
}

TEST(TwoLineRowsDelegates, LeaveALongLabelHalfOfTheRow) {
  const QPalette palette = desktopPalette(u"light"_s);
  const QImage image =
      drawn({.title = u"m"_s.repeated(200),
             .detail = {},
             .label = FolderLabel{u"a name without an end "_s.repeated(20), SystemColor::teal}},
            palette);
  EXPECT_TRUE(isInked(image, {18, 6, 100, 14}, palette.color(QPalette::Window)));
}

// Where that is not the window, what is legible on it differs.
TEST(TwoLineRowsDelegates, WriteOnTheGroundThatTheListIsOn) {
  QPalette palette = desktopPalette(u"light"_s);
  palette.setColor(QPalette::Base, QColor(0x60, 0x60, 0x60));
  palette.setColor(QPalette::WindowText, Qt::white);
  QFont thick = QApplication::font();
  thick.setPixelSize(60);
  QStyleOptionViewItem option = optionFor(palette);
  option.font = thick;
  option.rect.setHeight(150);
  QImage image(option.rect.size(), QImage::Format_RGB32);
  image.fill(palette.color(QPalette::Base));
  QPainter painter(&image);
  const QStringListModel model({u"one"_s});
  const SomeRows rows({.title = {}, .detail = u"HHH"_s}, {.ground = QPalette::Base});
  rows.paint(&painter, option, model.index(0));
  painter.end();
  double strongest = 1;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      strongest = std::max(strongest,
                           contrastBetween(image.pixelColor(x, y), palette.color(QPalette::Base)));
    }
  }
  EXPECT_GE(strongest, textContrast);
}

TEST(TwoLineRowsDelegates, AreAsHighAsTheirFonts) {
  const QStringListModel model({u"one"_s});
  const QStyleOptionViewItem option = optionFor(desktopPalette(u"light"_s));
  const SomeRows usual({}, {});
  const SomeRows large({}, {.title = lettering::search, .detail = lettering::trigger});
  EXPECT_GT(large.sizeHint(option, model.index(0)).height(),
            usual.sizeHint(option, model.index(0)).height());
}

}  // namespace
}  // namespace zarvy
