#include "e2e/scenarios/Scenario.h"
#include "e2e/scenarios/ScenarioTexts.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;
using std::chrono::milliseconds;

namespace {

const TypingStyle hardware = {.body = Body::serverKeyboard};

TypingStyle lateShift(Body body, milliseconds late) {
  return {.body = body, .lateRelease = late};
}

// Somebody who goes on, at so many milliseconds a key.
Scenario goesOn(const std::string& snippet, int interval, bool withShift = true) {
  std::string name = "goes-on-" + snippet + "-at-" + std::to_string(interval);
  if (!withShift) name += "-without-shift";
  return {.name = name,
          .form = ScenarioForm::thorough,
          .turns = {},
          .inSecondGroup = false,
          .goingOn = GoingOn{
              .snippet = snippet, .rhythm = {milliseconds(interval)}, .withShift = withShift}};
}

}  // namespace

const std::vector<ScenarioSnippet>& scenarioSnippets() {
  static const std::vector<ScenarioSnippet> snippets = {
      {"plain", u";ty"_s, u"Thank you for your email. I'll get back to you shortly."_s},
      {"shifted-letter", u";sQ"_s,
       u"Mixed Case and SHOUTING, then quiet: 1234567890 !\"$%&/()=?; é, ñ, Ω and €; the Shift of "
       u"the "
       u"last key must not leak into these words, nor be lost for These Capitals. Zwölf große "
       u"Boxkämpfer; ΑΒΓ αβγ; АБВ абв; done."_s},
      {"shifted-sign", u";w?"_s,
       u"lower case all the way, with [brackets], {braces}, \\backslash\\ and #hash; nothing "
       u"SHIFTED but THIS; żółć ŻÓŁĆ, and 42 at the end"_s},
      {"lines", u";ln"_s,
       u"Dear Sir or Madam,\n\nthank you.\n\n\nYours,\nÅse Öz\n— director —\n"_s},
      {"two-thousand", u";lo"_s, longPlainText()},
      {"two-thousand-foreign", u";fo"_s, longForeignText()},
      {"twelve-scripts", u";xs"_s, textOfTwelveScripts()},
      {"cursor", u";cu"_s, u"<b>{{cursor}}</b> — fett"_s},
      {"cursor-between-lines", u";cl"_s, u"func() {\n    {{cursor}}\n}\n// ende"_s},
      {"first-alphabet", u";fa"_s,
       u"ΑΒΓΔΕΖΗΘΙΚΛΜΝΞΟΠΡΣΤΥΦΧΨΩ αβγδεζηθικλμνξοπρστυφχψω ДЖЗИЙЛ джзийл"_s},
      {"second-alphabet", u";se"_s,
       u"ԱԲԳԴԵԶԷԸԹԺԻԼԽԾԿՀՁՂՃՄՅՆՇՈՉՊՋ აბგდევზთიკლმნოპჟრსტუფქღყშჩცძწჭხჯჰ אבגדהוזחטיכל"_s},
      {"own-letter", u";oe"_s, u"eeee EEEE these three trees уууу УУУУ"_s},
      {"plain-140", u";pa"_s, plainText(140)},
      {"plain-300", u";pb"_s, plainText(300)},
      {"plain-1000", u";pc"_s, plainText(1000)},
      {"sixty", u";pd"_s, longForeignText().left(600)},
      {"two-hundred-and-forty", u";pe"_s, textOfTwoHundredAndForty()},
      {"inner-trigger", u";in"_s, u"say ;ty or ;ен and mean it"_s},
  };
  return snippets;
}

const std::vector<Scenario>& scenarioTable() {
  static const std::vector<Scenario> table = {
      {.name = "plain-trigger",
       .turns = {{.snippet = "plain"}, {.typed = u" "_s, .snippet = "plain", .style = hardware}}},
      {.name = "trigger-in-the-middle-of-text",
       .turns = {{.typed = u"42 77"_s}, {.leftArrows = 3, .typed = u"13"_s, .snippet = "plain"}}},
      {.name = "shift-released-late",
       .turns = {{.snippet = "shifted-letter", .style = lateShift(Body::xtest, milliseconds(15))},
                 {.typed = u" "_s,
                  .snippet = "shifted-sign",
                  .style = lateShift(Body::serverKeyboard, milliseconds(25))}}},
      {.name = "shift-released-very-late",
       .turns = {{.snippet = "shifted-sign", .style = lateShift(Body::xtest, milliseconds(150))},
                 {.typed = u" "_s,
                  .snippet = "shifted-letter",
                  .style = lateShift(Body::serverKeyboard, milliseconds(150))}}},
      {.name = "shift-released-at-once",
       .form = ScenarioForm::thorough,
       .turns = {{.snippet = "shifted-letter"},
                 {.typed = u" "_s, .snippet = "shifted-sign", .style = hardware},
                 {.typed = u" "_s,
                  .snippet = "shifted-letter",
                  .style = lateShift(Body::xtest, milliseconds(5))},
                 {.typed = u" "_s,
                  .snippet = "shifted-sign",
                  .style = lateShift(Body::serverKeyboard, milliseconds(45))}}},
      {.name = "line-feeds", .turns = {{.snippet = "lines"}}},
      {.name = "two-thousand-characters", .turns = {{.snippet = "two-thousand"}}},
      {.name = "two-thousand-foreign-characters",
       .form = ScenarioForm::thorough,
       .turns = {{.snippet = "two-thousand-foreign"}}},
      {.name = "twelve-scripts", .turns = {{.snippet = "twelve-scripts"}}},
      {.name = "cursor", .turns = {{.snippet = "cursor"}, {.typed = u"7"_s}}},
      {.name = "cursor-between-lines",
       .form = ScenarioForm::thorough,
       .turns = {{.snippet = "cursor-between-lines"}, {.typed = u"7"_s}}},
      {.name = "two-in-quick-succession",
       .turns = {{.snippet = "plain"}, {.snippet = "first-alphabet"}}},
      {.name = "alphabets-in-quick-succession",
       .turns = {{.snippet = "first-alphabet"},
                 {.snippet = "second-alphabet"},
                 {.snippet = "first-alphabet", .style = hardware}}},
      {.name = "own-last-letter",
       .form = ScenarioForm::thorough,
       .turns = {{.snippet = "own-letter"}, {.snippet = "own-letter", .style = hardware}}},
      {.name = "trigger-inside-a-replacement",
       .turns = {{.snippet = "inner-trigger"}, {.typed = u"7"_s}}},
      {.name = "second-group",
       .turns = {{.snippet = "plain"},
                 {.typed = u" "_s,
                  .snippet = "shifted-letter",
                  .style = lateShift(Body::xtest, milliseconds(15))}},
       .inSecondGroup = true},
      goesOn("plain-140", 40),
      goesOn("plain-300", 40),
      goesOn("plain-300", 60),
      goesOn("plain-300", 80, false),
      goesOn("plain-1000", 110),
      goesOn("plain-1000", 120, false),
      goesOn("sixty", 60),
      goesOn("sixty", 110),
      goesOn("two-hundred-and-forty", 50, false),
      goesOn("two-hundred-and-forty", 90),
      {.name = "two-hundred-and-forty",
       .form = ScenarioForm::thorough,
       .turns = {{.snippet = "two-hundred-and-forty"},
                 {.snippet = "two-hundred-and-forty", .style = hardware}}},
      {.name = "focus-moves-to-xterm",
       .form = ScenarioForm::thorough,
       .focusMove = FocusMove{.snippet = "two-hundred-and-forty", .to = TargetKind::xterm}},
  };
  return table;
}

}  // namespace zarvy::e2e
