#include <memory>
#include <random>
#include <string>
#include <vector>

#include <QStringList>

#include <gtest/gtest.h>
#include <unicode/brkiter.h>
#include <unicode/unistr.h>

#include "base/text/Graphemes.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

QStringList listed(QStringView text) {
  QStringList result;
  for (const QStringView grapheme : graphemes(text)) result.append(grapheme.toString());
  return result;
}

QStringList listedBackward(QStringView text) {
  QStringList result;
  ReverseGraphemes walk(text);
  for (QStringView grapheme = walk.next(); !grapheme.isEmpty(); grapheme = walk.next()) {
    result.prepend(grapheme.toString());
  }
  return result;
}

const std::vector<QStringList>& samples() {
  static const std::vector<QStringList> table{
      {},
      {u"a"_s},
      {u"a"_s, u"b"_s, u"c"_s},
      {u"e\u0301"_s, u"x"_s},
      {u"\u0301"_s, u"x"_s},
      {u"\u00E9"_s, u"\u044F"_s, u"\u65E5"_s},
      {u"\r\n"_s, u"\n"_s, u"\r"_s, u"a"_s},
      {u"\U0001F600"_s, u"a"_s},
      {u"\U0001F468\u200D\U0001F469\u200D\U0001F467"_s, u"!"_s},
      {u"\U0001F1E9\U0001F1EA"_s, u"\U0001F1EB\U0001F1F7"_s, u"\U0001F1EE"_s},
      {u"\U0001F44D\U0001F3FD"_s},
      {u"1\uFE0F\u20E3"_s, u"2"_s},
      {u"\u1112\u1161\u11AB"_s, u"\u1100\u1173"_s, u"\uD55C"_s},
      {u"\u0600a"_s, u"b"_s},
      {QString(QChar(0xD83D)), u"a"_s, QString(QChar(0xDE00))},
      {QString(QChar(0)), u"\u0001"_s, u"a"_s},
  };
  return table;
}

TEST(Graphemes, AreWhatAPersonTakesForOneCharacter) {
  for (const QStringList& expected : samples()) {
    const QString text = expected.join(QString());
    EXPECT_EQ(listed(text), expected);
    EXPECT_EQ(listedBackward(text), expected);
    EXPECT_EQ(graphemeCount(text), expected.size());
  }
}

TEST(Graphemes, TellWhetherThereAreEnough) {
  for (const QStringList& expected : samples()) {
    const QString text = expected.join(QString());
    for (qsizetype count = 0; count < expected.size() + 3; ++count) {
      EXPECT_EQ(hasGraphemes(text, count), count <= expected.size()) << count;
      EXPECT_EQ(firstGraphemes(text, count).toString(),
                expected.first(std::min(count, expected.size())).join(QString()));
    }
  }
}

TEST(Graphemes, BeginAndEndAtBoundariesOnly) {
  for (const QStringList& expected : samples()) {
    const QString text = expected.join(QString());
    qsizetype position = 0;
    for (const QString& grapheme : expected) {
      EXPECT_TRUE(isGraphemeBoundary(text, position));
      for (qsizetype inside = 1; inside < grapheme.size(); ++inside) {
        EXPECT_FALSE(isGraphemeBoundary(text, position + inside)) << position << ' ' << inside;
      }
      position += grapheme.size();
    }
    EXPECT_TRUE(isGraphemeBoundary(text, text.size()));
  }
}

// What ICU itself says of the whole text, without the quick test.
QStringList reference(const QString& text) {
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<icu::BreakIterator> iterator(
      icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
  const icu::UnicodeString content(reinterpret_cast<const char16_t*>(text.utf16()),
                                   static_cast<int32_t>(text.size()));
  iterator->setText(content);
  QStringList result;
  int32_t start = iterator->first();
  for (int32_t end = iterator->next(); end != icu::BreakIterator::DONE; end = iterator->next()) {
    result.append(text.sliced(start, end - start));
    start = end;
  }
  return result;
}

TEST(Graphemes, AgreeWithTheFullRulesOnRandomTexts) {
  const std::u32string alphabet =
      U"ab1 \r\n\t\u0301\u0308\u00E9\u200D\uFE0F\u20E3\u0600\u0903\u0915\u094D\u0937\u1100\u1161"
      U"\u11A8\uAC00\uAC01\u65E5\u0E33\U0001F1E9\U0001F1EA\U0001F468\U0001F469\U0001F3FD\u2764"
      U"\u00AD\U000E0020\u0D4E";
  std::mt19937 random(20260121);
  std::uniform_int_distribution<std::size_t> pick(0, alphabet.size() + 1);
  std::uniform_int_distribution<int> length(0, 14);
  for (int round = 0; round < 20000; ++round) {
    QString text;
    for (int rest = length(random); rest > 0; --rest) {
      const std::size_t index = pick(random);
      if (index < alphabet.size()) {
        const char32_t codePoint = alphabet[index];
        text.append(QString::fromUcs4(&codePoint, 1));
      } else {
        text.append(QChar(index == alphabet.size() ? 0xD83D : 0xDC68));
      }
    }
    const QStringList expected = reference(text);
    ASSERT_EQ(listed(text), expected);
    ASSERT_EQ(listedBackward(text), expected);
    qsizetype position = 0;
    for (const QString& grapheme : expected) {
      for (qsizetype inside = 0; inside < grapheme.size(); ++inside, ++position) {
        ASSERT_EQ(isGraphemeBoundary(text, position), inside == 0);
      }
    }
  }
}

}  // namespace
}  // namespace zarvy
