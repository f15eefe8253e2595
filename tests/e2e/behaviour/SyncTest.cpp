// Two machines of one user, each the program with documents of its own, and the folder that they
// share.

#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>

#include "e2e/behaviour/BehaviourTest.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

using testing::Contains;
using testing::IsSupersetOf;
using testing::StartsWith;

std::string metadataOf(const std::string& device, int version, const std::string& minute = "30") {
  return "{\"dataVersion\":" + std::to_string(version) + ",\"deviceID\":\"" + device +
         "\",\"lastSyncDate\":\"2026-01-21T09:" + minute + ":00Z\"}";
}

class Sync : public BehaviourTest {
 protected:
  // One machine.
  class Machine {
   public:
    Machine(Stage& stage, const std::string& name, const std::string& drive)
        : m_program({.program = programPath(),
                     .environment = stage.environment(),
                     .homeFolder = stage.makeFolder("machine" + name)}) {
      m_program.writeDefaults("[General]\nZarvyCloudDriveFolder=" + drive +
                              "\nZarvySyncDeviceID=" + name + "\n");
    }

    void writeLibrary(const QString& trigger, const QString& replacement) {
      m_program.writeLibrary({{trigger, replacement}});
      m_program.writeDocument("folders.json", "[]");
      m_program.writeSettings({.iCloudSyncEnabled = true});
    }

    void writeMetadata(const std::string& metadata) {
      m_program.writeDocument("sync_metadata.json", metadata);
    }

    [[nodiscard]] bool hasSaved(const std::string& document, const std::string& text) {
      return waitUntil([&] { return m_program.document(document).find(text) != std::string::npos; },
                       std::chrono::seconds(20));
    }

    [[nodiscard]] bool hasPrinted(const std::string& beginning) {
      return m_program.process().waitForLine(
          [&](const std::string& line) { return line.starts_with(beginning); },
          std::chrono::seconds(20));
    }

    [[nodiscard]] std::vector<std::string> lines() { return m_program.process().outputLines(); }

    ProgramUnderTest& program() { return m_program; }

   private:
    ProgramUnderTest m_program;
  };

  void SetUp() override {
    BehaviourTest::SetUp();
    a.writeLibrary(u";a"_s, u"from A"_s);
    b.writeLibrary(u";b"_s, u"from B"_s);
  }

  [[nodiscard]] std::string file() const { return drive + "/Zarvy/zarvy_sync.json"; }

  void writeFile(const std::string& content) const {
    std::filesystem::create_directories(drive + "/Zarvy");
    std::ofstream(file(), std::ios::binary) << content;
  }

  [[nodiscard]] std::string content() const {
    std::ostringstream text;
    text << std::ifstream(file(), std::ios::binary).rdbuf();
    return text.str();
  }

  const std::string drive = stage().makeFolder("drive");
  const std::string uploaded =
      "iCloud sync: Uploaded 1 snippets, 0 folders, and 0 global variables";
  const std::string downloaded =
      "iCloud sync: Downloaded 1 snippets, 0 folders, and 0 global variables";
  Machine a{stage(), "A", drive};
  Machine b{stage(), "B", drive};
};

TEST_F(Sync, bringsTheLibraryOfOneMachineToTheOther) {
  a.writeMetadata(metadataOf("A", 3));
  a.program().start();
  ASSERT_TRUE(a.hasPrinted(uploaded));
  EXPECT_TRUE(a.hasSaved("sync_metadata.json", "\"dataVersion\" : 4"));
  EXPECT_THAT(a.lines(), Contains("iCloud sync: Using folder at " + drive + "/Zarvy"));
  EXPECT_EQ(a.program().terminate(), ExitStatus{});

  b.program().start();
  ASSERT_TRUE(b.hasPrinted(downloaded));
  EXPECT_TRUE(b.hasSaved("snippets.json", "from A"));
  EXPECT_TRUE(b.hasSaved("sync_metadata.json", "\"deviceID\" : \"A\""));
  EXPECT_TRUE(b.hasSaved("sync_metadata.json", "\"dataVersion\" : 4"));
  stage().startTarget(TargetKind::qt6);
  person().type(u";b ;a"_s);
  expectText(u";b from A"_s);
  EXPECT_EQ(b.program().terminate(), ExitStatus{});
}

// Both at once, and no key reaches the one for the other: what A has is newer.
TEST_F(Sync, letsTheMachineWinThatSavedMore) {
  a.writeMetadata(metadataOf("A", 9));
  b.writeMetadata(metadataOf("B", 3, "59"));
  b.program().start();
  ASSERT_TRUE(b.hasPrinted(uploaded));
  EXPECT_TRUE(b.hasSaved("sync_metadata.json", "\"dataVersion\" : 4"));
  a.program().start();
  ASSERT_TRUE(a.hasPrinted(uploaded));
  EXPECT_TRUE(a.hasSaved("sync_metadata.json", "\"dataVersion\" : 10"));
  EXPECT_NE(content().find("from A"), std::string::npos);
}

TEST_F(Sync, settlesTheSameGenerationByTheClock) {
  a.writeMetadata(metadataOf("A", 5, "00"));
  a.program().start();
  ASSERT_TRUE(a.hasPrinted(uploaded));
  EXPECT_TRUE(a.hasSaved("sync_metadata.json", "\"dataVersion\" : 6"));
  b.writeMetadata(metadataOf("B", 6, "01"));
  b.program().start();
  ASSERT_TRUE(b.hasPrinted("iCloud sync: Conflict resolved - cloud is newer"));
  EXPECT_TRUE(b.hasSaved("snippets.json", "from A"));
}

TEST_F(Sync, replacesAFileThatCannotBeReadWhereThisMachineHasAGeneration) {
  for (const std::string garbage : {"{ garbage", "{\"snippets\":[],\"folders\":", ""}) {
    SCOPED_TRACE(garbage);
    writeFile(garbage);
    a.writeMetadata(metadataOf("A", 3));
    a.program().start();
    ASSERT_TRUE(a.hasPrinted(uploaded));
    EXPECT_TRUE(a.hasPrinted("iCloud sync download error: "));
    EXPECT_NE(content().find("from A"), std::string::npos);
    EXPECT_EQ(a.program().terminate(), ExitStatus{});
  }
  EXPECT_NE(a.program().document("snippets.json").find("from A"), std::string::npos);
}

TEST_F(Sync, leavesABrokenFileAloneWhereThisMachineHasNoGeneration) {
  writeFile("{ garbage");
  a.program().start();
  ASSERT_TRUE(a.hasPrinted("iCloud sync download error: "));
  EXPECT_EQ(a.program().terminate(), ExitStatus{});
  EXPECT_EQ(content(), "{ garbage");
  EXPECT_NE(a.program().document("snippets.json").find("from A"), std::string::npos);
}

TEST_F(Sync, losesNothingWhereTheDriveHasGone) {
  std::filesystem::remove_all(drive);
  a.writeMetadata(metadataOf("A", 3));
  a.program().start();
  ASSERT_TRUE(a.hasPrinted("iCloud sync: User not signed into iCloud"));
  stage().startTarget(TargetKind::qt6);
  person().type(u";a"_s);
  expectText(u"from A"_s);
  EXPECT_EQ(a.program().terminate(), ExitStatus{});
  EXPECT_NE(a.program().document("snippets.json").find("from A"), std::string::npos);
  EXPECT_EQ(a.program().document("sync_metadata.json"), metadataOf("A", 3));
}

TEST_F(Sync, saysWhereItsFolderIsAFile) {
  std::ofstream(drive + "/Zarvy") << "a file";
  a.writeMetadata(metadataOf("A", 3));
  a.program().start();
  EXPECT_TRUE(a.hasPrinted("iCloud sync upload error: "));
  EXPECT_EQ(a.program().terminate(), ExitStatus{});
  EXPECT_NE(a.program().document("snippets.json").find("from A"), std::string::npos);
}

TEST_F(Sync, isNotEvenTriedWhereItIsOff) {
  a.program().writeLibrary({{u";a"_s, u"from A"_s}});
  a.writeMetadata(metadataOf("A", 3));
  a.program().start();
  EXPECT_EQ(a.program().terminate(), ExitStatus{});
  EXPECT_THAT(a.lines(), testing::Not(Contains(StartsWith("iCloud"))));
  EXPECT_FALSE(std::filesystem::exists(drive + "/Zarvy"));
}

}  // namespace
}  // namespace zarvy::e2e
