#include <chrono>
#include <optional>

#include <QAbstractItemView>
#include <QInputMethodEvent>
#include <QScrollArea>
#include <QSplitter>
#include <QWheelEvent>

#include "support/QtPrinters.h"
#include "ui/controls/TriggerBadge.h"
#include "ui/fillin/FieldRow.h"
#include "ui/fillin/FillInHarness.h"
#include "ui/fillin/StandaloneFillInForm.h"
#include "ui/preview/PreviewView.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

using namespace std::chrono_literals;

using Values = QMap<QString, QString>;

class FillInForm : public testing::Test {
 protected:
  StandaloneFillInForm& open(const QString& replacement) {
    return open(FillInHarness::snippet(replacement));
  }

  StandaloneFillInForm& open(const Snippet& snippet) {
    m_form = std::make_unique<StandaloneFillInForm>(
        snippet, FolderColor::blue, m_harness.services(),
        [this](const Values& values) {
          ++m_expansions;
          m_values = values;
        },
        [this] { ++m_cancellations; });
    m_form->resize(m_form->sizeHint());
    m_form->show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(m_form.get()));
    return *m_form;
  }

  void giveFocus() { m_harness.scheduler.advance(100ms); }

  QPushButton& expand() { return button(*m_form, u"Expand"_s); }

  QString preview() {
    QApplication::processEvents();
    return named<PreviewView>(*m_form, u"Preview"_s).toPlainText();
  }

  QWidget* focused() { return QApplication::focusWidget(); }

  // The names of what Tab comes by, from where the focus is, once around.
  QStringList tabStops() {
    QStringList stops;
    const QWidget* const first = focused();
    do {
      const auto* const asButton = qobject_cast<QPushButton*>(focused());
      stops.append(asButton ? asButton->text() : spokenName(*focused()));
      QTest::keyClick(focused(), Qt::Key_Tab);
    } while (focused() != first && stops.size() < 50);
    return stops;
  }

  QStringList labels() {
    QStringList texts;
    for (QLabel* label : m_form->findChildren<QLabel*>()) {
      if (label->isVisible()) texts.append(spokenName(*label));
    }
    return texts;
  }

  FillInHarness m_harness;
  std::unique_ptr<StandaloneFillInForm> m_form;
  int m_expansions = 0;
  int m_cancellations = 0;
  Values m_values;
};

TEST_F(FillInForm, HasNoFieldsUntilItAppears) {
  StandaloneFillInForm form(
      FillInHarness::snippet(u"{{field:A}}"_s), FolderColor::gray, m_harness.services(),
      [](const Values&) {}, [] {});
  EXPECT_TRUE(form.fields().isEmpty());
  form.show();
  EXPECT_EQ(form.fields().size(), 1);
}

TEST_F(FillInForm, ParsesTheReplacementAsItIsStored) {
  m_harness.engine.setSnippets({[] {
    Snippet nested = FillInHarness::snippet(u"{{field:Inner}}"_s);
    nested.trigger = u";n"_s;
    return nested;
  }()});
  open(u"{{snippet:;n}} {{field:Outer}}"_s);
  ASSERT_EQ(m_form->fields().size(), 1);
  EXPECT_EQ(m_form->fields().front().name, u"Outer"_s);
  EXPECT_EQ(preview(), u"{{field:Inner}} [Outer]"_s);
}

TEST_F(FillInForm, GivesTheFirstFieldTheKeyboardAfterATenthOfASecond) {
  open(u"{{field:A}} {{field:B}}"_s);
  m_harness.scheduler.advance(99ms);
  EXPECT_EQ(m_form->focusedFieldID(), std::nullopt);
  m_harness.scheduler.advance(1ms);
  EXPECT_EQ(m_form->focusedFieldID(), m_form->fields().front().id);
  QTest::keyClicks(focused(), u"Ada"_s);
  EXPECT_EQ(m_form->fields().front().value, u"Ada"_s);
  QTest::keyClick(focused(), Qt::Key_Tab);  // Remember
  QTest::keyClick(focused(), Qt::Key_Tab);
  EXPECT_EQ(m_form->focusedFieldID(), m_form->fields().back().id);
}

TEST_F(FillInForm, SelectsTheTextOfTheFirstFieldSoThatTypingReplacesIt) {
  m_harness.fieldDefaults.replaceAll({{u"B"_s, u"remembered\ntext"_s}});
  for (const QString& replacement :
       {u"{{field:A:default}} {{field:C:other}}"_s, u"{{textarea:B}}"_s}) {
    open(replacement);
    giveFocus();
    EXPECT_FALSE(m_form->fields().front().value.isEmpty());
    QTest::keyClicks(focused(), u"new"_s);
    EXPECT_EQ(m_form->fields().front().value, u"new"_s);
  }
}

TEST_F(FillInForm, KeepsWhatIsTypedBeforeTheFirstFieldHasTheKeyboard) {
  open(u"{{field:A:default}} {{field:B:b}} {{field:C:c}}"_s);
  const auto press = [this](int key, const QString& text = {},
                            Qt::KeyboardModifiers modifiers = {}) {
    QTest::sendKeyEvent(QTest::Click, m_form.get(), static_cast<Qt::Key>(key), text, modifiers);
  };
  press(Qt::Key_A, u"A"_s, Qt::ShiftModifier);
  press(Qt::Key_D, u"d"_s);
  press(Qt::Key_Q, u"@"_s, Qt::GroupSwitchModifier);
  press(Qt::Key_Backspace, u"\b"_s);
  QInputMethodEvent composed;
  composed.setCommitString(u"\u00e9"_s);
  QApplication::sendEvent(m_form.get(), &composed);
  EXPECT_EQ(m_form->fields().front().value, u"default"_s) << "the field has not got the keyboard";
  giveFocus();
  EXPECT_EQ(m_form->fields().front().value, u"Ad\u00e9"_s);
  EXPECT_EQ(m_form->focusedFieldID(), m_form->fields().front().id);
  QTest::keyClicks(focused(), u"a"_s);
  EXPECT_EQ(m_form->fields().front().value, u"Ad\u00e9a"_s);
  EXPECT_EQ(m_expansions + m_cancellations, 0);
}

TEST_F(FillInForm, PutsWhatTheApplicationGotAheadOfWhatTheFormKept) {
  StandaloneFillInForm& form = open(u"{{field:A:old}}"_s);
  int asked = 0;
  form.setTypedAhead([&asked] {
    ++asked;
    return u"Ad"_s;
  });
  QTest::keyClicks(m_form.get(), u"a"_s);
  EXPECT_EQ(asked, 0);
  giveFocus();
  EXPECT_EQ(form.fields().constFirst().value, u"Ada"_s);
  EXPECT_EQ(asked, 1);
}

TEST_F(FillInForm, GoesOnFromFieldToFieldWithTheKeysOfBefore) {
  open(u"{{field:A:a}} {{field:B:b}}"_s);
  QTest::keyClicks(m_form.get(), u"1"_s);
  QTest::keyClick(m_form.get(), Qt::Key_Tab);
  QTest::keyClick(m_form.get(), Qt::Key_Tab);
  QTest::keyClicks(m_form.get(), u"2"_s);
  QTest::keyClick(m_form.get(), Qt::Key_Return);
  QTest::keyClicks(m_form.get(), u"3"_s);
  EXPECT_EQ(m_expansions, 0);
  giveFocus();
  EXPECT_EQ(m_expansions, 1);
  EXPECT_EQ(m_values, (Values{{u"A"_s, u"1"_s}, {u"B"_s, u"2"_s}}));
}

TEST_F(FillInForm, BeginsALineWithAReturnOfBefore) {
  open(u"{{textarea:A:default}}"_s);
  QTest::keyClicks(m_form.get(), u"a"_s);
  QTest::keyClick(m_form.get(), Qt::Key_Return);
  QTest::keyClicks(m_form.get(), u"b"_s);
  giveFocus();
  EXPECT_EQ(m_form->fields().front().value, u"a\nb"_s);
  EXPECT_EQ(m_expansions, 0);
}

TEST_F(FillInForm, CancelsAtOnceOnAnEscapeOfBefore) {
  open(u"{{field:A}}"_s);
  QTest::keyClicks(m_form.get(), u"a"_s);
  QTest::keyClick(m_form.get(), Qt::Key_Escape);
  EXPECT_EQ(m_cancellations, 1);
}

// Of `widget` or a part of it, in the area that the rows scroll in.
bool isInSight(const QWidget& widget, const QRect& part) {
  const QWidget* viewport = &widget;
  while (!qobject_cast<const QScrollArea*>(viewport->parentWidget())) {
    viewport = viewport->parentWidget();
  }
  return viewport->rect().contains(QRect(widget.mapTo(viewport, part.topLeft()), part.size()));
}

TEST_F(FillInForm, ScrollsToWhateverTabReaches) {
  QString replacement;
  for (const QChar name : u"ABCDEFGHIJKL"_s) {
    replacement += u"{{field:%1}}{{textarea:%2}}"_s.arg(name, name.toLower());
  }
  open(replacement);
  giveFocus();
  for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Backtab}) {
    int inRows = 0;
    const QWidget* const first = focused();
    do {
      QTest::keyClick(focused(), key);
      const bool isInRow = [this] {
        for (const QWidget* above = focused(); above; above = above->parentWidget()) {
          if (qobject_cast<const FieldRow*>(above)) return true;
        }
        return false;
      }();
      if (!isInRow) continue;
      ++inRows;
      EXPECT_TRUE(isInSight(*focused(), focused()->rect())) << spokenName(*focused()).toStdString();
    } while (focused() != first);
    EXPECT_EQ(inRows, 48);
  }
}

TEST_F(FillInForm, KeepsTheCaretInSightInALowPane) {
  open(u"{{field:A}} {{field:B}} {{textarea:Text}}"_s);
  giveFocus();
  auto& text = named<QPlainTextEdit>(*m_form, u"Text"_s);
  text.setFocus(Qt::TabFocusReason);
  const auto caretIsInSight = [&text] {
    return isInSight(text, text.inputMethodQuery(Qt::ImCursorRectangle).toRect());
  };
  m_form->setMinimumSize(100, 100);
  for (const int height : {550, 400, 300, 240}) {
    m_form->resize(350, height);
    QApplication::processEvents();
    EXPECT_TRUE(caretIsInSight()) << height;
    for (int line = 0; line < 6; ++line) {
      QTest::keyClick(&text, Qt::Key_Return);
      EXPECT_TRUE(caretIsInSight()) << height;
    }
    QTest::keyClick(&text, Qt::Key_Home, Qt::ControlModifier);
    EXPECT_TRUE(caretIsInSight()) << height;
  }
}

TEST_F(FillInForm, DoesNotTouchTheFormWhereItIsGoneByThen) {
  open(u"{{field:A}}"_s);
  m_form.reset();
  giveFocus();
}

TEST_F(FillInForm, ShowsItsTextsAndTheTrigger) {
  open(u"{{field:Name:required}} {{textarea:Text:required}} {{dropdown:Day:Mo,Tu}}"_s);
  EXPECT_EQ(labels(), (QStringList{u"Fill In Values"_s, u"Complete the fields below"_s,
                                   u"Preview"_s, u"Name"_s, u"*"_s, u"Text"_s, u"*"_s, u"Day"_s}));
  EXPECT_EQ(m_form->findChild<TriggerBadge*>()->accessibleName(), u"Trigger ;letter"_s);
  EXPECT_EQ(m_form->minimumSizeHint(), QSize(350, 400));
  EXPECT_EQ(m_form->sizeHint(), QSize(450, 550));
}

TEST_F(FillInForm, SaysWhereThereIsNothingToFillIn) {
  open(u"no fields"_s);
  EXPECT_TRUE(labels().contains(u"No fill-in fields in this snippet"_s));
  giveFocus();
  EXPECT_EQ(m_form->focusedFieldID(), std::nullopt);
  QTest::keyClick(m_form.get(), Qt::Key_Return);
  EXPECT_EQ(m_expansions, 1);
  EXPECT_EQ(m_values, Values());
}

TEST_F(FillInForm, ExpandsOnReturnAndCancelsOnEscape) {
  open(u"{{field:A:x}}"_s);
  giveFocus();
  QTest::keyClick(focused(), Qt::Key_Return);
  EXPECT_EQ(m_expansions, 1);
  EXPECT_EQ(m_values, (Values{{u"A"_s, u"x"_s}}));
  QTest::keyClick(focused(), Qt::Key_Enter);
  EXPECT_EQ(m_expansions, 2);
  EXPECT_EQ(m_cancellations, 0);
  QTest::keyClick(focused(), Qt::Key_Escape);
  EXPECT_EQ(m_cancellations, 1);
  QTest::mouseClick(&button(*m_form, u"Cancel"_s), Qt::LeftButton);
  EXPECT_EQ(m_cancellations, 2);
  QTest::keyClick(focused(), Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_EQ(m_expansions, 2) << "the shortcut is the key alone";
}

TEST_F(FillInForm, ExpandsFromWhereverTheKeyboardIs) {
  open(u"{{field:A:x}} {{dropdown:D:a,b}} {{?:S}}s{{/?}}"_s);
  giveFocus();
  int stops = 0;
  const QWidget* const first = focused();
  do {
    QTest::keyClick(focused(), Qt::Key_Return);
    EXPECT_EQ(m_expansions, ++stops) << focused()->accessibleName().toStdString();
    QTest::keyClick(focused(), Qt::Key_Tab);
  } while (focused() != first);
  EXPECT_EQ(stops, 9);
  EXPECT_EQ(m_cancellations, 0);
}

TEST_F(FillInForm, LeavesAnOpenListOfOptionsItsKeys) {
  open(u"{{dropdown:D:a,b,c}}"_s);
  giveFocus();
  auto& picker = named<QComboBox>(*m_form, u"D"_s);
  QTest::keyClick(&picker, Qt::Key_Space);
  QWidget* const list = picker.view();
  ASSERT_TRUE(QTest::qWaitFor([list] { return list->isVisible(); }));
  QTest::keyClick(list, Qt::Key_Down);
  QTest::keyClick(list, Qt::Key_Return);
  EXPECT_FALSE(list->isVisible());
  EXPECT_EQ(m_form->fields().front().value, u"b"_s);
  QTest::keyClick(&picker, Qt::Key_Space);
  ASSERT_TRUE(QTest::qWaitFor([list] { return list->isVisible(); }));
  QTest::keyClick(list, Qt::Key_Escape);
  EXPECT_FALSE(list->isVisible());
  EXPECT_EQ(m_expansions + m_cancellations, 0);
}

TEST_F(FillInForm, DoesNotChooseForAUserWhoScrolls) {
  open(u"{{field:A}} {{dropdown:D:a,b,c}}"_s);
  giveFocus();
  auto& picker = named<QComboBox>(*m_form, u"D"_s);
  const QPointF place(5, 5);
  QWheelEvent turn(place, picker.mapToGlobal(place), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                   Qt::NoScrollPhase, false);
  QApplication::sendEvent(&picker, &turn);
  EXPECT_EQ(picker.currentIndex(), 0);
  EXPECT_FALSE(turn.isAccepted());
}

TEST_F(FillInForm, StartsANewLineOnReturnInATextArea) {
  open(u"{{textarea:A}}"_s);
  giveFocus();
  QTest::keyClicks(focused(), u"a"_s);
  QTest::keyClick(focused(), Qt::Key_Return);
  QTest::keyClicks(focused(), u"b"_s);
  EXPECT_EQ(m_form->fields().front().value, u"a\nb"_s);
  EXPECT_EQ(m_expansions, 0);
  QTest::keyClick(focused(), Qt::Key_Escape);
  EXPECT_EQ(m_cancellations, 1);
}

TEST_F(FillInForm, KeepsTheCharactersOfATextArea) {
  open(u"{{textarea:A}}"_s);
  giveFocus();
  QTest::keyClicks(focused(), u"1"_s);
  auto& editor = named<QPlainTextEdit>(*m_form, u"A"_s);
  editor.insertPlainText(u"\u00A0%\U0001F600\n"_s);
  QTest::keyClick(&editor, Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_EQ(m_form->fields().front().value, u"1\u00A0%\U0001F600\n\n"_s);
}

TEST_F(FillInForm, MovesThroughTheRowsInReadingOrder) {
  open(u"{{?:Section}}x{{/?}}{{dropdown:Day:Mo,Tu}}{{textarea:Text}}{{field:Name}}"_s);
  giveFocus();
  EXPECT_EQ(tabStops(),
            (QStringList{u"Name"_s, u"Remember Name"_s, u"Text"_s, u"Remember Text"_s, u"Day"_s,
                         u"Remember Day"_s, u"Section"_s, u"Size of the preview"_s, u"Preview"_s,
                         u"Cancel"_s, u"Expand"_s}));
}

TEST_F(FillInForm, NamesEveryControl) {
  open(u"{{?:Section}}x{{/?}}{{dropdown:Day:Mo,Tu}}{{textarea:Text}}{{field:Name:required}}"_s);
  giveFocus();
  for (const QString& name : tabStops()) EXPECT_FALSE(name.isEmpty());
}

TEST_F(FillInForm, HoldsBackWhileARequiredFieldIsBlank) {
  open(u"{{field:A:required}} {{textarea:B:x:required}}"_s);
  giveFocus();
  EXPECT_FALSE(expand().isEnabled());
  QTest::keyClick(focused(), Qt::Key_Return);
  EXPECT_EQ(m_expansions, 0);
  auto& a = named<QLineEdit>(*m_form, u"A"_s);
  auto& b = named<QPlainTextEdit>(*m_form, u"B"_s);
  a.setText(u" \t\u00A0"_s);
  EXPECT_FALSE(expand().isEnabled());
  a.setText(u" x "_s);
  EXPECT_TRUE(expand().isEnabled());
  b.setPlainText(u" \n\n "_s);
  EXPECT_FALSE(expand().isEnabled());
  b.setPlainText(u"y"_s);
  EXPECT_TRUE(expand().isEnabled());
  QTest::keyClick(focused(), Qt::Key_Return);
  EXPECT_EQ(m_values, (Values{{u"A"_s, u" x "_s}, {u"B"_s, u"y"_s}})) << "untrimmed";
}

TEST_F(FillInForm, HoldsBackWhereARequiredChoiceHasNothingToChoose) {
  open(u"{{dropdown:Day::required}}"_s);
  EXPECT_FALSE(expand().isEnabled());
}

TEST_F(FillInForm, HoldsBackByTheFlagAndTheValueAlone) {
  struct Row {
    FillInFieldType::Kind kind;
    bool isRequired;
    QString value;
    bool isIncomplete;
  };
  using Kind = FillInFieldType::Kind;
  for (const Row& row :
       {Row{Kind::optional, true, {}, true}, Row{Kind::optional, true, u"x"_s, false},
        Row{Kind::optional, false, {}, false}, Row{Kind::text, true, u"\n"_s, true},
        Row{Kind::text, false, {}, false}}) {
    FillInField field;
    field.type.kind = row.kind;
    field.isRequired = row.isRequired;
    field.value = row.value;
    field.isChecked = false;
    EXPECT_EQ(StandaloneFillInForm::isIncomplete({field}), row.isIncomplete);
  }
}

TEST_F(FillInForm, AnswersForEveryField) {
  open(u"{{field:A:1}} {{textarea:B:2}} {{dropdown:C:x,y}} {{?:On}}yes{{/?}} {{?:Off}}no{{/?}}"_s);
  named<QCheckBox>(*m_form, u"Off"_s).click();
  named<QComboBox>(*m_form, u"C"_s).setCurrentIndex(1);
  expand().click();
  EXPECT_EQ(m_values, (Values{{u"A"_s, u"1"_s},
                              {u"B"_s, u"2"_s},
                              {u"C"_s, u"y"_s},
                              {u"On"_s, u"yes"_s},
                              {u"Off"_s, u""_s}}));
}

TEST_F(FillInForm, TakesTheLaterOfTwoFieldsOfOneName) {
  open(u"{{field:X:first}} {{textarea:X:second}}"_s);
  ASSERT_EQ(m_form->fields().size(), 2);
  expand().click();
  EXPECT_EQ(m_values, (Values{{u"X"_s, u"second"_s}}));
}

TEST_F(FillInForm, RemembersWhatIsChecked) {
  m_harness.fieldDefaults.replaceAll({{u"Known"_s, u"k"_s}, {u"Other"_s, u"o"_s}});
  open(u"{{field:Known}} {{field:New}} {{field:Never:n}}"_s);
  EXPECT_EQ(named<QLineEdit>(*m_form, u"Known"_s).text(), u"k"_s);
  EXPECT_TRUE(named<QCheckBox>(*m_form, u"Remember Known"_s).isChecked());
  EXPECT_FALSE(named<QCheckBox>(*m_form, u"Remember New"_s).isChecked());
  named<QLineEdit>(*m_form, u"New"_s).setText(u" new "_s);
  named<QCheckBox>(*m_form, u"Remember New"_s).click();
  named<QCheckBox>(*m_form, u"Remember Known"_s).click();
  EXPECT_EQ(m_harness.fieldDefaults.value(u"Known"_s), u"k"_s) << "not before it expands";
  expand().click();
  EXPECT_EQ(m_harness.fieldDefaults.value(u"Known"_s), std::nullopt);
  EXPECT_EQ(m_harness.fieldDefaults.value(u"New"_s), u" new "_s);
  EXPECT_EQ(m_harness.fieldDefaults.value(u"Never"_s), std::nullopt);
  EXPECT_EQ(m_harness.fieldDefaults.value(u"Other"_s), u"o"_s);
}

TEST_F(FillInForm, RemembersNothingOfASection) {
  m_harness.fieldDefaults.replaceAll({{u"S"_s, u"kept"_s}});
  open(u"{{?:S}}content{{/?}}"_s);
  expand().click();
  EXPECT_EQ(m_harness.fieldDefaults.value(u"S"_s), u"kept"_s);
  EXPECT_EQ(m_form->findChildren<QCheckBox*>().size(), 1) << "no box to remember it";
}

TEST_F(FillInForm, SavesNothingForAFieldThatHadNothingRemembered) {
  open(u"{{field:A:x}}"_s);
  giveFocus();
  expand().click();
  EXPECT_EQ(m_harness.scheduler.pendingCount(), 0U);
}

TEST_F(FillInForm, ChangesNothingInTheStoreWhenItIsCancelled) {
  m_harness.fieldDefaults.replaceAll({{u"Known"_s, u"k"_s}});
  open(u"{{field:Known}} {{field:New:n}}"_s);
  named<QCheckBox>(*m_form, u"Remember Known"_s).click();
  named<QCheckBox>(*m_form, u"Remember New"_s).click();
  button(*m_form, u"Cancel"_s).click();
  EXPECT_EQ(m_harness.fieldDefaults.value(u"Known"_s), u"k"_s);
  EXPECT_EQ(m_harness.fieldDefaults.value(u"New"_s), std::nullopt);
}

TEST_F(FillInForm, KeepsARememberedChoiceThatIsNoOption) {
  m_harness.fieldDefaults.replaceAll({{u"Day"_s, u"Sunday"_s}});
  open(u"{{dropdown:Day:Mo,Tu}}"_s);
  EXPECT_EQ(named<QComboBox>(*m_form, u"Day"_s).currentIndex(), -1);
  expand().click();
  EXPECT_EQ(m_values, (Values{{u"Day"_s, u"Sunday"_s}}));
}

TEST_F(FillInForm, ShowsTheContentOfASectionWhileItIsChecked) {
  const QString hundred(100, u'x');
  open(u"{{?:Short}}"_s + hundred + u"{{/?}}{{?:Long}}"_s + hundred + u"y{{/?}}"_s);
  EXPECT_TRUE(labels().contains(hundred));
  EXPECT_TRUE(labels().contains(hundred + u"..."_s));
  named<QCheckBox>(*m_form, u"Short"_s).click();
  EXPECT_FALSE(labels().contains(hundred));
  EXPECT_EQ(preview(), hundred + u"y"_s);
}

TEST_F(FillInForm, PreviewsEveryChange) {
  open(u"Dear {{field:Name}}, {{dropdown:Day:Mo,Tu}} {{date:short}}"_s);
  EXPECT_EQ(preview(), u"Dear [Name], Mo 1/21/26"_s);
  named<QLineEdit>(*m_form, u"Name"_s).setText(u"Ada"_s);
  EXPECT_EQ(preview(), u"Dear Ada, Mo 1/21/26"_s);
  named<QComboBox>(*m_form, u"Day"_s).setCurrentIndex(1);
  EXPECT_EQ(preview(), u"Dear Ada, Tu 1/21/26"_s);
}

TEST_F(FillInForm, ShowsNamesAsTheyWereTyped) {
  open(
      u"{{field:<b>B</b> & C}} {{?:<i>&S}}<u>{{/?}} {{textarea:\u05E9\u05DC\u05D5\u05DD \U0001F600}}"_s);
  const QStringList texts = labels();
  EXPECT_TRUE(texts.contains(u"<b>B</b> & C"_s));
  EXPECT_TRUE(texts.contains(u"<u>"_s));
  EXPECT_TRUE(texts.contains(u"\u05E9\u05DC\u05D5\u05DD \U0001F600"_s));
  for (const QLabel* label : m_form->findChildren<QLabel*>()) {
    EXPECT_TRUE(label->textFormat() == Qt::PlainText || !label->text().contains(u'<'))
        << label->text().toStdString();
  }
  EXPECT_EQ(named<QCheckBox>(*m_form, u"<i>&S"_s).text(), u"<i>&&S"_s) << "no shortcut is meant";
}

TEST_F(FillInForm, BearsAnImmenseName) {
  const QString name(10'000, u'W');
  open(u"{{field:"_s + name + u"}}{{textarea:"_s + name + u"}}{{dropdown:D"_s + name +
       u":a,b}}{{?:S"_s + name + u"}}s{{/?}}"_s);
  ASSERT_EQ(m_form->fields().size(), 4);
  QApplication::processEvents();
  EXPECT_EQ(m_form->width(), 450);
  for (const FieldRow* row : m_form->findChildren<FieldRow*>()) {
    EXPECT_LE(row->width(), m_form->width());
  }
  expand().click();
  EXPECT_TRUE(m_values.contains(name));
}

TEST_F(FillInForm, BearsTwoHundredFieldsAndThousandsOfOptions) {
  QString replacement = u"{{dropdown:Many:option 0"_s;
  for (int option = 1; option < 5000; ++option)
    replacement += u",option "_s + QString::number(option);
  replacement += u"}}"_s;
  for (int field = 0; field < 200; ++field) replacement += u"{{field:F%1:v}}"_s.arg(field);
  open(replacement);
  EXPECT_EQ(m_form->fields().size(), 201);
  EXPECT_EQ(named<QComboBox>(*m_form, u"Many"_s).count(), 5000);
  expand().click();
  EXPECT_EQ(m_values.size(), 201);
}

TEST_F(FillInForm, BringsTheFocusedRowIntoView) {
  QString replacement;
  for (int field = 0; field < 30; ++field) replacement += u"{{field:F%1}}"_s.arg(field);
  open(replacement);
  giveFocus();
  QApplication::processEvents();
  for (int presses = 0; presses < 58; ++presses) QTest::keyClick(focused(), Qt::Key_Tab);
  EXPECT_EQ(focused()->accessibleName(), u"F29"_s);
  const auto* const area = m_form->findChild<QScrollArea*>();
  const QPoint place = focused()->mapTo(area->viewport(), QPoint());
  EXPECT_TRUE(area->viewport()->rect().contains(place));
}

TEST_F(FillInForm, LetsTheArrowKeysMoveTheDivider) {
  open(u"{{field:A}}"_s);
  auto* const splitter = m_form->findChild<QSplitter*>();
  const int before = splitter->sizes().front();
  QSplitterHandle* const divider = splitter->handle(1);
  QTest::keyClick(divider, Qt::Key_Up);
  EXPECT_LT(splitter->sizes().front(), before);
  for (int press = 0; press < 50; ++press) QTest::keyClick(divider, Qt::Key_Up);
  EXPECT_EQ(splitter->sizes().front(), 120);
  for (int press = 0; press < 100; ++press) QTest::keyClick(divider, Qt::Key_Down);
  EXPECT_EQ(splitter->sizes().back(), 100);
}

TEST_F(FillInForm, FollowsThePaletteAndTheFontOfTheDesktop) {
  open(u"{{field:A:required}}"_s);
  const QPalette light = QApplication::palette();
  const QFont font = QApplication::font();
  const QLabel* title = nullptr;
  const QLabel* subtitle = nullptr;
  for (const QLabel* label : m_form->findChildren<QLabel*>()) {
    if (label->text() == u"Fill In Values") title = label;
    if (label->text() == u"Complete the fields below") subtitle = label;
  }
  const QColor before = subtitle->palette().color(QPalette::WindowText);
  QPalette dark(QColor(40, 40, 44));
  QApplication::setPalette(dark);
  QApplication::processEvents();
  const QColor after = subtitle->palette().color(QPalette::WindowText);
  EXPECT_LT(before.lightness(), 160);
  EXPECT_GT(after.lightness(), 140);
  EXPECT_EQ(expand().palette().color(QPalette::Disabled, QPalette::Button),
            dark.color(QPalette::Disabled, QPalette::Button));

  QFont large = font;
  large.setPointSizeF(font.pointSizeF() * 2);
  const double size = title->font().pointSizeF();
  QApplication::setFont(large);
  QApplication::processEvents();
  EXPECT_NEAR(title->font().pointSizeF(), 2 * size, 0.01);
  QApplication::setFont(font);
  QApplication::processEvents();
  EXPECT_NEAR(title->font().pointSizeF(), size, 0.01);
  QApplication::setPalette(light);
  QApplication::processEvents();
  EXPECT_EQ(subtitle->palette().color(QPalette::WindowText), before);
}

}  // namespace
}  // namespace zarvy
