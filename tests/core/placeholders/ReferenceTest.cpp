// Random texts, made of the pieces that the language is made of, against the reference.

#include <gtest/gtest.h>

#include "core/placeholders/Captures.h"
#include "core/placeholders/FillInField.h"
#include "core/placeholders/FillInPlaces.h"
#include "core/placeholders/NestedSnippets.h"
#include "core/placeholders/Passes.h"
#include "core/placeholders/RandomText.h"
#include "core/placeholders/ReferenceLanguage.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

const QStringList marks{u"{"_s, u"}"_s, u"{{"_s, u"}}"_s, u":"_s, u"a"_s, u"b"_s, u" "_s};

GlobalVariable variable(const QString& name, const QString& value) {
  return {QUuid::createUuid(), name, value, {}, {}};
}

Snippet snippet(const QString& trigger, const QString& replacement) {
  Snippet result;
  result.trigger = trigger;
  result.replacement = replacement;
  return result;
}

// Two of everything, so that what one road does to the counters does not reach the other.
struct Roads {
  Roads(QList<Snippet> snippets, QList<GlobalVariable> globalVariables)
      : variables(globalVariables), reference(std::move(snippets), globalVariables, expected) {
    for (FakePlaceholders* placeholders : {&actual, &expected}) {
      placeholders->pasteboard.content = u"}}{{js:a}} {{#a}}"_s;
      placeholders->shell.addAnswer(u"a"_s, u"{{shell:b}}"_s);
      placeholders->shell.addAnswer(u"a"_s, u"}} {{js:b}}"_s);
      placeholders->shell.addAnswer(u"b"_s, u""_s);
      placeholders->javaScript.addAnswer(u"a"_s, u"{{js:b}}"_s);
      placeholders->javaScript.addAnswer(u"b"_s, u"{{js:a}}"_s);
      placeholders->javaScript.addAnswer(u"b"_s, u"{"_s);
      placeholders->fieldDefaults.values.insert(u"b"_s, u"remembered"_s);
    }
  }

  QList<GlobalVariable> variables;
  FakePlaceholders actual;
  FakePlaceholders expected;
  ReferenceLanguage reference;
};

// How many texts of one kind of pieces are compared.
constexpr int textCount = 5'000;

void comparePasses(const QStringList& pieces, unsigned seed) {
  RandomText random(marks + pieces, seed);
  for (int index = 0; index < textCount; ++index) {
    Roads roads({}, {variable(u"a"_s, u"{{#b}}"_s), variable(u"b"_s, u"{{#"_s),
                     variable(u"A"_s, u"never"_s), variable(u"aa"_s, u""_s)});
    const QString text = random.next(20);
    const QString actual = processPlaceholders(text, roads.variables, roads.actual.services());
    ASSERT_EQ(actual, roads.reference.processed(text)) << testing::PrintToString(text);
    ASSERT_EQ(roads.actual.counters.values, roads.expected.counters.values);
    ASSERT_EQ(roads.actual.shell.asked, roads.expected.shell.asked);
    ASSERT_EQ(roads.actual.javaScript.asked, roads.expected.javaScript.asked);
  }
}

TEST(PlaceholdersAgainstTheReference, GlobalVariables) {
  comparePasses({u"{{#"_s, u"{{#a}}"_s, u"{{#b}}"_s, u"{{#aa}}"_s, u"#"_s, u"\n"_s}, 1);
}

TEST(PlaceholdersAgainstTheReference, Dates) {
  comparePasses({u"{{date:"_s, u"{{time:"_s, u"+1"_s, u"-2"_s, u"d"_s, u"w"_s, u"m"_s, u"y"_s,
                 u"h"_s, u"M"_s, u"short"_s, u"long"_s, u"medium"_s, u"{{time}}"_s,
                 u"{{date:short}}"_s, u"99999999999999999999"_s, u"yyyy"_s},
                2);
}

TEST(PlaceholdersAgainstTheReference, ClipboardAndCase) {
  comparePasses({u"{{clipboard}}"_s, u"{{uppercase:"_s, u"{{lowercase:"_s, u"{{titlecase:"_s,
                 u"{{upper"_s, u"case:"_s, u"\u00E9"_s, u"\u0301"_s, u"{{#aa}}"_s},
                3);
}

TEST(PlaceholdersAgainstTheReference, Counters) {
  comparePasses({u"{{counter:"_s, u"{{counter:a}}"_s, u"{{counter:b}}"_s, u":reset"_s, u":0"_s,
                 u"1"_s, u"2"_s, u":7}}"_s, u"{{counter:a:7}}"_s},
                4);
}

TEST(PlaceholdersAgainstTheReference, CommandsAndScripts) {
  comparePasses(
      {u"{{shell:"_s, u"{{shell:a}}"_s, u"{{shell:b}}"_s, u"{{js:"_s, u"{{js:a}}"_s, u"{{js:b}}"_s,
       u"\u0301"_s, u"\u0600"_s, QString(QChar(0xD83D)), QString(QChar(0xDE00)), QString(QChar(0))},
      5);
}

TEST(PlaceholdersAgainstTheReference, NestedSnippets) {
  RandomText random(
      marks + QStringList{u"{{snippet:"_s, u"{{snippet:a}}"_s, u"{{snippet:b}}"_s, u"snippet:"_s},
      6);
  for (int index = 0; index < textCount; ++index) {
    const QList<Snippet> snippets{snippet(u"a"_s, random.next(6)), snippet(u"b"_s, random.next(6)),
                                  snippet(u"a"_s, u"never"_s)};
    const Roads roads(snippets, {});
    const auto replacementOf = [&](const QString& trigger) -> std::optional<QString> {
      if (trigger == u"a") return snippets[0].replacement;
      if (trigger == u"b") return snippets[1].replacement;
      return std::nullopt;
    };
    const QString text = random.next(10);
    ASSERT_EQ(expandNestedSnippets(text, {}, replacementOf),
              roads.reference.withNestedSnippets(text, {}))
        << testing::PrintToString(text);
  }
}

TEST(PlaceholdersAgainstTheReference, Captures) {
  RandomText random(marks + QStringList{u"{{a}}"_s, u"{{b}}"_s}, 7);
  for (int index = 0; index < textCount; ++index) {
    const Roads roads({}, {});
    const QMap<QString, QString> captures{{u"a"_s, random.next(4)}, {u"b"_s, random.next(4)}};
    const QString text = random.next(10);
    ASSERT_EQ(applyCaptures(text, captures), roads.reference.withCaptures(text, captures));
  }
}

const QStringList fillInPieces{
    u"{{field:"_s,    u"{{textarea:"_s, u"{{dropdown:"_s, u"{{?:"_s,         u"{{/?}}"_s,
    u"{{field:a}}"_s, u"{{field:b}}"_s, u"required"_s,    u":required}}"_s,  u","_s,
    u"\t"_s,          u"\n"_s,          u"{{?:a}}"_s,     u"{{dropdown:a:"_s};

TEST(FillInsAgainstTheReference, Fields) {
  RandomText random(marks + fillInPieces, 8);
  const Roads roads({}, {});
  for (int index = 0; index < 2 * textCount; ++index) {
    const QString text = random.next(24);
    QList<FillInField> fields = parseFillInFields(text, roads.actual.fieldDefaults);
    for (FillInField& field : fields) field.id = QUuid();
    ASSERT_TRUE(fields == roads.reference.fields(text)) << testing::PrintToString(text);
  }
}

TEST(FillInsAgainstTheReference, Answers) {
  RandomText random(marks + fillInPieces + fillInPieces, 9);
  RandomText answer(fillInPieces + QStringList{u"$"_s, u"$0"_s, u"$1"_s, u"\\"_s, u"\\u0041"_s,
                                               u"\\U0001F600"_s, u"{a}"_s, u"0"_s, u"u"_s},
                    10);
  const QStringList names{u"a"_s, u"b"_s, u"a b"_s, u"a:b"_s, u"{{field"_s, u""_s, u"}"_s};
  const Roads roads({}, {});
  for (int index = 0; index < 2 * textCount; ++index) {
    const QString text = random.next(16);
    const QMap<QString, QString> answers{{random.oneOf(names), answer.next(3)},
                                         {random.oneOf(names), answer.next(3)}};
    const QList<FillInField> fields = parseFillInFields(text, roads.actual.fieldDefaults);
    ASSERT_EQ(substituteFillInValues(text, fields, answers),
              roads.reference.withAnswers(text, answers))
        << testing::PrintToString(text) << ' ' << testing::PrintToString(answers.values())
        << testing::PrintToString(QStringList(answers.keys()));
  }
}

}  // namespace
}  // namespace zarvy
