// What a screen reader is told of the form.

#include <chrono>

#include <QHelpEvent>
#include <QToolTip>

#include "support/QtPrinters.h"
#include "ui/controls/ElidedCheckBox.h"
#include "ui/controls/ElidedLabel.h"
#include "ui/controls/TriggerBadge.h"
#include "ui/fillin/FillInHarness.h"
#include "ui/fillin/StandaloneFillInForm.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

using namespace std::chrono_literals;

class FillInAccessibility : public testing::Test {
 protected:
  void open(const QString& replacement, const QString& trigger = u";t"_s) {
    Snippet snippet = FillInHarness::snippet(replacement);
    snippet.trigger = trigger;
    m_form = std::make_unique<StandaloneFillInForm>(
        snippet, FolderColor::blue, m_harness.services(), [](const QMap<QString, QString>&) {},
        [] {});
    m_form->resize(m_form->sizeHint());
    m_form->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_form.get()));
  }

  void giveFocus() { m_harness.scheduler.advance(100ms); }

  static QString told(QWidget& widget, QAccessible::Text what) {
    return QAccessible::queryAccessibleInterface(&widget)->text(what);
  }

  // What the pointer is told where it rests on `widget`.
  static QString toolTipOf(QWidget& widget) {
    const QPoint place = widget.rect().center();
    QHelpEvent rest(QEvent::ToolTip, place, widget.mapToGlobal(place));
    QApplication::sendEvent(&widget, &rest);
    const QString text = QToolTip::isVisible() ? QToolTip::text() : QString();
    QToolTip::hideText();
    QApplication::processEvents();
    return text;
  }

  FillInHarness m_harness;
  std::unique_ptr<StandaloneFillInForm> m_form;
};

TEST_F(FillInAccessibility, TellsWhichInputHasTheKeyboard) {
  open(u"{{field:R&D}} {{dropdown:<b>Day</b>:Mo,Tu}} {{textarea:A && B}} {{?:S & T}}x{{/?}}"_s);
  EXPECT_EQ(spokenName(*m_form->findChild<QLineEdit*>()), u"R&D"_s);
  EXPECT_EQ(spokenName(*m_form->findChild<QComboBox*>()), u"<b>Day</b>"_s);
  EXPECT_EQ(spokenName(*m_form->findChild<ElidedCheckBox*>()), u"S & T"_s);
  EXPECT_EQ(spokenName(named<QPlainTextEdit>(*m_form, u"A && B"_s)), u"A && B"_s);
}

TEST_F(FillInAccessibility, TellsAPickerByItsLabel) {
  open(u"{{dropdown:Day:Mo,Tu}}"_s);
  const auto* const picker = QAccessible::queryAccessibleInterface(m_form->findChild<QComboBox*>());
  const auto labels = picker->relations(QAccessible::Label);
  ASSERT_EQ(labels.size(), 1);
  EXPECT_EQ(labels.first().first->text(QAccessible::Name), u"Day"_s);
}

TEST_F(FillInAccessibility, TakesNoCharacterOfANameForAShortcut) {
  open(u"{{field:&Anna}} {{dropdown:&Bert:x,y}}"_s);
  giveFocus();
  const auto first = m_form->focusedFieldID();
  ASSERT_TRUE(first);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_B, Qt::AltModifier);
  EXPECT_EQ(m_form->focusedFieldID(), first);
}

TEST_F(FillInAccessibility, DescribesInPlainWordsOrNotAtAll) {
  open(u"{{field:A <i>name</i>:required}} {{textarea:B}} {{dropdown:C:x,y}} {{?:D}}d{{/?}}"_s,
       u"<b>;t</b>"_s);
  EXPECT_EQ(told(named<QLineEdit>(*m_form, u"A <i>name</i>"_s), QAccessible::Description),
            u"Required"_s);
  int described = 0;
  for (QWidget* widget : m_form->findChildren<QWidget*>()) {
    const QString description = told(*widget, QAccessible::Description);
    EXPECT_TRUE(description.isEmpty() || description == u"Required") << description.toStdString();
    described += description.isEmpty() ? 0 : 1;
  }
  EXPECT_EQ(described, 1);
}

TEST_F(FillInAccessibility, ShowsThePointerWhatWasCut) {
  const QString longText = u"<b>without an end "_s.repeated(20);
  open(u"{{field:"_s + longText + u"}} {{?:S"_s + longText + u"}}x{{/?}}"_s, longText);
  QWidget* const cut[] = {m_form->findChild<ElidedLabel*>(), m_form->findChild<ElidedCheckBox*>(),
                          m_form->findChild<TriggerBadge*>()};
  for (QWidget* widget : cut) {
    ASSERT_NE(widget, nullptr);
    const QString shown = toolTipOf(*widget);
    EXPECT_TRUE(shown.contains(u"&lt;b&gt;without an end")) << shown.toStdString();
  }
}

TEST_F(FillInAccessibility, ShowsThePointerNothingMoreWhereNothingWasCut) {
  open(u"{{field:A & B}} {{?:S & T}}x{{/?}}"_s);
  QWidget* const whole[] = {m_form->findChild<ElidedLabel*>(), m_form->findChild<ElidedCheckBox*>(),
                            m_form->findChild<TriggerBadge*>()};
  for (QWidget* widget : whole) {
    ASSERT_NE(widget, nullptr);
    EXPECT_EQ(toolTipOf(*widget), QString());
  }
}

TEST_F(FillInAccessibility, NamesWhatHasTheKeyboardWhereThereAreNoFields) {
  open(u"no fields"_s);
  giveFocus();
  ASSERT_NE(QApplication::focusWidget(), nullptr);
  EXPECT_EQ(spokenName(*QApplication::focusWidget()), u"Fill In Values"_s);
  EXPECT_EQ(told(*QApplication::focusWidget(), QAccessible::Description),
            u"No fill-in fields in this snippet"_s);
}

}  // namespace
}  // namespace zarvy
