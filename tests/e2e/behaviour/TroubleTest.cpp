// Texts, windows and displays that misbehave.

#include <fstream>

#include <gmock/gmock.h>

#include "e2e/behaviour/BehaviourTest.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto deadline = std::chrono::seconds(20);

const QString longText = u"ΑΒΓ αβγ, plain words and ԱԲԳ; "_s.repeated(150) + u"the end"_s;

struct OddText {
  std::string name;
  QString replacement;
  QString typed;
};

const std::vector<OddText>& oddTexts() {
  static const std::vector<OddText> texts = {
      {"lone surrogates", u"ab"_s + QChar(0xD83D) + u"cd"_s + QChar(0xDE00) + u"ef"_s,
       u"ab\uFFFDcd\uFFFDef"_s},
      {"a NUL", u"ab"_s + QChar(u'\0') + u"cd"_s, u"abcd"_s},
      {"a carriage return", u"ab\rcd"_s, u"ab\ncd"_s},
      {"carriage returns ahead of line feeds", u"ab\r\n\r\ncd\r\n"_s, u"ab\n\ncd\n"_s},
      {"a carriage return after a line feed", u"ab\n\rcd"_s, u"ab\n\ncd"_s},
  };
  return texts;
}

QString triggerOf(std::size_t oddText) {
  return u";o%1"_s.arg(oddText);
}

class OddTexts : public BehaviourTest, public testing::WithParamInterface<TargetKind> {};

TEST_P(OddTexts, areTypedExactlyOnceAndTheNextExpansionIsExactToo) {
  std::vector<TestSnippet> snippets = {{u";ok"_s, u"Ωk"_s}};
  for (std::size_t index = 0; index < oddTexts().size(); ++index) {
    snippets.push_back({triggerOf(index), oddTexts().at(index).replacement});
  }
  start(GetParam(), snippets);
  for (std::size_t index = 0; index < oddTexts().size(); ++index) {
    const OddText& odd = oddTexts().at(index);
    SCOPED_TRACE(odd.name);
    target().clear();
    person().type(triggerOf(index));
    expectText(odd.typed);
    person().type(u" ;ok"_s);
    expectText(odd.typed + u" Ωk"_s);
  }
  expectExpansions(2 * static_cast<int>(oddTexts().size()));
  EXPECT_TRUE(program().process().isRunning());
}

TEST_P(OddTexts, thatAreEmptyOnlyDeleteTheTrigger) {
  start(GetParam(), {{u";od"_s, u""_s}});
  person().type(u"x;od"_s);
  expectText(u"x"_s);
  person().type(u"y"_s);
  expectText(u"xy"_s);
  expectExpansions(1);
}

INSTANTIATE_TEST_SUITE_P(Into, OddTexts, testing::Values(TargetKind::xterm, TargetKind::qt6),
                         [](const auto& instance) { return nameOf(instance.param); });

class Trouble : public BehaviourTest {
 protected:
  // Has the program type `longText` and returns in the middle of it, with what is there by then.
  QString typeIntoTheMiddleOfTheLongText() {
    person().type(u";lo"_s);
    const auto begun = [this] {
      const QString text = target().state().text;
      return text.startsWith(longText.left(40));
    };
    EXPECT_TRUE(waitUntil(begun, deadline, std::chrono::milliseconds(1)));
    QString text = target().state().text;
    EXPECT_LT(text.size(), longText.size()) << "too late: all of the text is there";
    return text;
  }
};

// What is left goes to whatever comes to the front. While the focus is on its way there some of it
// goes nowhere.
TEST_F(Trouble, ofAWindowThatClosesUnderAnExpansionLeavesTheProgramAtWork) {
  stage().startProgram(programPath(), {{u";lo"_s, longText}, {u";ok"_s, u"Ωk"_s}});
  const auto other = stage().makeTarget(TargetKind::xterm);
  other->start(person());
  stage().startTarget(TargetKind::qt6);
  const QString typed = typeIntoTheMiddleOfTheLongText();
  target().close();
  const auto rest = [&] { return other->state().text; };
  ASSERT_TRUE(waitUntil([&] { return rest().endsWith(u"the end"_s); }, deadline))
      << rest().toStdString();
  EXPECT_LE(rest().size(), longText.size() - typed.size());
  EXPECT_TRUE(rest().endsWith(longText.right(1000))) << rest().toStdString();
  other->clear();
  person().type(u" ;ok"_s);
  const EditorState expected{.text = u" Ωk"_s, .caret = 3};
  EXPECT_TRUE(settlesAt(*other, expected)) << complaintAbout(expected, other->state());
  expectExpansions(2);
  expectNothingHeld();
}

TEST_F(Trouble, ofADyingDisplayEndsTheProgramWithoutACrash) {
  start(TargetKind::qt6, {{u";ok"_s, u"Ωk"_s}});
  person().type(u";ok"_s);
  expectText(u"Ωk"_s);
  stage().server().kill();
  const auto status = program().process().waitForExit(std::chrono::seconds(30));
  ASSERT_TRUE(status.has_value()) << "the program does not end";
  EXPECT_EQ(*status, (ExitStatus{.exitCode = 1})) << program().errorOutput();
  EXPECT_THAT(program().process().outputLines(),
              testing::UnorderedElementsAre("KeyboardMonitor: Started (NSEvent global monitoring)",
                                            "EXPANDING to: 'Ωk...'", "The X display has gone away.",
                                            "KeyboardMonitor: Stopped"));
}

TEST_F(Trouble, ofADisplayThatDiesUnderAnExpansionEndsTheProgramWithoutACrash) {
  start(TargetKind::qt6, {{u";lo"_s, longText}});
  static_cast<void>(typeIntoTheMiddleOfTheLongText());
  stage().server().kill();
  const auto status = program().process().waitForExit(std::chrono::seconds(30));
  ASSERT_TRUE(status.has_value()) << "the program does not end";
  EXPECT_EQ(*status, (ExitStatus{.exitCode = 1})) << program().errorOutput();
}

class UnknownOptions : public BehaviourTest {};

TEST_F(UnknownOptions, areIgnored) {
  ProgramUnderTest program(
      {.program = programPath(),
       .environment = stage().environment(),
       .homeFolder = stage().makeFolder("program"),
       .arguments = {"--no-such-option", "-display", ":65000", "--help", "-"}});
  program.writeLibrary({{u";ok"_s, u"Ωk"_s}});
  program.start();
  stage().startTarget(TargetKind::qt6);
  person().type(u";ok"_s);
  expectText(u"Ωk"_s);
  EXPECT_EQ(program.terminate(), ExitStatus{});
}

// A line of an X authority file for every display: `cookie` has 16 bytes.
std::string authorityFile(const std::string& cookie) {
  const std::string protocol = "MIT-MAGIC-COOKIE-1";
  const auto counted = [](const std::string& bytes) {
    return std::string{'\0', static_cast<char>(bytes.size())} + bytes;
  };
  return "\xFF\xFF" + counted("") + counted("") + counted(protocol) + counted(cookie);
}

// No stage here: there is no display, or none that is good enough.
class PoorDisplays : public testing::Test {
 protected:
  // The program says `reason`, stays up, and ends when asked. Gives its error output.
  std::string expectToStayUp(const std::string& reason, const std::string& display) {
    Environment environment = environmentWithHome(folder());
    if (!display.empty()) environment["DISPLAY"] = display;
    ProgramUnderTest program({.program = programPath(),
                              .environment = std::move(environment),
                              .homeFolder = folder() + "/program"});
    program.launch();
    // The library is written once the program has come up and taken it over.
    const auto hasComeUpOrEnded = [&] {
      return !program.document("folders.json").empty() || !program.process().isRunning();
    };
    EXPECT_TRUE(waitUntil(hasComeUpOrEnded, std::chrono::seconds(30)));
    EXPECT_TRUE(program.process().isRunning()) << program.errorOutput();
    EXPECT_EQ(program.terminate(), ExitStatus{});
    EXPECT_THAT(program.process().outputLines(),
                testing::ElementsAre(reason, "KeyboardMonitor: Stopped"));
    return program.errorOutput();
  }

  [[nodiscard]] std::string folder() const { return m_folder.path().toStdString(); }

 private:
  QTemporaryDir m_folder;
};

const std::string unreachable = "No X display can be reached.";

TEST_F(PoorDisplays, thatAreAbsentLeaveTheProgramUpAndSayingSo) {
  EXPECT_EQ(expectToStayUp(unreachable, ""), "");
}

TEST_F(PoorDisplays, thatDoNotAnswerLeaveTheProgramUpAndSayingSo) {
  EXPECT_EQ(expectToStayUp(unreachable, ":65000"), "");
}

TEST_F(PoorDisplays, thatAreNotNamedAsDisplaysAreLeaveTheProgramUpAndSayingSo) {
  EXPECT_EQ(expectToStayUp(unreachable, "no display"), "");
}

TEST_F(PoorDisplays, thatRefuseTheProgramLeaveItUpAndSayingSo) {
  const std::string path = folder() + "/authority";
  std::ofstream(path, std::ios::binary) << authorityFile("sixteen of bytes");
  const PrivateXServer server(folder(), {"-auth", path});
  // The library that speaks to the server passes its words on.
  EXPECT_THAT(expectToStayUp(unreachable, server.display()),
              testing::StartsWith("Authorization required"));
}

TEST_F(PoorDisplays, withoutTheTestExtensionLeaveTheProgramUpAndSayingSo) {
  const PrivateXServer server(folder(), {"-extension", "XTEST"});
  EXPECT_EQ(expectToStayUp("The X display lacks the XTEST extension, so keys cannot be sent.",
                           server.display()),
            "");
}

}  // namespace
}  // namespace zarvy::e2e
