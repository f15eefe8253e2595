#include <memory>

#include <QApplication>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

#include <gtest/gtest.h>

#include "support/QtPrinters.h"
#include "ui/controls/EmptyState.h"
#include "ui/controls/FolderLabel.h"
#include "ui/controls/SymbolLabel.h"
#include "ui/controls/SymbolView.h"
#include "ui/controls/WrappedLabel.h"
#include "ui/screenshots/DesktopTheme.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

// What `widget` draws itself, on white.
QImage drawn(QWidget& widget) {
  QImage image(widget.size(), QImage::Format_RGB32);
  image.fill(Qt::white);
  widget.render(&image, {}, {}, QWidget::DrawChildren);
  return image;
}

// The columns that something is drawn in, from the first to the last.
std::pair<int, int> inkedColumns(const QImage& image) {
  int first = image.width();
  int last = -1;
  for (int x = 0; x < image.width(); ++x) {
    for (int y = 0; y < image.height(); ++y) {
      if (image.pixelColor(x, y) == QColor(Qt::white)) continue;
      first = std::min(first, x);
      last = x;
    }
  }
  return {first, last};
}

QStringList shownTexts(const QWidget& window) {
  QStringList texts;
  for (const QLabel* label : window.findChildren<QLabel*>()) {
    if (label->isVisibleTo(&window)) texts.append(label->text());
  }
  return texts;
}

TEST(WrappedLabels, AreAlignedAsTheyAreTold) {
  WrappedLabel label(u"ab"_s, nullptr);
  label.resize(200, 30);
  EXPECT_LT(inkedColumns(drawn(label)).second, 100);
  label.setAlignment(Qt::AlignHCenter);
  const auto [first, last] = inkedColumns(drawn(label));
  EXPECT_NEAR((first + last) / 2.0, 100, 3);
}

TEST(EmptyStates, SayWhyThereIsNothing) {
  EmptyState nothing(Symbol::globe, 48, nullptr);
  nothing.setTexts(u"No Global Variables"_s, u"Use them in <b>any</b> snippet."_s);
  EXPECT_EQ(shownTexts(nothing),
            (QStringList{u"No Global Variables"_s, u"Use them in <b>any</b> snippet."_s}));
  nothing.setTexts({}, u"No snippets found"_s);
  EXPECT_EQ(shownTexts(nothing), QStringList{u"No snippets found"_s});
  EXPECT_EQ(nothing.findChild<SymbolView*>()->size(), QSize(48, 48));
}

TEST(EmptyStates, TakeTextsOfAnyLengthInAnyRoom) {
  EmptyState nothing(Symbol::magnifyingglass, 36, nullptr);
  nothing.setTexts(u"No Results"_s, u"No variables match \"%1\""_s.arg(u"x"_s.repeated(400)));
  nothing.resize(300, 400);
  nothing.show();
  EXPECT_EQ(nothing.width(), 300);
  for (const QLabel* label : nothing.findChildren<QLabel*>()) {
    EXPECT_GE(label->height(), label->heightForWidth(label->width()));
    EXPECT_TRUE(nothing.rect().contains(label->geometry()));
  }
}

TEST(EmptyStates, OfferWhatToDoAboutItBelow) {
  EmptyState nothing(Symbol::globe, 48, nullptr);
  nothing.setTexts(u"No Global Variables"_s, u"There are none."_s);
  auto* const button = std::make_unique<QPushButton>(u"Add Your First Variable"_s).release();
  nothing.add(*button);
  nothing.resize(400, 400);
  nothing.show();
  for (const QLabel* label : nothing.findChildren<QLabel*>()) {
    EXPECT_GT(button->geometry().top(), label->geometry().bottom());
  }
  EXPECT_NEAR(button->geometry().center().x(), 200, 2);
}

TEST(SymbolLabels, HaveASymbolInFront) {
  SymbolLabel label(Symbol::checkmarkCircleFill, SystemColor::green, u"Synced"_s,
                    {TextColor::secondary}, nullptr);
  label.resize(label.sizeHint());
  label.show();
  EXPECT_EQ(shownTexts(label), QStringList{u"Synced"_s});
  const auto* const symbol = label.findChild<SymbolView*>();
  EXPECT_LT(symbol->geometry().right(), label.findChild<QLabel*>()->geometry().left());
}

TEST(SymbolViews, AreFaintWhileTheyAreDisabled) {
  const QPalette before = QApplication::palette();
  QApplication::setPalette(desktopPalette(u"light"_s));
  {
    SymbolView symbol(Symbol::circleFill, 16, nullptr, SystemColor::indigo);
    EXPECT_EQ(drawn(symbol).pixelColor(8, 8),
              systemColor(SystemColor::indigo, QApplication::palette()));
    symbol.setEnabled(false);
    EXPECT_NE(drawn(symbol).pixelColor(8, 8),
              systemColor(SystemColor::indigo, QApplication::palette()));
  }
  QApplication::setPalette(before);
}

TEST(FolderLabels, TakeTheRoomOfTheirNameAndNotMore) {
  const QFont font = QApplication::font();
  const FolderLabel label{u"Work"_s, SystemColor::purple};
  const FolderLabel longer{u"Work and more of it"_s, SystemColor::purple};
  EXPECT_GT(longer.sizeHint(font).width(), label.sizeHint(font).width());
  EXPECT_EQ(longer.sizeHint(font).height(), label.sizeHint(font).height());
  QImage image(200, 60, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  const QRect area(20, 10, 60, label.sizeHint(font).height());
  longer.draw(painter, area, font, desktopPalette(u"light"_s), Qt::white);
  painter.end();
  const auto [first, last] = inkedColumns(image);
  EXPECT_GE(first, area.left());
  EXPECT_LE(last, area.right());
}

}  // namespace
}  // namespace zarvy
