#include <memory>

#include <QApplication>
#include <QLabel>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include "support/QtPrinters.h"
#include "ui/screenshots/DesktopTheme.h"
#include "ui/style/ToneKeeper.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr Tone quiet{TextColor::secondary, lettering::caption};

class Toned : public testing::Test {
 protected:
  Toned() { QApplication::setPalette(desktopPalette(u"light"_s)); }
  ~Toned() override {
    QApplication::setPalette(m_before);
    QApplication::setFont(m_fontBefore);
  }

  static QColor quietColorIn(const QPalette& palette) {
    return secondaryColor(palette, activeColor(palette, QPalette::Window));
  }

  static QColor colorOf(const QWidget& widget) {
    return activeColor(widget.palette(), QPalette::WindowText);
  }

  const QPalette m_before = QApplication::palette();
  const QFont m_fontBefore = QApplication::font();
};

TEST_F(Toned, FollowTheDesktop) {
  QWidget window;
  QLabel* const label = inTone(new QLabel(u"text"_s, &window), quiet);
  for (const QString& theme : {u"dark"_s, u"light"_s}) {
    QApplication::setPalette(desktopPalette(theme));
    QApplication::processEvents();
    EXPECT_EQ(colorOf(*label), quietColorIn(QApplication::palette())) << theme.toStdString();
  }
  QFont font = QApplication::font();
  font.setPixelSize(100);
  QApplication::setFont(font);
  QApplication::processEvents();
  EXPECT_EQ(label->font().pixelSize(), 85);
}

TEST_F(Toned, MayBeWindowsThemselves) {
  const auto label = std::make_unique<QLabel>(u"text"_s);
  inTone(label.get(), quiet);
  EXPECT_EQ(colorOf(*label), quietColorIn(QApplication::palette()));
  QApplication::setPalette(desktopPalette(u"dark"_s));
  QApplication::processEvents();
  EXPECT_EQ(colorOf(*label), quietColorIn(QApplication::palette()));
  QFont font = QApplication::font();
  font.setPixelSize(100);
  QApplication::setFont(font);
  QApplication::processEvents();
  EXPECT_EQ(label->font().pixelSize(), 85);
}

TEST_F(Toned, FollowTheirNewParent) {
  QWidget bright;
  QWidget dim;
  dim.setPalette(desktopPalette(u"dark"_s));
  auto label = std::make_unique<QLabel>(u"text"_s);
  inTone(label.get(), quiet);
  label->setParent(&dim);
  EXPECT_EQ(colorOf(*label), quietColorIn(dim.palette()));
  label->setParent(&bright);
  EXPECT_EQ(colorOf(*label), quietColorIn(bright.palette()));

  dim.setPalette(desktopPalette(u"light"_s));
  bright.setPalette(desktopPalette(u"dark"_s));
  EXPECT_EQ(colorOf(*label), quietColorIn(bright.palette())) << "the one it is in now";
  label->setParent(nullptr);
  EXPECT_EQ(colorOf(*label), quietColorIn(QApplication::palette()));
}

TEST_F(Toned, OutliveAParentThatTheyHaveLeft) {
  auto first = std::make_unique<QWidget>();
  QWidget second;
  QLabel* const label = inTone(new QLabel(u"text"_s, first.get()), quiet);
  label->setParent(&second);
  first.reset();
  second.setPalette(desktopPalette(u"dark"_s));
  EXPECT_EQ(colorOf(*label), quietColorIn(second.palette()));
}

TEST_F(Toned, LookDisabledWhileTheyAre) {
  QWidget window;
  QLabel plain(u"text"_s, &window);
  QLabel* const label = inTone(new QLabel(u"text"_s, &window), quiet);
  window.setEnabled(false);
  EXPECT_EQ(label->palette().color(QPalette::Disabled, QPalette::WindowText),
            plain.palette().color(QPalette::Disabled, QPalette::WindowText));
  window.setEnabled(true);
  EXPECT_EQ(label->palette().color(QPalette::WindowText), quietColorIn(QApplication::palette()));
}

}  // namespace
}  // namespace zarvy
