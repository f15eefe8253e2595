#include <memory>

#include <QAccessible>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include "support/QtPrinters.h"
#include "ui/controls/Card.h"
#include "ui/controls/GroupedForm.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

QRect placeIn(const QWidget& form, const QWidget& widget) {
  return {widget.mapTo(&form, QPoint()), widget.size()};
}

const QLabel& labelWith(const QWidget& form, const QString& text) {
  for (const QLabel* label : form.findChildren<QLabel*>()) {
    if (label->text() == text) return *label;
  }
  throw std::runtime_error("no label " + text.toStdString());
}

TEST(GroupedForms, HaveTitledSectionsOneUnderTheOther) {
  GroupedForm form;
  FormSection& general = form.addSection(u"General"_s);
  general.addRow(*std::make_unique<QCheckBox>(u"Launch at login"_s).release());
  FormSection& sync = form.addSection(u"Sync"_s);
  form.resize(400, form.sizeHint().height());
  form.show();
  EXPECT_GT(placeIn(form, sync).top(), placeIn(form, general).bottom());
  const auto* const told = QAccessible::queryAccessibleInterface(&general);
  EXPECT_EQ(told->role(), QAccessible::Grouping);
  EXPECT_EQ(told->text(QAccessible::Name), u"General"_s);
}

TEST(GroupedForms, NameTheirControlsAndDescribeThem) {
  GroupedForm form;
  FormSection& section = form.addSection(u"Quick Search"_s);
  auto* const button = std::make_unique<QPushButton>(u"Record"_s).release();
  section.addRow(u"Global Hotkey"_s, *button, u"Press to open snippet search"_s);
  auto* const field = std::make_unique<QLineEdit>().release();
  section.addRow(u"Name"_s, *field);
  form.resize(400, form.sizeHint().height());
  form.show();
  EXPECT_EQ(button->accessibleName(), u"Global Hotkey"_s);
  EXPECT_EQ(button->accessibleDescription(), u"Press to open snippet search"_s);
  EXPECT_EQ(labelWith(form, u"Global Hotkey"_s).buddy(), button);
  const QRect name = placeIn(form, labelWith(form, u"Global Hotkey"_s));
  const QRect caption = placeIn(form, labelWith(form, u"Press to open snippet search"_s));
  EXPECT_GT(caption.top(), name.top());
  EXPECT_GT(placeIn(form, *button).left(), caption.right());
  EXPECT_EQ(labelWith(form, u"Name"_s).buddy(), field);
  EXPECT_TRUE(field->accessibleDescription().isEmpty());
}

TEST(GroupedForms, AreGoneThroughWithTab) {
  GroupedForm form;
  FormSection& section = form.addSection(u"General"_s);
  auto* const first = std::make_unique<QCheckBox>(u"One"_s).release();
  auto* const second = std::make_unique<QCheckBox>(u"Two"_s).release();
  section.addRow(*first);
  form.addSection(u"Sync"_s).addRow(u"Second"_s, *second);
  form.show();
  form.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
  first->setFocus();
  QTest::keyClick(first, Qt::Key_Tab);
  EXPECT_TRUE(second->hasFocus());
}

// The rows of the picture in which a line crosses the middle of the card.
int linesIn(Card& card) {
  QPalette palette(Qt::white);
  palette.setColor(QPalette::WindowText, Qt::black);
  card.setPalette(palette);
  card.resize(300, card.sizeHint().height());
  QImage image(card.size(), QImage::Format_RGB32);
  image.fill(Qt::white);
  card.render(&image, {}, {}, {});
  int lines = 0;
  for (int y = 3; y < image.height() - 3; ++y) {
    lines += image.pixelColor(image.width() / 2, y) == QColor(Qt::white) ? 0 : 1;
  }
  return lines;
}

TEST(Cards, DrawALineBetweenTheRowsThatShow) {
  Card card(nullptr);
  QList<QWidget*> rows;
  for (int index = 0; index < 3; ++index) {
    rows.append(std::make_unique<QWidget>().release());
    rows.last()->setFixedHeight(20);
    card.addRow(*rows.last());
  }
  EXPECT_EQ(linesIn(card), 2);
  rows.at(0)->hide();
  EXPECT_EQ(linesIn(card), 1);
  rows.at(1)->hide();
  EXPECT_EQ(linesIn(card), 0);
  rows.at(0)->show();
  EXPECT_EQ(linesIn(card), 1);
}

}  // namespace
}  // namespace zarvy
