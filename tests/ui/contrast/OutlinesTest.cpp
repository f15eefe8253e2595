// Every control of a form is to be found by its outline, and shows by it that it has the keyboard.

#include <QApplication>
#include <QCheckBox>
#include <QSplitterHandle>
#include <QStyleFactory>
#include <QStyleOptionButton>
#include <QTest>

#include <gtest/gtest.h>

#include "ui/contrast/RealPalettes.h"
#include "ui/fillin/FillInHarness.h"
#include "ui/fillin/StandaloneFillInForm.h"
#include "ui/preview/PreviewView.h"
#include "ui/style/DesktopColors.h"
#include "ui/style/Tones.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr int leastContrast = 3;  // of what is not text

class Outlines : public testing::TestWithParam<RealPalette> {
 protected:
  Outlines() {
    const QPalette desktop = paletteOf(GetParam());
    QApplication::setPalette(legibleRoles(desktop).resolve(desktop));
    QApplication::setCursorFlashTime(0);
    m_form = std::make_unique<StandaloneFillInForm>(
        FillInHarness::snippet(u"{{field:Name}}{{textarea:Text}}{{dropdown:Day:Mo,Tu}}"
                               "{{?:Section}}content{{/?}}"_s),
        FolderColor::blue, m_harness.services(), [](const QMap<QString, QString>&) {}, [] {});
    m_form->resize(500, 900);
    m_form->show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(m_form.get()));
    named<QCheckBox>(*m_form, u"Section"_s).setChecked(false);
    m_form->setFocus();
  }
  ~Outlines() override { QApplication::setPalette(m_before); }

  [[nodiscard]] QList<QWidget*> controls() const {
    QList<QWidget*> all;
    for (QWidget* widget : m_form->findChildren<QWidget*>()) {
      const bool takesTab = (widget->focusPolicy() & Qt::TabFocus) && widget->isVisible();
      if (takesTab) all.append(widget);
    }
    return all;
  }

  // Where the outline of `control` is, in the form.
  [[nodiscard]] QRect outlineOf(QWidget& control) const {
    const QWidget* outlined = &control;
    QRect area = control.rect();
    if (qobject_cast<QPlainTextEdit*>(&control)) {
      outlined = control.parentWidget();
      area = outlined->rect();
    } else if (qobject_cast<QCheckBox*>(&control)) {
      QStyleOptionButton option;
      option.initFrom(&control);
      area = control.style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, &control);
    }
    return {outlined->mapTo(m_form.get(), area.topLeft()), area.size()};
  }

  [[nodiscard]] QImage picture() const {
    QApplication::processEvents();
    return m_form->grab().toImage();
  }

  const QPalette m_before = QApplication::palette();
  FillInHarness m_harness;
  std::unique_ptr<StandaloneFillInForm> m_form;
};

TEST_P(Outlines, AreThereWithoutTheKeyboard) {
  const QImage image = picture();
  int inputs = 0;
  for (QWidget* control : controls()) {
    const bool isInput = !qobject_cast<PreviewView*>(control) &&
                         !qobject_cast<QSplitterHandle*>(control) && control->isEnabled();
    if (!isInput) continue;
    ++inputs;
    const QRect outline = outlineOf(*control);
    const QPoint left(outline.left(), outline.center().y());
    const QPoint top(outline.center().x(), outline.top());
    for (const auto& [line, beside] :
         {std::pair(left, left - QPoint(2, 0)), std::pair(top, top - QPoint(0, 2))}) {
      const double contrast = contrastBetween(image.pixelColor(line), image.pixelColor(beside));
      const bool isProminent = control == &button(*m_form, u"Expand"_s);
      EXPECT_GE(contrast, leastContrast - 0.1)
          << spokenName(*control).toStdString() << (isProminent ? " prominent" : "");
    }
  }
  EXPECT_EQ(inputs, 9);
}

TEST_P(Outlines, ShowTheKeyboard) {
  const QImage before = picture();
  int stops = 0;
  for (QWidget* control : controls()) {
    ++stops;
    control->setFocus(Qt::OtherFocusReason);
    ASSERT_EQ(QApplication::focusWidget(), control);
    const QImage after = picture();
    // Of a raised control the ring covers the outline and the lit edge, not the ground.
    const bool isRaised = qobject_cast<QComboBox*>(control) || qobject_cast<QPushButton*>(control);
    const double wanted = isRaised ? 1.8 : leastContrast;
    int changed = 0;
    const QRect area = outlineOf(*control).adjusted(-1, -1, 1, 1).intersected(after.rect());
    for (int y = area.top(); y <= area.bottom(); ++y) {
      for (int x = area.left(); x <= area.right(); ++x) {
        const double contrast = contrastBetween(before.pixelColor(x, y), after.pixelColor(x, y));
        if (contrast >= wanted) ++changed;
      }
    }
    EXPECT_GE(changed, 24) << spokenName(*control).toStdString();
    m_form->setFocus();
  }
  EXPECT_EQ(stops, 11);
}

INSTANTIATE_TEST_SUITE_P(
    Palettes, Outlines, testing::ValuesIn(realPalettes), [](const auto& palette) {
      return QString::fromLatin1(palette.param.name).remove(u' ').toStdString();
    });

}  // namespace
}  // namespace zarvy
