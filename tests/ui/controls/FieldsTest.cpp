#include <QAbstractButton>
#include <QApplication>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include "support/QtPrinters.h"
#include "ui/controls/PlainField.h"
#include "ui/controls/SearchField.h"
#include "ui/screenshots/DesktopTheme.h"
#include "ui/style/Tones.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

// The button that empties the field, where it can be seen.
QAbstractButton* clearButtonOf(const QLineEdit& field) {
  for (auto* const button : field.findChildren<QAbstractButton*>()) {
    if (button->isVisible() && button->geometry().center().x() > field.width() / 2) return button;
  }
  return nullptr;
}

class Fields : public testing::Test {
 protected:
  Fields() { new QVBoxLayout(&m_window); }
  ~Fields() override {
    QApplication::setPalette(m_before);
    QApplication::setFont(m_fontBefore);
  }

  // Takes `field` over.
  template <typename Field>
  Field& shown(Field* field) {
    m_window.layout()->addWidget(field);
    m_window.resize(300, 60);
    m_window.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&m_window));
    return *field;
  }

  const QPalette m_before = QApplication::palette();
  const QFont m_fontBefore = QApplication::font();
  QWidget m_window;
};

TEST_F(Fields, AreEmptiedByTheButtonBehindASearch) {
  auto& field = shown(new SearchField(u"Search snippets..."_s, &m_window));
  EXPECT_EQ(field.placeholderText(), u"Search snippets..."_s);
  EXPECT_EQ(field.accessibleName(), u"Search snippets"_s);
  field.setFocus();
  QTest::keyClicks(&field, u"sig"_s);
  QAbstractButton* const clear = clearButtonOf(field);
  ASSERT_TRUE(clear);
  QTest::mouseClick(clear, Qt::LeftButton);
  EXPECT_EQ(field.text(), QString());
}

TEST_F(Fields, HaveASymbolInFrontOfASearch) {
  auto& field = shown(new SearchField(u"Search"_s, &m_window));
  const QList<QAction*> actions = field.actions();
  ASSERT_FALSE(actions.isEmpty());
  EXPECT_FALSE(actions.constFirst()->icon().isNull());
}

TEST_F(Fields, AreWrittenOnTheWindowWithoutAFrame) {
  auto& field = shown(new PlainField(lettering::search, &m_window));
  EXPECT_FALSE(field.hasFrame());
  QFont font = QApplication::font();
  font.setPixelSize(26);
  for (const QString& theme : {u"dark"_s, u"light"_s}) {
    QApplication::setPalette(desktopPalette(theme));
    QApplication::setFont(font);
    QApplication::processEvents();
    const QPalette around = m_window.palette();
    EXPECT_EQ(field.font().pixelSize(), 36);
    EXPECT_EQ(field.palette().color(QPalette::Base).alpha(), 0);
    EXPECT_EQ(activeColor(field.palette(), QPalette::Text),
              activeColor(around, QPalette::WindowText));
    EXPECT_GE(contrastBetween(activeColor(field.palette(), QPalette::PlaceholderText),
                              activeColor(around, QPalette::Window)),
              textContrast);
  }
}

}  // namespace
}  // namespace zarvy
