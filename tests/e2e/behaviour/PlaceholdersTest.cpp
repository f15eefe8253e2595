// The placeholder language at work: what replacements with placeholders become in an application,
// and what is kept on disk of that.

#include <optional>

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>

#include "e2e/behaviour/BehaviourTest.h"
#include "e2e/harness/ClipboardOwner.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

// All year; whatever the hour, the date of one of them is not that of Greenwich.
constexpr int hoursAheadOfKiritimati = 14;
constexpr int hoursAheadOfPagoPago = -11;

QDateTime nowAt(int hoursAhead) {
  return QDateTime::currentDateTimeUtc().toOffsetFromUtc(hoursAhead * 60 * 60);
}

class Placeholders : public BehaviourTest {
 protected:
  // The program of the test, which is not started yet; the stage gives it its folder and display.
  ProgramUnderTest& makeProgram(ProgramUnderTest::Setting setting) {
    setting.environment = stage().environment();
    setting.homeFolder = stage().makeFolder("program");
    return m_program.emplace(std::move(setting));
  }

  ProgramUnderTest& makeProgramIn(const Environment& region) {
    return makeProgram(
        {.program = programPath(), .environment = {}, .homeFolder = {}, .region = region});
  }

  // The application comes to hold the text of the moment, be it that of the last key or a later
  // one: a minute or a day may end in between.
  template <typename TextNow>
  void expectTheTextOfNow(const QString& trigger, TextNow textNow) {
    const QString earliest = textNow();
    person().type(trigger);
    const auto holdsIt = [&] {
      const QString text = target().state().text;
      return text == earliest || text == textNow();
    };
    EXPECT_TRUE(waitUntil(holdsIt, std::chrono::seconds(10)))
        << complaintAbout({earliest, earliest.size()}, target().state());
    expectNothingMoreAfter(target().state().text);
  }

  // The person's next key proves it; then the application is emptied.
  void expectNothingMoreAfter(const QString& text) {
    person().type(u" "_s);
    expectText(text + u" "_s);
    target().clear();
  }

 private:
  std::optional<ProgramUnderTest> m_program;
};

struct DatesOfARegion {
  std::string name;
  TargetKind target = TargetKind::xterm;
  Environment region;
  int hoursAhead = 0;
  QLocale language;
  QString longDate;  // as Qt writes formats
  QString shortTime;
};

void PrintTo(const DatesOfARegion& dates, std::ostream* stream) {
  *stream << dates.name;
}

class PlaceholdersOfTheFirstRun : public Placeholders,
                                  public testing::WithParamInterface<DatesOfARegion> {};

TEST_P(PlaceholdersOfTheFirstRun, showDateAndTimeInTheLanguageAndZoneOfTheUser) {
  const DatesOfARegion& dates = GetParam();
  ProgramUnderTest& program = makeProgramIn(dates.region);
  program.start();
  stage().startTarget(dates.target);
  const auto nowIn = [&](const QString& format) {
    return [&dates, format] { return dates.language.toString(nowAt(dates.hoursAhead), format); };
  };
  expectTheTextOfNow(u";date"_s, nowIn(dates.longDate));
  expectTheTextOfNow(u";time"_s, nowIn(dates.shortTime));
  EXPECT_EQ(program.expansionCount(), 2);
}

INSTANTIATE_TEST_SUITE_P(
    In, PlaceholdersOfTheFirstRun,
    testing::Values(
        DatesOfARegion{
            .name = "German",
            .target = TargetKind::mousepad,
            .region = {{"LC_ALL", ""}, {"LANG", "de_DE.UTF-8"}, {"TZ", "Pacific/Kiritimati"}},
            .hoursAhead = hoursAheadOfKiritimati,
            .language = QLocale(QLocale::German, QLocale::Germany),
            .longDate = u"d. MMMM yyyy"_s,
            .shortTime = u"HH:mm"_s},
        DatesOfARegion{.name = "Japanese",
                       .target = TargetKind::xterm,
                       .region = {{"LC_ALL", "ja_JP.UTF-8"}, {"TZ", "Pacific/Pago_Pago"}},
                       .hoursAhead = hoursAheadOfPagoPago,
                       .language = QLocale(QLocale::Japanese, QLocale::Japan),
                       .longDate = u"yyyy年M月d日"_s,
                       .shortTime = u"H:mm"_s}),
    [](const auto& instance) { return instance.param.name; });

TEST_F(Placeholders, ofDatesAndThoseOfScriptsSpeakTheLanguageThatTheUserHasForDates) {
  ProgramUnderTest& program = makeProgramIn({{"LC_ALL", ""},
                                             {"LANG", "en_US.UTF-8"},
                                             {"LC_TIME", "de_DE.UTF-8"},
                                             {"TZ", "Pacific/Kiritimati"}});
  program.writeLibrary({{u";pl"_s, u"{{date:medium}}"_s}, {u";js"_s, u"{{js:today()}}"_s}});
  program.start();
  stage().startTarget(TargetKind::xterm);
  const auto today = [] { return nowAt(hoursAheadOfKiritimati).toString(u"dd.MM.yyyy"_s); };
  expectTheTextOfNow(u";pl"_s, today);
  expectTheTextOfNow(u";js"_s, today);
}

struct TypedTrigger {
  QString trigger;
  QString expected;
};

const QString copiedText = u"größer als 漢字"_s;

const std::vector<TestSnippet>& library() {
  static const std::vector<TestSnippet> snippets = {
      {u";js"_s, u"{{js:[3, 1, 2].sort().join('-')}}"_s},
      {u";sh"_s, u"{{shell:printf 'b\\na\\n' | sort}}"_s},
      {u";co"_s, u"No. {{counter:invoice}}"_s},
      {u";cl"_s, u"<{{clipboard}}>"_s},
      {u";gl"_s, u"in {{#city}}"_s},
      {u";ne"_s, u"({{snippet:;gl}}, {{snippet:;no}})"_s},
      {u";ca"_s, u"{{uppercase:{{clipboard}}}} {{titlecase:the quick FOX}}"_s},
  };
  return snippets;
}

const std::vector<TypedTrigger>& session() {
  static const std::vector<TypedTrigger> triggers = {
      {u";js"_s, u"1-2-3"_s},
      {u";sh"_s, u"a\nb"_s},
      {u";co"_s, u"No. 1"_s},
      {u";co"_s, u"No. 2"_s},
      {u";cl"_s, u"<größer als 漢字>"_s},
      {u";gl"_s, u"in Zürich"_s},
      {u";ne"_s, u"(in Zürich, [Unknown: ;no])"_s},
      {u";ca"_s, u"GRÖSSER ALS 漢字 The Quick Fox"_s},
  };
  return triggers;
}

const std::string globalVariables = R"([
  {
    "createdAt" : "2026-01-21T09:30:00Z",
    "id" : "7E57AB1E-0000-4000-8000-0000000000AA",
    "modifiedAt" : "2026-01-21T09:30:00Z",
    "name" : "City",
    "value" : "Zürich"
  }
])";

std::string recordOf(const QString& trigger, qsizetype length) {
  return trigger.toStdString() + " " + std::to_string(length);
}

// The triggers of the expansions on record, each with the length of its text.
std::vector<std::string> recordedExpansions(const ProgramUnderTest& program) {
  const auto document =
      QJsonDocument::fromJson(QByteArray::fromStdString(program.document("stats_events.json")));
  std::vector<std::string> expansions;
  for (const QJsonValue event : document.array()) {
    expansions.push_back(
        recordOf(event[u"snippetTrigger"].toString(), event[u"expansionLength"].toInteger()));
  }
  return expansions;
}

TEST_F(Placeholders, ofEachKindAreReplacedAndWhatTheyCountIsKept) {
  const ClipboardOwner owner(stage().environment(), copiedText.toStdString(),
                             stage().makeFolder("clipboard"));
  ProgramUnderTest& program = makeProgramIn({});
  program.writeLibrary(library());
  program.writeDocument("global_variables.json", globalVariables);
  program.start();
  stage().startTarget(TargetKind::qt6);
  std::vector<std::string> expansions;
  for (const auto& [trigger, expected] : session()) {
    SCOPED_TRACE(trigger.toStdString());
    person().type(trigger);
    expectText(expected);
    expectNothingMoreAfter(expected);
    expansions.push_back(recordOf(trigger, expected.size()));
  }

  const std::string counters = "{\n  \"invoice\" : 2\n}";
  const auto isKept = [&] {
    return program.document("counters.json") == counters &&
           recordedExpansions(program) == expansions;
  };
  static_cast<void>(waitUntil(isKept, std::chrono::seconds(10)));
  EXPECT_EQ(program.terminate(), ExitStatus{});
  EXPECT_EQ(program.document("counters.json"), counters);
  EXPECT_EQ(recordedExpansions(program), expansions);
}

TEST_F(Placeholders, ofCommandsAndScriptsWorkForAParentThatIgnoresTheEndOfItsChildren) {
  ProgramUnderTest& program = makeProgram({.program = "env",
                                           .environment = {},
                                           .homeFolder = {},
                                           .arguments = {"--ignore-signal=CHLD", programPath()}});
  program.writeLibrary(library());
  program.start();
  stage().startTarget(TargetKind::xterm);
  person().type(u";sh"_s);
  expectText(u"a\nb"_s);
  expectNothingMoreAfter(u"a\nb"_s);
  person().type(u";js"_s);
  expectText(u"1-2-3"_s);
}

}  // namespace
}  // namespace zarvy::e2e
