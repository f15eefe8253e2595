#include <gtest/gtest.h>

#include "support/QtPrinters.h"
#include "ui/preview/PreviewText.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

using Kind = FillInFieldType::Kind;

const PreviewDates dates{u"1/21/26"_s, u"Jan 21, 2026"_s, u"January 21, 2026"_s, u"10:30 AM"_s};

FillInField field(Kind kind, const QString& name, const QString& value, bool isRequired = false) {
  FillInField result;
  result.name = name;
  result.type.kind = kind;
  result.value = value;
  result.isRequired = isRequired;
  return result;
}

FillInField section(const QString& name, bool isChecked) {
  FillInField result = field(Kind::optional, name, {});
  result.isChecked = isChecked;
  return result;
}

Snippet snippet(const QString& trigger, const QString& replacement) {
  Snippet result;
  result.trigger = trigger;
  result.replacement = replacement;
  return result;
}

// Regular runs between < and >, required ones between << and >>; each run ends with a bar.
QString written(const QList<PreviewRun>& runs) {
  QString text;
  for (const PreviewRun& run : runs) {
    if (run.kind == PreviewRun::Kind::plain) text += run.text;
    if (run.kind == PreviewRun::Kind::regular) text += u'<' + run.text + u'>';
    if (run.kind == PreviewRun::Kind::required) text += u"<<"_s + run.text + u">>"_s;
    text += u'|';
  }
  return text;
}

struct Row {
  QString replacement;
  QList<FillInField> fields;
  QString preview;
};

void expectRows(const QList<Row>& rows, const QList<Snippet>& snippets = {}) {
  for (const Row& row : rows) {
    EXPECT_EQ(written(previewRuns(row.replacement, row.fields, snippets, dates)), row.preview)
        << row.replacement.toStdString();
  }
}

TEST(Preview, ShowsTheValueOfAField) {
  const FillInField name = field(Kind::text, u"Name"_s, u"Ada"_s);
  const FillInField blank = field(Kind::text, u"Name"_s, {});
  const FillInField required = field(Kind::text, u"Name"_s, u"Ada"_s, true);
  const FillInField blankRequired = field(Kind::text, u"Name"_s, {}, true);
  expectRows({
      {{}, {}, {}},
      {u"plain"_s, {}, u"plain|"_s},
      {u"Dear {{field:Name}}!"_s, {name}, u"Dear |<Ada>|!|"_s},
      {u"{{field:Name}}{{field:Name:x}}"_s, {name}, u"<Ada>|<Ada>|"_s},
      {u"{{field:Name:a:b:required}}"_s, {name}, u"<Ada>|"_s},
      {u"{{field:Name}}"_s, {blank}, u"<[Name]>|"_s},
      {u"{{field:Name:required}}"_s, {blankRequired}, u"<<[Name]>>|"_s},
      {u"{{field:Name:required}}"_s, {required}, u"<<Ada>>|"_s},
      {u"{{field:Name}}"_s, {field(Kind::text, u"Name"_s, u" "_s)}, u"< >|"_s},
      {u"{{field:Other}} {{field:Name}}"_s, {name}, u"{{field:Other}} |<Ada>|"_s},
      {u"{{field:Names}} {{Field:Name}} {{field:Name}"_s,
       {name},
       u"{{Field:Name}} {{field:Name}|"_s.prepend(u"{{field:Names}} "_s)},
      {u"{{textarea:Name}} {{dropdown:Name:a,b}}"_s,
       {name},
       u"{{textarea:Name}} {{dropdown:Name:a,b}}|"_s},
      {u"{{textarea:N:x}}"_s, {field(Kind::textarea, u"N"_s, u"a\nb"_s)}, u"<a\nb>|"_s},
      {u"{{dropdown:N:a,b}} {{dropdown:N:}} {{dropdown:N}}"_s,
       {field(Kind::dropdown, u"N"_s, u"b"_s)},
       u"<b>| {{dropdown:N:}} {{dropdown:N}}|"_s},
      {u"{{field:C++ (new)}}"_s, {field(Kind::text, u"C++ (new)"_s, u"x"_s)}, u"<x>|"_s},
      {u"{{field:<b>&amp;}}"_s, {field(Kind::text, u"<b>&amp;"_s, {})}, u"<[<b>&amp;]>|"_s},
      {u"{{field:\u05E9\u05DD}}"_s,
       {field(Kind::text, u"\u05E9\u05DD"_s, u"\U0001F600"_s)},
       u"<\U0001F600>|"_s},
  });
}

TEST(Preview, ReadsAValueAsATemplate) {
  const auto withValue = [](const QString& value) {
    return QList<FillInField>{field(Kind::text, u"A"_s, value)};
  };
  expectRows({
      {u"{{field:A:x}}"_s, withValue(u"$0"_s), u"<{{field:A:x}}>|"_s},
      {u"{{field:A}}"_s, withValue(u"a\\b\\\\c"_s), u"<ab\\c>|"_s},
      {u"{{field:A}}"_s, withValue(u"\\$5"_s), u"<$5>|"_s},
      {u"{{field:A}}"_s, withValue(u"ends in \\"_s), u"<ends in >|"_s},
      // No template, since there is no such group: it goes in as it is.
      {u"{{field:A}}"_s, withValue(u"$1"_s), u"<$1>|"_s},
      {u"{{field:A}}"_s, withValue(u"5 $"_s), u"<5 $>|"_s},
      {u"{{field:a $ b}}"_s, {field(Kind::text, u"a $ b"_s, {})}, u"<[a $ b]>|"_s},
  });
}

TEST(Preview, ReplacesOneFieldAfterTheOther) {
  const FillInField b = field(Kind::text, u"B"_s, u"y"_s);
  expectRows({
      {u"{{field:A}}"_s, {field(Kind::text, u"A"_s, u"{{field:B}}"_s), b}, u"<y>|"_s},
      {u"{{field:A}}"_s, {b, field(Kind::text, u"A"_s, u"{{field:B}}"_s)}, u"<{{field:B}}>|"_s},
      {u"{{field:A}}"_s, {field(Kind::text, u"A"_s, u"a {{field:B}} c"_s), b}, u"<a y>| c|"_s},
      {u"{{field:A:{{field:B}}"_s, {field(Kind::text, u"A"_s, u"x"_s), b}, u"<x>|"_s},
      {u"{{field:A:{{field:B}}"_s, {b, field(Kind::text, u"A"_s, u"x"_s)}, u"{{field:A:|<y>|"_s},
      {u"{{field:A}}"_s, {field(Kind::text, u"A"_s, u"{{time}}"_s)}, u"<10:30 AM>|"_s},
  });
}

TEST(Preview, ShowsASectionWithoutAnyMark) {
  const FillInField on = section(u"S"_s, true);
  const FillInField off = section(u"S"_s, false);
  expectRows({
      {u"a {{?:S}}b{{/?}} c"_s, {on}, u"a b c|"_s},
      {u"a {{?:S}}b{{/?}} c"_s, {off}, u"a  c|"_s},
      {u"{{?:S}}b\nc{{/?}}{{/?}}"_s, {on}, u"b\nc{{/?}}|"_s},
      {u"{{?:S}}{{/?}}"_s, {on}, {}},
      {u"{{?:S}}first{{/?}}, {{?:S}}second{{/?}}"_s, {on}, u"first, first|"_s},
      {u"{{?:S}}first{{/?}}, {{?:S}}second{{/?}}"_s, {off}, u", |"_s},
      {u"{{?:S}}costs $1{{/?}}"_s, {on}, u"costs costs $1|"_s},
      {u"{{?:S}}a$1{{/?}}, {{?:S}}b{{/?}}"_s, {on}, u"aa$1, ab|"_s},
      {u"{{?:S}}\\$1 and $2{{/?}}"_s, {on}, u"\\$1 and $2|"_s},
      {u"{{?:S}}never closed"_s, {on}, u"{{?:S}}never closed|"_s},
      {u"{{?:S}}{{field:A}}{{/?}}"_s, {field(Kind::text, u"A"_s, u"x"_s), on}, u"<x>|"_s},
  });
}

TEST(Preview, ConvertsLetters) {
  const FillInField name = field(Kind::text, u"Name"_s, u"ada l"_s);
  const FillInField required = field(Kind::text, u"Name"_s, u"Ada L"_s, true);
  expectRows({
      {u"{{uppercase:stra\u00DFe}}"_s, {}, u"<STRASSE>|"_s},
      {u"{{lowercase:ABC}} {{titlecase:the END}}"_s, {}, u"<abc>| |<The End>|"_s},
      {u"{{uppercase:}} {{uppercase:a}"_s, {}, u"{{uppercase:}} {{uppercase:a}|"_s},
      {u"{{uppercase:dear {{field:Name}}!}}"_s, {name}, u"<DEAR ADA L!>|"_s},
      {u"{{lowercase:{{field:Name}}}}"_s, {required}, u"<ada l>|"_s},
      {u"{{titlecase:{{field:Name}}}}"_s, {name}, u"<Ada L>|"_s},
  });
}

TEST(Preview, NamesWhatItDoesNotWorkOut) {
  const FillInField name = field(Kind::text, u"N"_s, u"x"_s);
  expectRows({
      {u"{{counter:invoice}} {{counter:a:5}} {{counter:a:b:c}} {{counter::1}}"_s,
       {},
       u"<[#invoice]>| |<[#a]>| |<[#a]>| |<[#]>|"_s},
      {u"{{js:123456789012345}}"_s, {}, u"<[js:123456789012345]>|"_s},
      {u"{{js:1234567890123456}}"_s, {}, u"<[js:123456789012345...]>|"_s},
      {u"{{js:\U0001F468\u200D\U0001F469\u200D\U0001F467}}"_s,
       {},
       u"<[js:\U0001F468\u200D\U0001F469\u200D\U0001F467]>|"_s},
      {u"{{js:f({{field:N}})}}"_s, {name}, u"<[js:f(x)]>|"_s},
      {u"{{#Name}} {{shell:ls}} {{unknown}} {{date:yyyy}}"_s,
       {},
       u"{{#Name}} {{shell:ls}} {{unknown}} {{date:yyyy}}|"_s},
      {u"{{clipboard}}{{cursor}}"_s, {}, u"<[clipboard]>|<[cursor]>|"_s},
  });
}

TEST(Preview, WritesDatesAndNamesOffsets) {
  expectRows({
      {u"{{date:short}} {{date:medium}} {{date:long}} {{time}}"_s,
       {},
       u"<1/21/26>| |<Jan 21, 2026>| |<January 21, 2026>| |<10:30 AM>|"_s},
      {u"{{date}} {{date:full}}"_s, {}, u"{{date}} {{date:full}}|"_s},
      {u"{{date:+1d}} {{date:-1d}} {{date:+7d}} {{date:+1m}}"_s,
       {},
       u"<[+1d]>| |<[-1d]>| |<[+7d]>| |<[+1m]>|"_s},
      {u"{{time:+1h}} {{time:+30M}} {{time:2h}} {{time:+1d}}"_s,
       {},
       u"<[+1h]>| |<[+30M]>| |<[2h]>| {{time:+1d}}|"_s},
      {u"{{date:+1d:long}} {{date:3w:yyyy_MM}} {{date:-2y:a b}} {{date:+1h}} {{date:+1d:}}"_s,
       {},
       u"<[+1d]>| |<[3w]>| {{date:-2y:a b}} {{date:+1h}} {{date:+1d:}}|"_s},
      {u"{{date:{{date:+1d}}"_s, {}, u"{{date:|<[+1d]>|"_s},
  });
}

TEST(Preview, ResolvesNestedSnippetsDownToFiveLevels) {
  const QList<Snippet> snippets{snippet(u";a"_s, u"A{{snippet:;b}}"_s),
                                snippet(u";b"_s, u"B {{field:N}}"_s),
                                snippet(u";a"_s, u"never"_s),
                                snippet(u";me"_s, u"m{{snippet:;me}}"_s),
                                snippet(u";ping"_s, u"i{{snippet:;pong}}"_s),
                                snippet(u";pong"_s, u"o{{snippet:;ping}}"_s)};
  expectRows(
      {
          {u"{{snippet:;a}}!"_s, {field(Kind::text, u"N"_s, u"x"_s)}, u"AB |<x>|!|"_s},
          {u"{{snippet:;none}}"_s, {}, u"[snippet not found: ;none]|"_s},
          {u"{{snippet:;A}}"_s, {}, u"[snippet not found: ;A]|"_s},
          {u"{{snippet:}}"_s, {}, u"{{snippet:}}|"_s},
          {u"{{snippet:;me}}"_s, {}, u"mmmmm{{snippet:;me}}|"_s},
          {u"{{snippet:;ping}}"_s, {}, u"ioioi{{snippet:;pong}}|"_s},
          {u"{{snippet:;b}}{{snippet:;b}}"_s,
           {field(Kind::text, u"N"_s, {})},
           u"B |<[N]>|B |<[N]>|"_s},
      },
      snippets);
}

TEST(Preview, DoesNotScanWhatANestedSnippetPutIn) {
  const QList<Snippet> snippets{snippet(u"x"_s, u"{{snippet:"_s), snippet(u"y"_s, u"Y"_s)};
  expectRows({{u"{{snippet:x}}y}}"_s, {}, u"{{snippet:y}}|"_s}}, snippets);
}

TEST(Preview, EndsWhereSnippetsMultiplyThemselves) {
  const QList<Snippet> snippets{snippet(u"x"_s, u"{{snippet:x}}"_s.repeated(2000))};
  const QList<PreviewRun> runs = previewRuns(u"{{snippet:x}}"_s, {}, snippets, dates);
  ASSERT_EQ(runs.size(), 1);
  EXPECT_TRUE(runs.front().text.startsWith(u"{{snippet:x}}"));
}

TEST(Preview, IsNotCarriedAwayByAnImmenseValue) {
  const QString places = u"{{field:A}}"_s.repeated(1000);
  const QString value(1'000'000, u'x');
  const auto runs = previewRuns(places, {field(Kind::text, u"A"_s, value)}, {}, dates);
  ASSERT_EQ(runs.size(), 1) << "the text would be a gigabyte";
  EXPECT_EQ(runs.front().text, places);
}

TEST(Preview, LeavesAMarkThatIsNeverClosedInAPlainRun) {
  // Users do not type such marks. Where a text holds them they never show.
  expectRows({
      {u"a\uFEFF<<\uFEFFb"_s, {}, u"ab|"_s},
      {u"a\uFEFF<<\uFEFFb\uFEFF>>\uFEFFc"_s, {}, u"a|<b>|c|"_s},
      {u"a\uFEFF[[REQ\uFEFFb\uFEFFREQ]]\uFEFF"_s, {}, u"a|<<b>>|"_s},
      {u"\uFEFF"_s, {}, u"\uFEFF|"_s},
  });
}

}  // namespace
}  // namespace zarvy
