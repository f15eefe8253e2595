// What the program leaves behind on the server: nothing.

#include <csignal>
#include <set>
#include <span>

#include "e2e/behaviour/BehaviourTest.h"
#include "e2e/behaviour/MappingChanges.h"
#include "e2e/scenarios/ScenarioTexts.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString foreignText = u"ΑΒΓΔ αβγδ ԱԲԳԴ აბგდ ДЖЗИ джзи אבגד 漢字"_s;
const QString moreForeignText = u"ÀÁÂÃÄÅÆÇÈÉÊË ĄĆĘŁŃÓŚŹŻ กขคฆง あいうえお"_s;

const std::vector<TestSnippet>& library() {
  static const std::vector<TestSnippet> snippets = {{u";fo"_s, foreignText},
                                                    {u";mo"_s, moreForeignText}};
  return snippets;
}

class Traces : public BehaviourTest {
 protected:
  void expectMapping(const MappingDump& before) {
    const auto isAsBefore = [&] {
      const MappingDump now = stage().mapping();
      return now.symbols == before.symbols && now.keyboard == before.keyboard;
    };
    static_cast<void>(waitUntil(isAsBefore, std::chrono::seconds(3)));
    const MappingDump now = stage().mapping();
    EXPECT_EQ(now.symbols, before.symbols);
    EXPECT_EQ(now.keyboard, before.keyboard);
  }

  // GTK's is not among them: whatever services the session bus may have started leave it there.
  std::set<std::string> rootProperties() {
    xcb_connection_t* connection = stage().connection().get();
    const auto reply = owned(xcb_list_properties_reply(
        connection, xcb_list_properties(connection, stage().connection().root()), nullptr));
    std::set<std::string> names;
    for (const xcb_atom_t atom :
         std::span(xcb_list_properties_atoms(reply.get()), reply->atoms_len)) {
      const auto name =
          owned(xcb_get_atom_name_reply(connection, xcb_get_atom_name(connection, atom), nullptr));
      names.emplace(xcb_get_atom_name_name(name.get()), name->name_len);
    }
    names.erase("GDK_VISUALS");
    return names;
  }

  void expandBoth() {
    target().clear();
    person().type(u";fo"_s);
    expectText(foreignText);
    person().type(u" ;mo"_s);
    expectText(foreignText + u" "_s + moreForeignText);
    person().type(u" "_s);
  }
};

class TracesAfterASignal : public Traces, public testing::WithParamInterface<int> {};

TEST_P(TracesAfterASignal, areGoneWhenTheProgramEndsAsItIsAsked) {
  stage().startTarget(TargetKind::qt6);
  const MappingDump before = stage().mapping();
  const auto properties = rootProperties();
  stage().startProgram(programPath(), library());
  expandBoth();
  program().process().sendSignal(GetParam());
  const auto status = program().process().waitForExit(std::chrono::seconds(20));
  ASSERT_TRUE(status.has_value()) << "the program does not end";
  EXPECT_EQ(*status, ExitStatus{});
  expectMapping(before);
  EXPECT_EQ(rootProperties(), properties);
  expectNothingHeld();
}

TEST_P(TracesAfterASignal, areGoneWhenItComesInTheMiddleOfTwoThousandCharacters) {
  stage().startTarget(TargetKind::qt6);
  const MappingDump before = stage().mapping();
  const auto properties = rootProperties();
  // More different characters than there are scratch keys: their meaning changes all the time.
  const QString text = (textOfTwelveScripts() + u" and SHIFTED {Keys} "_s).repeated(5);
  ASSERT_GE(text.toUcs4().size(), 2000);
  stage().startProgram(programPath(), {{u";lo"_s, text}});
  person().type(u";lo"_s);
  ASSERT_TRUE(waitUntil([&] { return target().state().text.startsWith(text.left(40)); },
                        std::chrono::seconds(20), std::chrono::milliseconds(1)));
  program().process().sendSignal(GetParam());
  const auto status = program().process().waitForExit(std::chrono::seconds(20));
  ASSERT_TRUE(status.has_value()) << "the program does not end";
  EXPECT_EQ(*status, ExitStatus{});
  expectMapping(before);
  EXPECT_EQ(rootProperties(), properties);
  expectNothingHeld();

  // The person's next key comes behind all that was on its way.
  person().type(u"\\"_s);
  ASSERT_TRUE(
      waitUntil([&] { return target().state().text.endsWith(u'\\'); }, std::chrono::seconds(20)));
  const QString typed = target().state().text.chopped(1);
  EXPECT_EQ(typed.toStdString(), text.left(typed.size()).toStdString());
  EXPECT_LT(typed.size(), text.size()) << "the program goes on to the end of the text";
}

INSTANTIATE_TEST_SUITE_P(Of, TracesAfterASignal, testing::Values(SIGTERM, SIGINT),
                         [](const auto& instance) {
                           return instance.param == SIGTERM ? "Termination" : "Interruption";
                         });

TEST_F(Traces, ofAKilledProgramAreGoneOnceItsSuccessorHasEnded) {
  stage().startTarget(TargetKind::qt6);
  const MappingDump before = stage().mapping();
  const auto properties = rootProperties();
  stage().startProgram(programPath(), library());
  expandBoth();
  program().kill();
  program().start();
  expandBoth();
  EXPECT_EQ(program().terminate(), ExitStatus{});
  expectMapping(before);
  EXPECT_EQ(rootProperties(), properties);
}

TEST_F(Traces, ofAProgramKilledWhileItTypesAreGoneOnceItsSuccessorHasEnded) {
  stage().startTarget(TargetKind::qt6);
  const MappingDump before = stage().mapping();
  stage().startProgram(programPath(), {{u";fo"_s, foreignText.repeated(40)}});
  person().type(u";fo"_s);
  ASSERT_TRUE(waitUntil([&] { return target().state().text.size() > foreignText.size(); },
                        std::chrono::seconds(20)));
  program().kill();
  program().start();
  EXPECT_EQ(program().terminate(), ExitStatus{});
  expectMapping(before);
  expectNothingHeld();
}

// Here the person leaves the keyboard as a death between the press and the release of a key does.
TEST_F(Traces, onTheKeysOfAProgramKilledWhileItTypesAreGoneAtOnce) {
  stage().startTarget(TargetKind::qt6);
  const auto properties = rootProperties();
  stage().startProgram(programPath(), {{u";lo"_s, u"all the same and "_s.repeated(2000)}});
  person().type(u";lo"_s);
  ASSERT_TRUE(waitUntil([&] { return target().state().text.startsWith(u"all"); },
                        std::chrono::seconds(20), std::chrono::milliseconds(1)));
  person().press(XKB_KEY_q);
  person().press(XKB_KEY_Shift_L);
  program().kill();
  expectNothingHeld();
  EXPECT_TRUE(waitUntil([&] { return rootProperties() == properties; }, std::chrono::seconds(5)));
}

TEST_F(Traces, ofManyKilledProgramsAreNoLettersThatRepeat) {
  stage().startTarget(TargetKind::qt6);
  const QString text = u"none of these letters, and no Shift, may come twice; "_s.repeated(200);
  constexpr int kills = 8;
  for (int i = 0; i < kills; ++i) {
    target().clear();
    stage().startProgram(programPath(), {{u";lo"_s, text}});
    person().type(u";lo"_s);
    const qsizetype enough = 10 + i * 37;
    ASSERT_TRUE(waitUntil([&] { return target().state().text.size() > enough; },
                          std::chrono::seconds(20), std::chrono::milliseconds(1)));
    program().kill();
    expectNothingHeld();
    // What the server had got by then may still be on its way.
    person().type(u"\\"_s);
    ASSERT_TRUE(
        waitUntil([&] { return target().state().text.contains(u'\\'); }, std::chrono::seconds(20)));
    const QString typed = target().state().text.remove(u'\\');
    EXPECT_EQ(typed.toStdString(), text.left(typed.size()).toStdString());
  }
}

TEST_F(Traces, onTheMappingAreMadeOnceForTwoExpansionsOfOneSnippet) {
  start(TargetKind::qt6, library());
  person().type(u";fo"_s);
  expectText(foreignText);
  MappingChanges changes(stage().server().display());
  static_cast<void>(changes.take());
  person().type(u";fo"_s);
  expectText(foreignText + foreignText);
  EXPECT_EQ(changes.take(), 0);
}

}  // namespace
}  // namespace zarvy::e2e
