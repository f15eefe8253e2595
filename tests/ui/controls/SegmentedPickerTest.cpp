#include <QAbstractButton>
#include <QTest>

#include <gtest/gtest.h>

#include "support/QtPrinters.h"
#include "ui/controls/SegmentedPicker.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

class SegmentedPickers : public testing::Test {
 protected:
  SegmentedPickers() {
    QObject::connect(&m_picker, &SegmentedPicker::picked, &m_picker,
                     [this](int index) { m_picked.append(index); });
    m_picker.show();
    m_picker.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&m_picker));
  }

  [[nodiscard]] QAbstractButton& segment(const QString& text) const {
    for (auto* const button : m_picker.findChildren<QAbstractButton*>()) {
      if (button->text() == text) return *button;
    }
    throw std::runtime_error("no segment " + text.toStdString());
  }

  SegmentedPicker m_picker{u"Range"_s, {u"Today"_s, u"7 Days"_s, u"30 Days"_s}, nullptr};
  QList<int> m_picked;
};

TEST_F(SegmentedPickers, ChooseTheFirstToBeginWith) {
  EXPECT_EQ(m_picker.accessibleName(), u"Range"_s);
  EXPECT_EQ(m_picker.currentIndex(), 0);
  EXPECT_TRUE(segment(u"Today"_s).isChecked());
}

TEST_F(SegmentedPickers, TellOfEachChange) {
  QTest::mouseClick(&segment(u"30 Days"_s), Qt::LeftButton);
  EXPECT_EQ(m_picker.currentIndex(), 2);
  QTest::mouseClick(&segment(u"30 Days"_s), Qt::LeftButton);
  m_picker.setCurrentIndex(1);
  m_picker.setCurrentIndex(1);
  EXPECT_EQ(m_picked, (QList<int>{2, 1}));
  EXPECT_FALSE(segment(u"30 Days"_s).isChecked());
}

TEST_F(SegmentedPickers, AreOneStopOfTabAndGoOnWithTheArrows) {
  m_picker.setCurrentIndex(1);
  m_picked.clear();
  segment(u"7 Days"_s).setFocus();
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
  EXPECT_EQ(QApplication::focusWidget(), &segment(u"30 Days"_s));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left);
  EXPECT_EQ(m_picker.currentIndex(), 0);
  EXPECT_EQ(m_picked, (QList<int>{2, 1, 0}));
  int stops = 0;
  for (const auto* button : m_picker.findChildren<QAbstractButton*>()) {
    stops += (button->focusPolicy() & Qt::TabFocus) ? 1 : 0;
  }
  EXPECT_EQ(stops, 1);
}

// So that the chosen one can be told from the others.
TEST_F(SegmentedPickers, MarkTheChosenOneWithTheAccent) {
  const auto ground = [this](const QString& text) {
    return segment(text).palette().color(QPalette::Active, QPalette::Button);
  };
  EXPECT_NE(ground(u"Today"_s), ground(u"7 Days"_s));
  m_picker.setCurrentIndex(1);
  EXPECT_NE(ground(u"7 Days"_s), ground(u"Today"_s));
  EXPECT_EQ(ground(u"Today"_s), ground(u"30 Days"_s));
}

}  // namespace
}  // namespace zarvy
