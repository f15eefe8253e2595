#include <QApplication>

#include <gtest/gtest.h>

#include "support/QtPrinters.h"
#include "ui/controls/SmallButton.h"
#include "ui/controls/TintedButton.h"
#include "ui/screenshots/DesktopTheme.h"
#include "ui/style/Tones.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

using Tint = TintedButton::Tint;

constexpr int lightening = 125;  // percent, as styles draw a button

QColor colorOf(const QWidget& widget, QPalette::ColorRole role,
               QPalette::ColorGroup group = QPalette::Active) {
  return widget.palette().color(group, role);
}

class Buttons : public testing::Test {
 protected:
  ~Buttons() override { QApplication::setPalette(m_before); }

  static void turnTo(const QString& theme) {
    QApplication::setPalette(desktopPalette(theme));
    QApplication::processEvents();
  }

  const QPalette m_before = QApplication::palette();
  QWidget m_window;
};

TEST_F(Buttons, SayInColorWhatTheyDoAndCanBeRead) {
  for (const Tint tint : {Tint::prominent, Tint::destructive, Tint::prominentDestructive}) {
    const TintedButton button(tint, u"Do it"_s, &m_window);
    for (const QString& theme : {u"light"_s, u"dark"_s}) {
      turnTo(theme);
      const QColor text = colorOf(button, QPalette::ButtonText);
      const QColor ground = colorOf(button, QPalette::Button);
      const bool isUsual = text == colorOf(m_window, QPalette::ButtonText) &&
                           ground == colorOf(m_window, QPalette::Button);
      EXPECT_FALSE(isUsual) << static_cast<int>(tint);
      EXPECT_GE(contrastBetween(text, ground), textContrast) << static_cast<int>(tint);
      EXPECT_GE(contrastBetween(text, ground.lighter(lightening)), textContrast);
    }
  }
}

TEST_F(Buttons, LookAsAnyOtherWhileTheyCannotBePressed) {
  for (const Tint tint : {Tint::prominent, Tint::destructive, Tint::prominentDestructive}) {
    const TintedButton button(tint, u"Do it"_s, &m_window);
    for (const auto role : {QPalette::Button, QPalette::ButtonText}) {
      EXPECT_EQ(colorOf(button, role, QPalette::Disabled),
                colorOf(m_window, role, QPalette::Disabled));
    }
  }
}

TEST_F(Buttons, LoseTheirTint) {
  TintedButton button(Tint::prominent, u"Do it"_s, &m_window);
  button.setTint(Tint::none);
  for (const auto role : {QPalette::Button, QPalette::ButtonText}) {
    EXPECT_EQ(colorOf(button, role), colorOf(m_window, role));
  }
}

TEST_F(Buttons, HaveASymbolInTheColorOfTheirText) {
  TintedButton button(Tint::prominentDestructive, u"Delete"_s, &m_window);
  button.setSymbol(Symbol::circleFill);
  for (const QString& theme : {u"light"_s, u"dark"_s}) {
    turnTo(theme);
    const QImage icon = button.icon().pixmap(QSize(16, 16), 1).toImage();
    EXPECT_EQ(icon.pixel(8, 8), colorOf(button, QPalette::ButtonText).rgb());
    button.setTint(Tint::destructive);
  }
}

TEST_F(Buttons, AreSmallBesideARow) {
  const QPushButton usual(u"Undo"_s, &m_window);
  const QPushButton* const small = smallButton(u"Undo"_s, &m_window);
  EXPECT_LT(small->fontInfo().pointSizeF(), usual.fontInfo().pointSizeF());
  EXPECT_LT(small->sizeHint().height(), usual.sizeHint().height());
}

}  // namespace
}  // namespace zarvy
