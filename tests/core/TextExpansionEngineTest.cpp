#include <gtest/gtest.h>

#include "base/UtcZone.h"
#include "base/text/Regex.h"
#include "core/TextExpansionEngine.h"
#include "core/placeholders/FillInField.h"
#include "fakes/FakePlaceholders.h"
#include "fakes/ManualSteadyClock.h"
#include "fakes/RecordingLineOutput.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

Snippet literal(const QString& trigger, const QString& replacement = u"r"_s) {
  Snippet snippet;
  snippet.id = QUuid::createUuid();
  snippet.title = u"title of "_s + trigger;
  snippet.trigger = trigger;
  snippet.replacement = replacement;
  return snippet;
}

Snippet regex(const QString& trigger) {
  Snippet snippet = literal(trigger);
  snippet.isRegexTrigger = true;
  return snippet;
}

using Captures = QMap<QString, QString>;

struct Row {
  const char* name;
  QList<Snippet> snippets;
  QString buffer;
  qsizetype position = -1;  // of the snippet that matches; -1 for none
  QString matchedString = {};
  Captures captures = {};
};

std::vector<Row> literalRows() {
  return {
      {"an empty library matches nothing", {}, u"abc"_s},
      {"a literal at the end", {literal(u";sig"_s)}, u";sig"_s, 0, u";sig"_s},
      {"no word boundary is needed", {literal(u";sig"_s)}, u"xyz;sig"_s, 0, u";sig"_s},
      {"not in the middle", {literal(u";sig"_s)}, u";sigx"_s},
      {"case counts", {literal(u";sig"_s)}, u";SIG"_s},
      {"triggers that differ in case are different",
       {literal(u";sig"_s), literal(u";SIG"_s)},
       u";SIG"_s,
       1,
       u";SIG"_s},
      {"the first in the list wins, not the longest",
       {literal(u"ab"_s), literal(u"xab"_s)},
       u"xab"_s,
       0,
       u"ab"_s},
      {"the first in the list wins also when longer",
       {literal(u"xab"_s), literal(u"ab"_s)},
       u"xab"_s,
       0,
       u"xab"_s},
      {"a one-character trigger never matches", {literal(u"b"_s)}, u"ab"_s},
      {"an empty trigger never matches", {literal(u""_s)}, u"ab"_s},
      {"one character of many units is one", {literal(u"e\u0301"_s)}, u"ae\u0301"_s},
      {"the matched string is the trigger's own spelling",
       {literal(u"caf\u00E9"_s)},
       u"cafe\u0301"_s,
       0,
       u"caf\u00E9"_s},
      {"a one-character buffer matches nothing", {literal(u"ab"_s), regex(u"a"_s)}, u"a"_s},
      {"nor does one of many units", {regex(u".*"_s)}, u"e\u0301"_s},
      {"an empty buffer matches nothing", {regex(u"x*"_s)}, u""_s},
  };
}

std::vector<Row> regexRows() {
  return {
      {"a literal beats an earlier expression",
       {regex(u"[a-z]+"_s), literal(u"ab"_s)},
       u"xab"_s,
       1,
       u"ab"_s},
      {"the first expression wins",
       {regex(u"\\d"_s), regex(u"b"_s), regex(u"ab"_s)},
       u"ab"_s,
       1,
       u"b"_s},
      {"the matched string is the text, not the trigger",
       {regex(u"a\\d+"_s)},
       u"xa123"_s,
       0,
       u"a123"_s},
      {"a named group is captured",
       {regex(u"(?<word>\\w+)!"_s)},
       u"hello!"_s,
       0,
       u"hello!"_s,
       {{u"word"_s, u"hello"_s}}},
      {"a group that took no part is not",
       {regex(u"(?<a>x)?(?<b>y)"_s)},
       u"zy"_s,
       0,
       u"y"_s,
       {{u"b"_s, u"y"_s}}},
      {"a group that matched nothing is empty",
       {regex(u"(?<a>x*)y"_s)},
       u"zy"_s,
       0,
       u"y"_s,
       {{u"a"_s, u""_s}}},
      {"numbered groups are not captured", {regex(u"(a)(b)"_s)}, u"ab"_s, 0, u"ab"_s},
      {"lookbehinds are no groups", {regex(u"(?<=a)b"_s)}, u"ab"_s, 0, u"b"_s},
      {"a name that is only text is skipped", {regex(u"\\(?<x>b"_s)}, u"<x>b"_s, 0, u"<x>b"_s},
      {"the end mark binds to the last alternative", {regex(u"a|b"_s)}, u"xay"_s, 0, u"a"_s},
      {"a group binds the alternatives", {regex(u"(a|b)"_s)}, u"xay"_s},
      {"an expression that can match nothing always does", {regex(u"x*"_s)}, u"ab"_s, 0, u""_s},
      {"case counts", {regex(u"abc"_s)}, u"ABC"_s},
      {"unless the pattern says otherwise", {regex(u"(?i)abc"_s)}, u"ABC"_s, 0, u"ABC"_s},
      {"the match is the leftmost that reaches the end", {regex(u"a.*"_s)}, u"xaya"_s, 0, u"aya"_s},
      {"a match that begins inside a character is none", {regex(u"\u0301b"_s)}, u"a\u0301b"_s},
      {"a match that ends inside a character is none", {regex(u"a|b"_s)}, u"xa\u0301y"_s},
      {"a match that splits a surrogate pair is none", {regex(u"a|b"_s)}, u"\u0301a\u200Dy"_s},
      {"a capture inside a character is skipped",
       {regex(u"(?<mark>\\p{M})(?<rest>b)|(?<base>a)(?<mark2>\u0301)b"_s)},
       u"xa\u0301b"_s,
       0,
       u"a\u0301b"_s},
      {"a later expression matches where an earlier one cannot",
       {regex(u"\u0301b"_s), regex(u"b"_s)},
       u"a\u0301b"_s,
       1,
       u"b"_s},
  };
}

TEST(TextExpansionEngine, FindsWhatTheTablesSay) {
  for (const auto& rows : {literalRows(), regexRows()}) {
    for (const Row& row : rows) {
      SCOPED_TRACE(row.name);
      RecordingLineOutput output;
      FakePlaceholders placeholders;
      const ManualSteadyClock clock;
      TextExpansionEngine engine(output, clock, placeholders.services());
      engine.setSnippets(row.snippets);
      const auto match = engine.findMatch(row.buffer);
      EXPECT_EQ(output.lines(), QStringList());
      ASSERT_EQ(match.has_value(), row.position >= 0);
      if (!match) continue;
      EXPECT_EQ(match->snippet, row.snippets.at(row.position));
      EXPECT_EQ(match->matchedString, row.matchedString);
      EXPECT_EQ(match->captures, row.captures);
    }
  }
}

class TextExpansionEngineTest : public testing::Test {
 protected:
  RecordingLineOutput m_output;
  FakePlaceholders m_placeholders;
  ManualSteadyClock m_clock;
  TextExpansionEngine m_engine{m_output, m_clock, m_placeholders.services()};
};

TEST_F(TextExpansionEngineTest, BeginsEmpty) {
  EXPECT_TRUE(m_engine.snippets().isEmpty());
  EXPECT_TRUE(m_engine.globalVariables().isEmpty());
  EXPECT_EQ(m_engine.findMatch(u"abc"_s), std::nullopt);
  EXPECT_EQ(m_engine.onNeedsFillIn, nullptr);
  EXPECT_EQ(m_engine.onExpand, nullptr);
}

TEST_F(TextExpansionEngineTest, KeepsTheListsItIsHanded) {
  const QList<Snippet> snippets{literal(u"ab"_s), regex(u"c"_s)};
  m_engine.setSnippets(snippets);
  EXPECT_EQ(m_engine.snippets(), snippets);
  const QList<GlobalVariable> variables{{QUuid::createUuid(), u"City"_s, u"Bern"_s, {}, {}}};
  m_engine.setGlobalVariables(variables);
  EXPECT_EQ(m_engine.globalVariables(), variables);
}

TEST_F(TextExpansionEngineTest, LogsABadPatternForEachBufferAndGoesOn) {
  const Snippet bad = regex(u"(a"_s);
  m_engine.setSnippets({bad, regex(u"b"_s), literal(u"zz"_s)});
  const QString line =
      u"Zarvy: Failed to compile regex for snippet 'title of (a' (trigger: (a): "
      "U_REGEX_MISMATCHED_PAREN at character 3"_s;
  EXPECT_EQ(m_engine.findMatch(u"ab"_s)->matchedString, u"b"_s);
  EXPECT_EQ(m_output.takeLines(), QStringList{line});
  EXPECT_EQ(m_engine.findMatch(u"ac"_s), std::nullopt);
  EXPECT_EQ(m_output.takeLines(), QStringList{line});
  EXPECT_EQ(m_engine.findMatch(u"a"_s), std::nullopt);
  EXPECT_NE(m_engine.findMatch(u"zz"_s), std::nullopt);
  EXPECT_EQ(m_output.takeLines(), QStringList()) << "a short buffer or a literal comes first";
  EXPECT_EQ(m_engine.compiledRegex(bad), nullptr);
  EXPECT_EQ(m_output.takeLines(), QStringList{line});
}

TEST_F(TextExpansionEngineTest, CompilesAnExpressionOnceUntilTheLibraryIsSet) {
  const Snippet snippet = regex(u"a|b"_s);
  m_engine.setSnippets({snippet});
  const auto first = m_engine.compiledRegex(snippet);
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(first->pattern(), u"a|b$"_s);
  EXPECT_EQ(m_engine.compiledRegex(snippet), first);
  static_cast<void>(m_engine.findMatch(u"xx"_s));
  EXPECT_EQ(m_engine.compiledRegex(snippet), first);
  m_engine.setGlobalVariables({});
  EXPECT_EQ(m_engine.compiledRegex(snippet), first);
  m_engine.setSnippets({snippet});
  EXPECT_NE(m_engine.compiledRegex(snippet), first) << "also when no expression changed";
}

TEST_F(TextExpansionEngineTest, KnowsExpressionsByTheIdOfTheirSnippet) {
  Snippet snippet = regex(u"a"_s);
  m_engine.setSnippets({snippet});
  const auto first = m_engine.compiledRegex(snippet);
  snippet.trigger = u"b"_s;
  EXPECT_EQ(m_engine.compiledRegex(snippet), first);
  m_engine.setSnippets({snippet});
  EXPECT_EQ(m_engine.compiledRegex(snippet)->pattern(), u"b$"_s);
}

TEST_F(TextExpansionEngineTest, UsesAnEditedExpressionAtOnce) {
  Snippet snippet = regex(u"ab"_s);
  m_engine.setSnippets({snippet});
  EXPECT_NE(m_engine.findMatch(u"ab"_s), std::nullopt);
  snippet.trigger = u"cd"_s;
  m_engine.setSnippets({snippet});
  EXPECT_EQ(m_engine.findMatch(u"ab"_s), std::nullopt);
  EXPECT_NE(m_engine.findMatch(u"cd"_s), std::nullopt);
}

TEST_F(TextExpansionEngineTest, MatchesOneExpressionOnRequest) {
  const auto match = m_engine.matchRegex(regex(u"(?<n>\\d+)x"_s), u"a12x"_s);
  ASSERT_TRUE(match);
  EXPECT_EQ(match->matchedString, u"12x"_s);
  EXPECT_EQ(match->captures, (Captures{{u"n"_s, u"12"_s}}));
  EXPECT_EQ(m_engine.matchRegex(regex(u"b"_s), u"a"_s), std::nullopt);
  EXPECT_NE(m_engine.matchRegex(regex(u"a"_s), u"a"_s), std::nullopt)
      << "the length of the buffer is not its business";
}

TEST_F(TextExpansionEngineTest, HandsAReplacementWithoutPlaceholdersOnAsItIs) {
  const QString text = u"a\n\t\u00E9 $1 \\ {not} }} "_s;
  const auto expanded = m_engine.processSnippet(literal(u"ab"_s, text), {});
  EXPECT_EQ(expanded, (ExpandedText{text, std::nullopt}));
}

TEST_F(TextExpansionEngineTest, TellsWhereTheCaretGoes) {
  const auto expanded = m_engine.processSnippet(literal(u"ab"_s, u"f({{cursor}})"_s), {});
  EXPECT_EQ(expanded, (ExpandedText{u"f()"_s, 1}));
}

TEST_F(TextExpansionEngineTest, AsksForTheFieldsOfAReplacementBeforeAnythingElseHappens) {
  m_engine.setSnippets({literal(u";name"_s, u"{{field:Name}} {{counter:n}}"_s)});
  Snippet snippet = literal(u"letter"_s, u"Dear {{snippet:;name}} {{who}} {{shell:date}}"_s);
  QList<Snippet> asking;
  QStringList names;
  m_engine.onNeedsFillIn = [&](const Snippet& resolved, const QList<FillInField>& fields) {
    asking.append(resolved);
    for (const FillInField& field : fields) names.append(field.name);
  };
  EXPECT_EQ(m_engine.processSnippet(snippet, {{u"who"_s, u"{{textarea:Who}}"_s}}), std::nullopt);
  snippet.replacement = u"Dear {{field:Name}} {{counter:n}} {{textarea:Who}} {{shell:date}}"_s;
  EXPECT_EQ(asking, QList<Snippet>{snippet}) << "captures and nested snippets are in place";
  EXPECT_EQ(names, (QStringList{u"Name"_s, u"Who"_s}));
  EXPECT_TRUE(m_placeholders.counters.values.isEmpty());
  EXPECT_TRUE(m_placeholders.shell.asked.isEmpty());
}

TEST_F(TextExpansionEngineTest, WaitsForTheFormAlsoWithoutAListener) {
  EXPECT_EQ(m_engine.processSnippet(literal(u"ab"_s, u"{{field:Name}}"_s), {}), std::nullopt);
}

TEST_F(TextExpansionEngineTest, PutsTheAnswersIntoAnySnippet) {
  m_engine.setSnippets({literal(u";name"_s, u"{{field:Name}}"_s)});
  m_engine.setGlobalVariables({{QUuid(), u"City"_s, u"Paris"_s, {}, {}}});
  const Snippet snippet = literal(u"ab"_s, u"{{snippet:;name}} in {{#city}}{{cursor}}"_s);
  EXPECT_EQ(m_engine.applyFillInValues(snippet, {{u"Name"_s, u"Ada"_s}}),
            u"Ada in Paris{{cursor}}"_s);
}

TEST_F(TextExpansionEngineTest, GivesEveryFieldOfEveryParseAnIdOfItsOwn) {
  const QString text = u"{{field:a}}{{dropdown:b:x,y}}{{?:c}}z{{/?}}{{textarea:d}}"_s;
  QList<FillInField> first = m_engine.parseFillInFields(text);
  QList<FillInField> second = m_engine.parseFillInFields(text);
  ASSERT_EQ(first.size(), 4);
  QSet<QUuid> ids;
  for (FillInField& field : first) ids.insert(std::exchange(field.id, {}));
  for (FillInField& field : second) ids.insert(std::exchange(field.id, {}));
  EXPECT_EQ(ids.size(), 8);
  EXPECT_EQ(first, second);
}

// Goes on by a day with every reading.
class RestlessClock final : public Clock {
 public:
  [[nodiscard]] QDateTime now() const override {
    return QDateTime(QDate(2026, 1, 21), QTime(12, 0), utcZone).addDays(m_readings++);
  }

 private:
  mutable int m_readings = 0;
};

TEST(TextExpansionEngine, ReadsTheClockOnceForTodayAndAgainForEachRelativeDate) {
  RecordingLineOutput output;
  FakePlaceholders fakes;
  const RestlessClock clock;
  const PlaceholderServices services = fakes.services();
  const ManualSteadyClock steadyClock;
  const TextExpansionEngine engine(
      output, steadyClock,
      {clock, services.dates, services.pasteboard, services.mainThread, services.counters,
       services.fieldDefaults, services.shell, services.javaScript});
  EXPECT_EQ(engine.processPlaceholders(
                u"{{date:d}} {{date:short}} {{date:dd}} {{date:+0d:d}} {{date:-0d:d}}"_s),
            u"23 1/23/26 23 21 22"_s);
}

}  // namespace
}  // namespace zarvy
