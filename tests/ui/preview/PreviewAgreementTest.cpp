// What the preview shows is what is typed in the end, as far as the form alone settles the text.

#include <gtest/gtest.h>

#include "core/placeholders/FillInPlaces.h"
#include "core/placeholders/RandomText.h"
#include "support/QtPrinters.h"
#include "ui/fillin/FillInHarness.h"
#include "ui/preview/PreviewText.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

QString shown(const QString& text, const QList<FillInField>& fields) {
  QString result;
  for (const PreviewRun& run : previewRuns(text, fields, {}, {})) result += run.text;
  return result;
}

// As the form answers.
QMap<QString, QString> answersOf(const QList<FillInField>& fields) {
  QMap<QString, QString> answers;
  for (const FillInField& field : fields) {
    const bool isSection = field.type.kind == FillInFieldType::Kind::optional;
    const QString content = field.isChecked ? field.type.content : QString();
    answers.insert(field.name, isSection ? content : field.value);
  }
  return answers;
}

// A letter whose sections hold fields of all kinds, some of them only there.
class RandomLetter {
 public:
  explicit RandomLetter(unsigned seed) : m_random(fillIns() + words(), seed) {}

  [[nodiscard]] QString next() {
    QString text;
    for (int part = 0; part < 5; ++part) {
      text += m_random.next(4);
      text += m_random.oneOf({u"{{?:S}}"_s, u"{{?:T}}"_s, u"{{?:U (2)}}"_s});
      text += m_random.next(4) + u"{{/?}}"_s;
    }
    return text;
  }

  void answer(QList<FillInField>& fields) {
    for (FillInField& field : fields) {
      field.isChecked = m_random.number(1) == 1;
      field.value = m_random.oneOf({u"Ada"_s, u"two\nlines"_s, u"\u00e9"_s});
    }
  }

 private:
  static QStringList fillIns() {
    return {u"{{field:A}}"_s,    u"{{field:A:x:required}}"_s,
            u"{{textarea:B}}"_s, u"{{dropdown:C:one,two}}"_s,
            u"{{field:D}}"_s,    u"{{textarea:E:y}}"_s};
  }
  static QStringList words() { return {u" "_s, u"Dear "_s, u",\n"_s, u"{{"_s, u"}"_s}; }

  RandomText m_random;
};

TEST(PreviewAgreement, ShowsWhatIsTyped) {
  FillInHarness harness;
  RandomLetter letters(20261122);
  int withFieldInside = 0;
  for (int round = 0; round < 3000; ++round) {
    const QString text = letters.next();
    QList<FillInField> fields = harness.engine.parseFillInFields(text);
    letters.answer(fields);
    ASSERT_EQ(shown(text, fields), substituteFillInValues(text, fields, answersOf(fields)))
        << testing::PrintToString(text);
    for (const FillInField& field : fields) {
      withFieldInside += field.isChecked && field.type.content.contains(u"{{field:"_s) ? 1 : 0;
    }
  }
  EXPECT_GT(withFieldInside, 1000);
}

}  // namespace
}  // namespace zarvy
