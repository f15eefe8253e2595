#include "typing/PostingBenchmark.h"

#include <array>
#include <optional>
#include <utility>

#include "e2e/behaviour/MappingChanges.h"
#include "e2e/scenarios/ScenarioTexts.h"
#include "typing/Expansion.h"
#include "typing/Figure.h"
#include "typing/ProcessUsage.h"

namespace zarvy::benchmarks {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype length = 1000;
constexpr int repetitions = 15;

struct Text {
  std::string name;
  double budget;                        // times the pauses
  std::optional<double> programBudget;  // milliseconds of processor time
  e2e::TestSnippet snippet;
};

// `length` characters, each of `letters` as often as any other and far from its last use.
QString textOf(const QString& letters) {
  constexpr qsizetype stride = 7;
  QString text;
  for (qsizetype index = 0; index < length; ++index) {
    text += letters[index * stride % letters.size()];
  }
  return text;
}

// None of these is on an American keyboard.
const QString& sixtyLetters() {
  static const QString letters = u"αβγδεζηθικλμνξοπρστυφχψωабвгджзийклмнопртуфцчшщъыьэюяאבגדהוז"_s;
  return letters;
}

const QString& otherSixtyLetters() {
  static const QString letters = u"ԱԲԳԴԵԶԷԸԹԺԻԼԽԾԿՀՁՂՃՄՅՆՇՈՉՊՋՌՍՎაბგდევზთიკლმნოპჟრსტუფქღყშჩცძწჭ"_s;
  return letters;
}

const std::array<Text, 2>& texts() {
  static const std::array<Text, 2> all = {
      Text{.name = "1,000 ASCII characters",
           .budget = 1.5,
           .programBudget = 15,
           .snippet = {u";as"_s, e2e::longPlainText().left(length)}},
      Text{.name = "1,000 off-layout characters",
           .budget = 2,
           .programBudget = std::nullopt,
           .snippet = {u";of"_s, textOf(sixtyLetters())}}};
  return all;
}

// More characters than there are scratch keys for, together with those of texts(): its expansion
// takes theirs off the keyboard, so that their next one cannot find them prepared.
const e2e::TestSnippet& intruder() {
  static const e2e::TestSnippet snippet{u";in"_s, textOf(otherSixtyLetters())};
  return snippet;
}

// Four times as many characters as there are scratch keys for, so that these are changed again and
// again within the text.
const e2e::TestSnippet& manyLetters() {
  static const e2e::TestSnippet snippet{u";ma"_s, [] {
                                          constexpr std::pair<char16_t, char16_t> alphabets[] = {
                                              {u'Ա', u'Ֆ'}, {u'ա', u'ֆ'}, {u'А', u'я'},
                                              {u'ა', u'ჰ'}, {u'α', u'ω'}, {u'ぁ', u'ろ'}};
                                          constexpr qsizetype different = 240;
                                          QString letters;
                                          for (const auto& [first, last] : alphabets) {
                                            for (char16_t letter = first; letter <= last; ++letter)
                                              letters += QChar(letter);
                                          }
                                          return textOf(letters.left(different));
                                        }()};
  return snippet;
}

std::string nameOf(e2e::Body body) {
  return body == e2e::Body::xtest ? "XTEST" : "the server's keyboard";
}

class PostingOnOneTarget {
 public:
  PostingOnOneTarget(const std::string& program, e2e::TargetKind kind)
      : m_stage({.layouts = "us"}),
        m_target(e2e::nameOf(kind)),
        m_program(m_stage.startProgram(
            program, {texts()[0].snippet, texts()[1].snippet, intruder(), manyLetters()})),
        m_observer(m_stage.server().display()) {
    m_stage.startTarget(kind);
  }

  void measure() {
    measureMapping();
    for (const Text& text : texts()) {
      for (const e2e::Body body : {e2e::Body::xtest, e2e::Body::serverKeyboard}) {
        measure(text, body);
      }
    }
    measureManyLetters();
  }

 private:
  ExpansionTimes expand(const e2e::TestSnippet& snippet, e2e::Body body) {
    return measureExpansion(m_stage, m_observer, snippet, body);
  }

  void measureMapping() {
    const Text& text = texts()[1];
    e2e::MappingChanges changes(m_stage.server().display());
    static_cast<void>(expand(intruder(), e2e::Body::xtest));
    static_cast<void>(changes.take());
    const auto times = expand(text.snippet, e2e::Body::xtest);
    const std::string into = " into " + m_target;
    print({"changes of the mapping, first expansion" + into, static_cast<double>(changes.take()),
           ""});
    print({text.name + into + ", first expansion, over the pauses",
           times.posting / pausesOf(text.snippet), "x"});
    const e2e::MappingDump before = m_stage.mapping();
    static_cast<void>(changes.take());
    static_cast<void>(expand(text.snippet, e2e::Body::xtest));
    const int seen = changes.take();
    const bool differs = m_stage.mapping().symbols != before.symbols;
    print({"changes of the mapping, second expansion" + into,
           static_cast<double>(seen + (differs ? 1 : 0)), "", 0});
  }

  void measureManyLetters() {
    constexpr int fewRepetitions = 5;
    std::vector<double> times;
    for (int count = 0; count < fewRepetitions; ++count) {
      times.push_back(expand(manyLetters(), e2e::Body::serverKeyboard).posting.count());
    }
    print({"1,000 characters of 240 different off-layout ones into " + m_target, median(times),
           "ms"});
  }

  void measure(const Text& text, e2e::Body body) {
    static_cast<void>(expand(text.snippet, body));  // prepares it
    const Milliseconds programBefore = cpuTime(m_program.process().pid());
    const Milliseconds serverBefore = cpuTime(m_stage.server().pid());
    std::vector<double> ratios;
    for (int count = 0; count < repetitions; ++count) {
      ratios.push_back(expand(text.snippet, body).posting / pausesOf(text.snippet));
    }
    const Milliseconds programUsed = cpuTime(m_program.process().pid()) - programBefore;
    const Milliseconds serverUsed = cpuTime(m_stage.server().pid()) - serverBefore;
    const std::string what = text.name + " into " + m_target + ", trigger from " + nameOf(body);
    print({what + ", over the pauses", median(ratios), "x", text.budget});
    print({what + ", CPU time of the program", programUsed.count() / repetitions, "ms",
           text.programBudget});
    print({what + ", CPU time of the X server", serverUsed.count() / repetitions, "ms"});
  }

  e2e::Stage m_stage;
  std::string m_target;
  e2e::ProgramUnderTest& m_program;
  KeyObserver m_observer;
};

}  // namespace

void measurePosting(const std::string& program) {
  for (const e2e::TargetKind kind : {e2e::TargetKind::xterm, e2e::TargetKind::qt6}) {
    PostingOnOneTarget(program, kind).measure();
  }
}

}  // namespace zarvy::benchmarks
