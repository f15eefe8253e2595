#include <QTextBlock>

#include "support/QtPrinters.h"
#include "ui/fillin/FillInHarness.h"
#include "ui/fillin/StandaloneFillInForm.h"
#include "ui/preview/PreviewView.h"
#include "ui/screenshots/DesktopTheme.h"
#include "ui/style/Tones.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

class FillInColors : public testing::Test {
 protected:
  ~FillInColors() override { QApplication::setPalette(m_before); }

  void open(const QString& replacement) {
    m_form = std::make_unique<StandaloneFillInForm>(
        FillInHarness::snippet(replacement), FolderColor::blue, m_harness.services(),
        [](const QMap<QString, QString>&) {}, [] {});
    m_form->resize(m_form->sizeHint());
    m_form->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(m_form.get()));
  }

  // What is behind the text of `widget`, which begins further to the right or below.
  [[nodiscard]] QColor groundOf(const QWidget& widget) const {
    const QImage image = m_form->grab().toImage();
    return image.pixelColor(widget.mapTo(m_form.get(), QPoint()) * image.devicePixelRatio());
  }

  const QPalette m_before = QApplication::palette();
  FillInHarness m_harness;
  std::unique_ptr<StandaloneFillInForm> m_form;
};

TEST_F(FillInColors, LetEveryTextBeRead) {
  for (const QString& theme : {u"light"_s, u"dark"_s}) {
    QApplication::setPalette(desktopPalette(theme));
    for (const QString& replacement :
         {u"{{field:A:required}} {{textarea:B}} {{?:C}}content{{/?}}"_s, u"no fields"_s}) {
      open(replacement);
      QList<QWidget*> texts;
      for (QLabel* label : m_form->findChildren<QLabel*>()) texts.append(label);
      for (QCheckBox* box : m_form->findChildren<QCheckBox*>()) texts.append(box);
      EXPECT_GE(texts.size(), 4);
      for (QWidget* text : texts) {
        const QColor color = text->palette().color(QPalette::Active, QPalette::WindowText);
        EXPECT_GE(contrastBetween(color, groundOf(*text)), 4.5)
            << theme.toStdString() << " " << spokenName(*text).toStdString();
      }
    }
  }
}

// Inactive colours are those of a window that has not got the keyboard.
TEST_F(FillInColors, AreNotKeptFromATimeWithoutTheKeyboard) {
  QPalette fading = desktopPalette(u"light"_s);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::Highlight}) {
    fading.setColor(QPalette::Inactive, role, Qt::magenta);
  }
  const auto shown = [this] {
    QList<QColor> colors;
    for (const QLabel* label : m_form->findChildren<QLabel*>()) {
      colors.append(label->palette().color(QPalette::Active, QPalette::WindowText));
    }
    const QTextBlock block = m_form->findChild<PreviewView*>()->document()->begin();
    const QTextCharFormat format = block.begin().fragment().charFormat();
    return colors << format.foreground().color() << format.background().color();
  };
  QApplication::setPalette(desktopPalette(u"light"_s));
  open(u"{{field:A}}"_s);
  const QList<QColor> expected = shown();
  QWidget other;
  other.show();
  other.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
  ASSERT_FALSE(m_form->isActiveWindow());
  QApplication::setPalette(fading);
  QApplication::processEvents();
  EXPECT_EQ(shown(), expected);
}

}  // namespace
}  // namespace zarvy
