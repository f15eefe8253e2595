// Texts, windows and displays that misbehave.

#include "e2e/behaviour/BehaviourTest.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString longText = u"ΑΒΓ αβγ, plain words and ԱԲԳ; "_s.repeated(60);

QString withoutWhatNoKeyTypes(QString text) {
  return text.remove(u'\n').remove(u'\r').remove(QChar(0xFFFD));
}

class OddTexts : public BehaviourTest, public testing::WithParamInterface<TargetKind> {
 protected:
  // The letters of the text arrive once and in order, whatever becomes of what no keyboard has, and
  // the next expansion is exact.
  void expectLettersAndAnExactNextExpansion(const QString& oddText, const QString& letters) {
    start(GetParam(), {{u";od"_s, oddText}, {u";ok"_s, u"Ωk"_s}});
    person().type(u";od"_s);
    expectExpansions(1);
    const auto lettersAreThere = [&] {
      return withoutWhatNoKeyTypes(target().state().text) == letters;
    };
    EXPECT_TRUE(waitUntil(lettersAreThere, std::chrono::seconds(10)))
        << target().state().text.toStdString();
    const QString before = target().state().text;
    person().type(u" ;ok"_s);
    expectText(before + u" Ωk"_s);
    expectExpansions(2);
    EXPECT_TRUE(program().process().isRunning());
  }
};

TEST_P(OddTexts, withLoneSurrogatesAreTypedWithoutThem) {
  const QString odd = u"ab"_s + QChar(0xD83D) + u"cd"_s + QChar(0xDE00) + u"ef"_s;
  expectLettersAndAnExactNextExpansion(odd, u"abcdef"_s);
}

TEST_P(OddTexts, withANulAreTypedWithoutIt) {
  expectLettersAndAnExactNextExpansion(u"ab"_s + QChar(u'\0') + u"cd"_s, u"abcd"_s);
}

TEST_P(OddTexts, withACarriageReturnAreTypedOnce) {
  expectLettersAndAnExactNextExpansion(u"ab\rcd"_s, u"abcd"_s);
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
    EXPECT_TRUE(waitUntil(begun, std::chrono::seconds(20), std::chrono::milliseconds(1)));
    QString text = target().state().text;
    EXPECT_LT(text.size(), longText.size()) << "too late: all of the text is there";
    return text;
  }
};

TEST_F(Trouble, ofAWindowThatClosesUnderAnExpansionLeavesTheProgramAtWork) {
  start(TargetKind::qt6, {{u";lo"_s, longText}, {u";ok"_s, u"Ωk"_s}});
  const QString typed = typeIntoTheMiddleOfTheLongText();
  // What is left may go to whatever comes to the front; here nothing does.
  target().close();
  EXPECT_TRUE(program().process().isRunning());
  stage().startTarget(TargetKind::xterm);
  // Should the rest go on coming for a while, nothing of it may come a second time.
  static_cast<void>(settlesAt(target(), {}));
  EXPECT_LE(target().state().text.size(), longText.size() - typed.size());
  target().clear();
  person().type(u" ;ok"_s);
  expectText(u" Ωk"_s);
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
  EXPECT_EQ(status->signal, 0) << program().errorOutput();
}

TEST_F(Trouble, ofADisplayThatDiesUnderAnExpansionEndsTheProgramWithoutACrash) {
  start(TargetKind::qt6, {{u";lo"_s, longText}});
  static_cast<void>(typeIntoTheMiddleOfTheLongText());
  stage().server().kill();
  const auto status = program().process().waitForExit(std::chrono::seconds(30));
  ASSERT_TRUE(status.has_value()) << "the program does not end";
  EXPECT_EQ(status->signal, 0) << program().errorOutput();
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

// No stage here: there is no display, or none that is good enough.
class PoorDisplays : public testing::Test {
 protected:
  // The program says why nothing expands, stays up, and ends when asked.
  void expectToStayUp(Environment environment) {
    ProgramUnderTest program({.program = programPath(),
                              .environment = std::move(environment),
                              .homeFolder = folder() + "/program"});
    program.writeLibrary({{u";ok"_s, u"ok"_s}});
    program.launch();
    EXPECT_TRUE(program.process().waitForLine([](const std::string& line) { return !line.empty(); },
                                              std::chrono::seconds(30)));
    EXPECT_TRUE(program.process().isRunning()) << program.errorOutput();
    EXPECT_EQ(program.terminate(), ExitStatus{});
    // One line for the reason, one for the end.
    const auto lines = program.process().outputLines();
    EXPECT_EQ(lines.size(), 2U) << testing::PrintToString(lines);
    EXPECT_EQ(lines.back(), "KeyboardMonitor: Stopped");
  }

  [[nodiscard]] std::string folder() const { return m_folder.path().toStdString(); }

 private:
  QTemporaryDir m_folder;
};

TEST_F(PoorDisplays, thatAreAbsentLeaveTheProgramUpAndSayingSo) {
  expectToStayUp(environmentWithHome(folder()));
}

TEST_F(PoorDisplays, thatCannotBeReachedLeaveTheProgramUpAndSayingSo) {
  Environment environment = environmentWithHome(folder());
  environment["DISPLAY"] = ":65000";
  expectToStayUp(std::move(environment));
}

TEST_F(PoorDisplays, withoutTheTestExtensionLeaveTheProgramUpAndSayingSo) {
  const PrivateXServer server(folder(), {"-extension", "XTEST"});
  Environment environment = environmentWithHome(folder());
  environment["DISPLAY"] = server.display();
  expectToStayUp(std::move(environment));
}

}  // namespace
}  // namespace zarvy::e2e
