#include <memory>

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include "support/QtPrinters.h"
#include "ui/controls/Sheet.h"
#include "ui/controls/WrappedLabel.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

class Sheets : public testing::Test {
 protected:
  Sheets() : m_sheet(new Sheet({u"Add Text Field"_s, u"Insert"_s}, 300, m_window)) {
    m_window.show();
    m_sheet->body().addWidget(new WrappedLabel(u"a caption"_s, m_sheet));
    m_first = new QLineEdit(m_sheet);
    m_second = new QLineEdit(m_sheet);
    m_sheet->body().addWidget(m_first);
    m_sheet->body().addWidget(m_second);
    QObject::connect(m_sheet, &QDialog::finished, &m_window, [this](int result) {
      m_answers.append(result == QDialog::Accepted ? u"accepted"_s : u"rejected"_s);
    });
  }

  void open() {
    m_sheet->open();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_sheet));
  }

  QWidget m_window;
  QPointer<Sheet> m_sheet;
  QLineEdit* m_first = nullptr;
  QLineEdit* m_second = nullptr;
  QStringList m_answers;
};

TEST_F(Sheets, KeepTheirWindowWaiting) {
  open();
  EXPECT_EQ(m_sheet->windowModality(), Qt::WindowModal);
  EXPECT_EQ(m_sheet->parentWidget(), &m_window);
  EXPECT_EQ(m_sheet->windowTitle(), u"Add Text Field"_s);
  EXPECT_EQ(m_sheet->width(), 300);
}

TEST_F(Sheets, BeginWithTheFirstInput) {
  open();
  EXPECT_TRUE(m_first->hasFocus());
  QTest::keyClick(m_first, Qt::Key_Tab);
  EXPECT_TRUE(m_second->hasFocus());
}

TEST_F(Sheets, SkipAnInputThatCannotBeUsed) {
  m_first->setEnabled(false);
  open();
  EXPECT_TRUE(m_second->hasFocus());
}

TEST_F(Sheets, AreAcceptedWithReturn) {
  open();
  QTest::keyClick(m_first, Qt::Key_Return);
  EXPECT_EQ(m_answers, QStringList{u"accepted"_s});
}

TEST_F(Sheets, AreCancelledWithEscape) {
  open();
  QTest::keyClick(m_first, Qt::Key_Escape);
  EXPECT_EQ(m_answers, QStringList{u"rejected"_s});
}

TEST_F(Sheets, AreAnsweredWithTheirButtons) {
  open();
  for (QPushButton* button : m_sheet->findChildren<QPushButton*>()) {
    if (button->text() == u"Cancel"_s) button->click();
  }
  EXPECT_EQ(m_answers, QStringList{u"rejected"_s});
}

TEST_F(Sheets, AreNotAcceptedBeforeTheyAreComplete) {
  m_sheet->setComplete(false);
  open();
  QTest::keyClick(m_first, Qt::Key_Return);
  EXPECT_EQ(m_answers, QStringList());
  m_sheet->setComplete(true);
  QTest::keyClick(m_first, Qt::Key_Return);
  EXPECT_EQ(m_answers, QStringList{u"accepted"_s});
}

TEST_F(Sheets, LeaveReturnToAnInputOfSeveralLines) {
  auto* const editor = new QPlainTextEdit(m_sheet);
  m_sheet->body().addWidget(editor);
  open();
  editor->setFocus();
  QTest::keyClick(editor, Qt::Key_Return);
  EXPECT_EQ(editor->toPlainText(), u"\n"_s);
  EXPECT_EQ(m_answers, QStringList());
}

TEST_F(Sheets, GoOnceTheyHaveBeenAnswered) {
  open();
  QTest::keyClick(m_first, Qt::Key_Escape);
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_FALSE(m_sheet);
}

TEST_F(Sheets, GrowWithWhatIsInThem) {
  open();
  const int height = m_sheet->height();
  auto* const warning = new WrappedLabel(u"word "_s.repeated(60), m_sheet);
  m_sheet->body().addWidget(warning);
  QApplication::processEvents();
  EXPECT_GT(m_sheet->height(), height);
  EXPECT_EQ(m_sheet->width(), 300);
  EXPECT_GE(warning->height(), warning->heightForWidth(warning->width()));
  warning->hide();
  QApplication::processEvents();
  EXPECT_EQ(m_sheet->height(), height);
}

}  // namespace
}  // namespace zarvy
