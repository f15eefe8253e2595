// Documents that cannot be read, folders that are none, and disks that are full, slow or gone.

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>

#include <QJsonDocument>

#include <gmock/gmock.h>

#include "e2e/behaviour/BehaviourTest.h"
#include "e2e/harness/SystemTray.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

using testing::Contains;
using testing::StartsWith;

const std::vector<std::string> documents = {
    "snippets",         "folders",  "settings",     "import_batches", "sync_metadata",
    "global_variables", "counters", "stats_events", "stats_summary",  "field_defaults"};

class TroubledDocuments : public BehaviourTest {
 protected:
  [[nodiscard]] ProgramUnderTest::Setting setting() {
    return {.program = programPath(),
            .environment = stage().environment(),
            .homeFolder = stage().makeFolder("program")};
  }

  // The first-run library's signature, whose trigger everybody finds in it.
  void expectFirstRunLibraryToServe() {
    stage().startTarget(TargetKind::qt6);
    person().type(u"x;date"_s);
    EXPECT_TRUE(waitUntil(
        [&] {
          const QString text = target().state().text;
          return text.startsWith(u'x') && text.size() > 2 && !text.contains(u';');
        },
        std::chrono::seconds(20)));
  }

  [[nodiscard]] static bool waitForLine(ProgramUnderTest& program, const std::string& beginning) {
    return program.process().waitForLine(
        [&](const std::string& line) { return line.starts_with(beginning); },
        std::chrono::seconds(20));
  }
};

TEST_F(TroubledDocuments, thatAreGarbageAreSaidSoAndLeftAsTheyAre) {
  ProgramUnderTest program(setting());
  for (const std::string& name : documents) program.writeDocument(name + ".json", "{ garbage");
  program.start();
  // Written for a new user.
  EXPECT_TRUE(waitUntil([&] { return program.document("folders.json").starts_with("["); },
                        std::chrono::seconds(20)));
  const auto lines = program.process().outputLines();
  EXPECT_EQ(
      std::count_if(lines.begin(), lines.end(),
                    [](const std::string& line) { return line.starts_with("Error loading "); }),
      10);
  for (const std::string& name : documents) {
    if (name == "snippets" || name == "folders") continue;
    EXPECT_EQ(program.document(name + ".json"), "{ garbage") << name;
  }
  expectFirstRunLibraryToServe();
  EXPECT_EQ(program.terminate(), ExitStatus{});
}

TEST_F(TroubledDocuments, thatAreNoFilesDoNotHoldTheProgramUp) {
  ProgramUnderTest program(setting());
  program.writeDocument("folders.json", "[]");
  std::filesystem::create_directory(program.dataFolder() + "/snippets.json");
  ASSERT_EQ(::mkfifo((program.dataFolder() + "/settings.json").c_str(), S_IRUSR | S_IWUSR), 0);
  program.start();
  EXPECT_THAT(program.process().outputLines(), Contains(StartsWith("Error loading snippets: ")));
  EXPECT_THAT(program.process().outputLines(), Contains(StartsWith("Error loading settings: ")));
  expectFirstRunLibraryToServe();
  EXPECT_EQ(program.terminate(), ExitStatus{});
}

TEST_F(TroubledDocuments, thatHaveNoFolderLeaveAProgramThatServesAndSaysSo) {
  ProgramUnderTest program(setting());
  program.writeDocument("settings.json", "{}");
  std::filesystem::remove_all(program.dataFolder());
  std::ofstream(program.dataFolder()) << "a file in its place";
  program.start();
  expectFirstRunLibraryToServe();
  EXPECT_TRUE(waitForLine(program, "Error saving snippets: "));
  EXPECT_EQ(program.terminate(), ExitStatus{});
  std::ifstream file(program.dataFolder());
  std::string content;
  std::getline(file, content);
  EXPECT_EQ(content, "a file in its place");
}

TEST_F(TroubledDocuments, ofTwoHundredThousandSnippetsServeToTheLast) {
  std::vector<TestSnippet> snippets;
  for (int number = 0; number < 200'000; ++number) {
    snippets.push_back({u";n%1;"_s.arg(number), u"number %1"_s.arg(number)});
  }
  stage().startProgram(programPath(), snippets);
  stage().startTarget(TargetKind::qt6);
  person().type(u";n199999;"_s);
  expectText(u"number 199999"_s);
}

// The program on a disk that misbehaves as the test says.
class TroubledDisks : public TroubledDocuments {
 protected:
  void SetUp() override {
    TroubledDocuments::SetUp();
    auto troubled = setting();
    const std::string folder = troubled.homeFolder + "/.local/share/Zarvy";
    troubled.environment["LD_PRELOAD"] = ZARVY_E2E_TROUBLED_DISK;
    troubled.environment["ZARVY_TROUBLED_FOLDER"] = folder;
    m_program.emplace(std::move(troubled));
    m_program->writeLibrary({{u";ok"_s, u"Ωk"_s}});
    m_program->writeDocument("folders.json", "[]");
  }

  void setTrouble(const std::string& trouble) { m_program->writeDocument(".trouble", trouble); }

  std::optional<ProgramUnderTest> m_program;
};

TEST_F(TroubledDisks, thatAreFullLeaveAProgramThatServesAndSaysSo) {
  m_program->start();
  setTrouble("full");
  stage().startTarget(TargetKind::qt6);
  person().type(u" ;ok"_s);
  expectText(u" Ωk"_s);
  EXPECT_TRUE(waitForLine(*m_program, "Error saving stats events: "));
  EXPECT_EQ(m_program->document("stats_events.json"), "");
  // The next save tries again, with all there is by then.
  setTrouble("none");
  person().type(u" ;ok"_s);
  expectText(u" Ωk Ωk"_s);
  EXPECT_TRUE(waitUntil(
      [&] {
        const auto text = m_program->document("stats_summary.json");
        return text.find("\"totalExpansions\" : 2") != std::string::npos;
      },
      std::chrono::seconds(20)));
  EXPECT_EQ(m_program->terminate(), ExitStatus{});
}

TEST_F(TroubledDisks, thatAnswerLateHoldUpNothingButTheLibrary) {
  setTrouble("silent");
  SystemTray tray(stage().connection(), stage().environment(), stage().makeFolder("tray"));
  m_program->launch();
  ASSERT_TRUE(tray.clickIconOf("Zarvy"));
  ASSERT_TRUE(tray.waitForMenuOf("Zarvy", true));
  EXPECT_THAT(m_program->process().outputLines(), testing::IsEmpty());
  person().tap(XKB_KEY_Escape);
  setTrouble("none");
  EXPECT_TRUE(m_program->waitUntilListening());
}

TEST_F(TroubledDisks, thatNeverAnswerDoNotKeepTheProgramFromEnding) {
  setTrouble("silent");
  SystemTray tray(stage().connection(), stage().environment(), stage().makeFolder("tray"));
  m_program->launch();
  ASSERT_TRUE(tray.clickIconOf("Zarvy")) << "it is up";
  EXPECT_EQ(m_program->terminate(), ExitStatus{});
}

// As many as the program keeps, so that their save takes a while.
std::string tenThousandEvents() {
  const QString event =
      u"{\"dayOfWeek\":4,\"expansionLength\":9,\"hourOfDay\":9,\"id\":"
      "\"7E57AB1E-0000-4000-8000-%1\",\"snippetID\":\"7E57AB1E-0000-4000-8000-000000000001\","
      "\"snippetTitle\":\"t\",\"snippetTrigger\":\";c\",\"timestamp\":\"2026-01-21T09:30:00Z\","
      "\"triggerLength\":2}"_s;
  QStringList events;
  for (int number = 0; number < 10'000; ++number) {
    events.append(event.arg(number, 12, 10, QChar(u'0')));
  }
  return (u'[' + events.join(u',') + u']').toStdString();
}

// Killed while a document's successor stands half written beside it.
TEST_F(TroubledDocuments, areNeverTornByAKillInTheMiddleOfASave) {
  ProgramUnderTest program(setting());
  program.writeLibrary({{u";c"_s, u"{{counter:n}} "_s}});
  program.writeDocument("stats_events.json", tenThousandEvents());
  stage().startTarget(TargetKind::qt6);
  const auto isUnfinished = [](const auto& file) {
    return file.path().filename().string().starts_with(".stats_events.json.");
  };
  const auto savesEvents = [&] {
    const std::filesystem::directory_iterator files(program.dataFolder());
    return std::any_of(begin(files), end(files), isUnfinished);
  };
  // The next start leaves them alone for they are not old.
  const auto removeUnfinishedEvents = [&] {
    for (const auto& file : std::filesystem::directory_iterator(program.dataFolder())) {
      if (isUnfinished(file)) std::filesystem::remove(file);
    }
  };
  for (int round = 1; round <= 4; ++round) {
    program.start();
    EXPECT_THAT(program.process().outputLines(), testing::Not(Contains(StartsWith("Error"))));
    target().clear();
    person().type(u";c"_s);
    ASSERT_TRUE(waitUntil(savesEvents, std::chrono::seconds(20), std::chrono::milliseconds(0)));
    program.kill();
    removeUnfinishedEvents();
    for (const std::string name : {"counters.json", "stats_events.json"}) {
      const auto text = QByteArray::fromStdString(program.document(name));
      EXPECT_FALSE(QJsonDocument::fromJson(text).isNull()) << name << " after " << round;
    }
  }
  program.start();
  person().type(u";c"_s);
  EXPECT_TRUE(waitUntil(
      [&] { return program.document("counters.json").find("\"n\" : 5") != std::string::npos; },
      std::chrono::seconds(20)))
      << "every counter was saved ahead of the events";
  EXPECT_EQ(program.terminate(), ExitStatus{});
}

}  // namespace
}  // namespace zarvy::e2e
