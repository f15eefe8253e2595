// Texts far larger than a person writes. A search for every placeholder, or an expression that
// starts again at every brace, would take minutes. The tests have no time limit of their own, so a
// mistake shows as a test that does not end.

#include <gtest/gtest.h>

#include "core/CursorMarker.h"
#include "core/placeholders/FillInField.h"
#include "core/placeholders/FillInPlaces.h"
#include "core/placeholders/NestedSnippets.h"
#include "core/placeholders/Passes.h"
#include "fakes/FakePlaceholders.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr qsizetype million = 1'000'000;

QString processed(const QString& text, const QList<GlobalVariable>& variables = {}) {
  FakePlaceholders placeholders;
  placeholders.pasteboard.content = u"clip"_s;
  return processPlaceholders(text, variables, placeholders.services());
}

// About a million UTF-16 units of `piece`.
QString manyOf(const QString& piece) {
  return piece.repeated(million / piece.size());
}

TEST(LargeTexts, WithoutPlaceholdersComeBackAsTheyAre) {
  for (const QString& piece :
       {u"plain text, "_s, u"{"_s, u"}"_s, u"{{"_s, u"}}"_s, u"{ }"_s, QString(QChar(0xD83D)),
        QString(QChar(0)), u"\r\n"_s, u"\u05D0\u202E"_s, u"{{unknown:x}}"_s}) {
    const QString text = manyOf(piece);
    EXPECT_TRUE(processed(text) == text) << testing::PrintToString(piece);
  }
}

TEST(LargeTexts, ThatNeverCloseTheirBracesComeBackAsTheyAre) {
  for (const QString& opener :
       {u"{{#"_s, u"{{date:"_s, u"{{date:+1d:"_s, u"{{time:+1h"_s, u"{{uppercase:"_s,
        u"{{counter:"_s, u"{{counter:a:1"_s, u"{{shell:"_s, u"{{js:"_s}) {
    const QString text = manyOf(opener);
    EXPECT_TRUE(processed(text) == text) << testing::PrintToString(opener);
    EXPECT_TRUE(processed(text + u" }"_s) == text + u" }"_s) << testing::PrintToString(opener);
  }
}

TEST(LargeTexts, HaveEveryPlaceholderReplaced) {
  struct Row {
    QString piece;
    QString value;
  };
  for (const Row& row :
       {Row{u"{{#a}} "_s, u"[#a?] "_s}, Row{u"{{date:+1d:yyyy}} "_s, u"2026 "_s},
        Row{u"{{date:yyyy}} "_s, u"2026 "_s},
        Row{u"{{time:+1h}}{{clipboard}} "_s, u"11:30\u202FAMclip "_s},
        Row{u"{{uppercase:x}} "_s, u"X "_s}, Row{u"{{counter:n:5}} "_s, u"5 "_s},
        Row{u"{{js:1}} "_s, u"<1> "_s}, Row{u"{{uppercase:{{#x}}}} "_s, u"[#X?] "_s}}) {
    const qsizetype count = million / row.piece.size();
    EXPECT_TRUE(processed(row.piece.repeated(count)) == row.value.repeated(count))
        << testing::PrintToString(row.piece);
  }
}

TEST(LargeTexts, HaveAThousandDifferentPlaceholdersReplaced) {
  QString text = manyOf(u"between "_s);
  QString expected = text;
  QList<GlobalVariable> variables;
  for (int index = 0; index < 1000; ++index) {
    const QString name = QString::number(index);
    variables.append({QUuid::createUuid(), name, u"{{#"_s + name, {}, {}});
    text += u"{{#"_s + name + u"}}"_s;
    expected += u"{{#"_s + name;
  }
  EXPECT_TRUE(processed(text, variables) == expected);
}

TEST(LargeTexts, RunAHundredCommands) {
  for (const QString& padding : {manyOf(u"x"_s), manyOf(u"{"_s) + u' '}) {
    EXPECT_TRUE(processed(padding + u"{{shell:a}}"_s.repeated(100)) ==
                padding + u"<a>"_s.repeated(100));
  }
}

// Each is looked for in the whole text, for the braces in front could be the beginning of any.
TEST(LargeTexts, HaveAThousandDifferentPlaceholdersReplacedBehindAMillionOpenBraces) {
  const QString padding = manyOf(u"{"_s) + u"{{counter:never closed {{snippet:{{field: }"_s;
  QString counters = padding;
  QString snippets = padding;
  QString fields = padding;
  QString expected = padding;
  QMap<QString, QString> answers;
  for (int index = 0; index < 1000; ++index) {
    const QString name = QString::number(index);
    counters += u"{{counter:"_s + name + u":7}}"_s;
    snippets += u"{{snippet:"_s + name + u"}}"_s;
    fields += u"{{field:"_s + name + u"}}"_s;
    answers.insert(name, u"7"_s);
    expected += u'7';
  }
  EXPECT_TRUE(processed(counters) == expected);
  const auto seven = [](const QString&) { return u"7"_s; };
  EXPECT_TRUE(expandNestedSnippets(snippets, {}, seven) == expected);
  EXPECT_TRUE(substituteFillInValues(fields, {}, answers) == expected);
}

TEST(LargeTexts, HaveTheirFieldsFound) {
  const FakeFieldDefaults defaults;
  const auto countOf = [&](const QString& text) {
    return parseFillInFields(text, defaults).size();
  };
  for (const QString& opener : {u"{{field:"_s, u"{{field:a:"_s, u"{{textarea:a"_s, u"{{dropdown:"_s,
                                u"{{dropdown:a:b"_s, u"{{?:"_s, u"{{?:a}}"_s, u"{{/?}}"_s}) {
    EXPECT_EQ(countOf(manyOf(opener)), 0) << testing::PrintToString(opener);
  }
  QString text;
  for (int index = 0; text.size() < million; ++index) {
    text += u"{{field:a%1}}{{dropdown:b%1:x,y}}{{?:c%1}}z{{/?}}"_s.arg(index);
  }
  EXPECT_EQ(countOf(text), 3 * text.count(u"{{field:"_s));
  const QString section = u"{{?:a}}"_s + manyOf(u"content\n"_s) + u"{{/?}}"_s;
  EXPECT_EQ(parseFillInFields(section, defaults).value(0).type.content.size(), million);
}

TEST(LargeTexts, HaveTheirAnswersPutIn) {
  const auto answered = [](const QString& text, const QString& answer) {
    return substituteFillInValues(text, {}, {{u"a"_s, answer}});
  };
  const QString open = manyOf(u"{{field:a:"_s);
  EXPECT_TRUE(answered(open, u"x"_s) == open);
  const QString sections = manyOf(u"{{?:a}}"_s);
  EXPECT_TRUE(answered(sections, u"x"_s) == sections);
  EXPECT_TRUE(answered(manyOf(u"{{field:a}} "_s), u"$"_s) == u"$ "_s.repeated(million / 12));
  EXPECT_TRUE(answered(u"{{?:a}}"_s + sections + u"{{/?}}"_s, u"x"_s) == u"x"_s);
}

// Ends by itself after 10,000 runs, so that a test without the limit fails rather than hangs.
class EndlessCommand final : public Evaluator {
 public:
  QString evaluate(const QString& source) override {
    ++runs;
    return runs < 10'000 ? u"x{{shell:"_s + source + u"}}"_s : QString();
  }

  int runs = 0;
};

TEST(LargeTexts, EndWhereACommandAlwaysWritesItself) {
  FakePlaceholders fakes;
  EndlessCommand shell;
  const PlaceholderServices services = fakes.services();
  const auto process = [&](const QString& text) {
    return processPlaceholders(
        text, {},
        {services.clock, services.dates, services.pasteboard, services.mainThread,
         services.counters, services.fieldDefaults, shell, services.javaScript});
  };
  const QString left = u"{{shell:a}}"_s;
  EXPECT_EQ(process(u"a"_s + left + u" {{shell:b}} {{js:c}}"_s),
            u"a"_s + u"x"_s.repeated(100) + left + u" {{shell:b}} <c>"_s);
  EXPECT_EQ(shell.runs, 100);
  EXPECT_EQ(process(left).size(), 100 + left.size()) << "each expansion has the whole limit";
}

TEST(LargeTexts, StayWholeWhereAnAnswerMultipliesThem) {
  const QString section = u"{{?:a}}"_s + manyOf(u"x"_s) + u"{{/?}}"_s;
  const QString answer = u"$0"_s.repeated(100);
  EXPECT_TRUE(substituteFillInValues(section, {}, {{u"a"_s, answer}}) == answer);
}

TEST(LargeTexts, LoseTheirCursorMarkers) {
  const ExpandedText expanded = resolveCursorMarker(manyOf(u"{{cursor}}"_s));
  EXPECT_EQ(expanded.text, QString());
  EXPECT_EQ(expanded.cursorOffset, million - 10);
}

// Ten snippets that each include all ten, on ten levels, would be ten thousand million inclusions.
TEST(LargeTexts, EndWhereSnippetsIncludeEachOtherInEveryWay) {
  QString replacement;
  for (int index = 0; index < 100; ++index) {
    replacement += u"{{snippet:;%1}}"_s.arg(index);
  }
  const QString text =
      expandNestedSnippets(replacement + u"end"_s, {}, [&](const QString&) { return replacement; });
  EXPECT_LE(text.size(), ExpansionLimit::longestText);
  EXPECT_TRUE(text.endsWith(u"end"));
}

}  // namespace
}  // namespace zarvy
