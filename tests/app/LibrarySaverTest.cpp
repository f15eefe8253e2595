#include <gtest/gtest.h>

#include "app/LibraryFixture.h"

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;
using std::chrono::milliseconds;

// A save goes: 50 ms, documents, shared file, documents, main thread. Each step is taken by hand.
class LibrarySaverTest : public LibraryFixture {
 protected:
  void SetUp() override {
    LibraryFixture::SetUp();
    EXPECT_TRUE(QDir(m_harness.folder.path()).mkpath(u"Drive/Zarvy"_s));
  }

  void turnSyncOn() {
    Settings settings = state().library().settings();
    settings.iCloudSyncEnabled = true;
    state().changeSettings(settings);
    rest();
    (void)m_harness.takeJournal();
  }

  void debounce() { m_harness.scheduler.advance(milliseconds{50}); }

  [[nodiscard]] std::optional<SyncedData> cloud() {
    std::optional<SyncedData> found;
    m_harness.cloudSync.download([&found](const auto& data) { found = data; });
    rest();
    (void)m_harness.takeJournal();
    return found;
  }

  [[nodiscard]] Snippet made(const QString& trigger) {
    return m_harness.snippet(trigger, u"text"_s);
  }
};

TEST_F(LibrarySaverTest, WritesFiftyMillisecondsAfterTheLastChange) {
  const Snippet d = made(u";d"_s);
  const Snippet e = made(u";e"_s);
  state().operations().addSnippet(d);
  m_harness.scheduler.advance(milliseconds{49});
  state().operations().addSnippet(e);
  m_harness.scheduler.advance(milliseconds{49});
  EXPECT_EQ(m_harness.documentQueue.pendingCount(), 0U);
  m_harness.scheduler.advance(milliseconds{1});
  EXPECT_EQ(m_harness.documentQueue.pendingCount(), 1U);
  m_harness.documentQueue.drain();
  EXPECT_EQ(savedSnippets(), (QList{a, b, c, d, e}));
  rest();
  EXPECT_EQ(m_harness.takeJournal(), "") << "and nothing is uploaded";
}

TEST_F(LibrarySaverTest, WritesWhatTheLibraryWasWhenTheSaveWasAskedFor) {
  state().operations().addSnippet(made(u";d"_s));
  debounce();
  state().operations().deleteSnippet(a.id);
  m_harness.documentQueue.drain();
  EXPECT_EQ(savedSnippets().size(), 4);
  debounce();
  m_harness.documentQueue.drain();
  EXPECT_EQ(savedSnippets(), state().library().snippets());
}

// A save past its beginning is not called back by a later change.
TEST_F(LibrarySaverTest, LetsTwoSavesBeOnTheirWay) {
  turnSyncOn();
  state().operations().addSnippet(made(u";d"_s));
  debounce();
  m_harness.documentQueue.drain();  // the first waits for its upload
  state().operations().addSnippet(made(u";e"_s));
  debounce();
  m_harness.documentQueue.drain();
  EXPECT_EQ(m_harness.syncQueue.pendingCount(), 2U);
  rest();
  EXPECT_EQ(m_harness.takeJournal(),
            "print iCloud sync: Uploaded 4 snippets, 2 folders, and 1 global variables; "
            "print iCloud sync: Uploaded 5 snippets, 2 folders, and 1 global variables");
  EXPECT_EQ(cloud()->snippets, state().library().snippets());
  EXPECT_EQ(savedSnippets(), state().library().snippets());
  EXPECT_EQ(state().sync().syncMetadata()->dataVersion, 1)
      << "each counts on from what it had seen";
}

TEST_F(LibrarySaverTest, UploadsBehindTheSaveAndKeepsTheMetadata) {
  turnSyncOn();
  EXPECT_EQ(state().sync().syncMetadata(), std::nullopt);
  m_harness.clock.advance(std::chrono::seconds(7));
  state().operations().addSnippet(made(u";d"_s));
  debounce();
  EXPECT_EQ(m_harness.syncQueue.pendingCount(), 0U);
  m_harness.documentQueue.drain();
  EXPECT_EQ(savedSnippets().size(), 4);
  EXPECT_EQ(m_harness.takeJournal(), "");
  m_harness.syncQueue.drain();
  EXPECT_EQ(m_harness.takeJournal(),
            "print iCloud sync: Uploaded 4 snippets, 2 folders, and 1 global variables");
  EXPECT_EQ(m_harness.store.loadSyncMetadata(), std::nullopt);
  m_harness.documentQueue.drain();
  const SyncMetadata expected{m_harness.clock.now(), m_harness.cloudSync.deviceID(), 1};
  EXPECT_EQ(m_harness.store.loadSyncMetadata(), expected);
  EXPECT_EQ(state().sync().syncMetadata(), std::nullopt);
  m_harness.clock.advance(std::chrono::seconds(1));
  m_harness.scheduler.runPending();
  EXPECT_EQ(state().sync().syncMetadata(), expected);
  EXPECT_EQ(state().sync().lastSyncDate(), m_harness.clock.now());
  EXPECT_EQ(cloud()->metadata, expected);
}

TEST_F(LibrarySaverTest, CountsOnFromTheGenerationThatItHad) {
  ExpansionHarness other;
  ASSERT_TRUE(QDir(other.folder.path()).mkpath(u"Drive/Zarvy"_s));
  Settings synced;
  synced.iCloudSyncEnabled = true;
  other.load({{a}, {}, synced, {}, {}, SyncMetadata{m_harness.clock.now(), u"me"_s, 7}});
  other.pass(milliseconds{400});  // finds no shared file: uploads as 8
  EXPECT_EQ(other.state->sync().syncMetadata()->dataVersion, 8);
  other.state->operations().addSnippet(b);
  other.pass(milliseconds{400});
  EXPECT_EQ(other.state->sync().syncMetadata()->dataVersion, 9);
}

// It is asked for ahead of what may come of the sync that the snapshot has not seen.
TEST_F(LibrarySaverTest, UploadsOnlyWhereSyncWasOnWhenTheSaveWasAskedFor) {
  state().operations().addSnippet(made(u";d"_s));
  turnSyncOn();
  EXPECT_EQ(cloud(), std::nullopt);
  EXPECT_EQ(savedSnippets().size(), 4);
}

TEST_F(LibrarySaverTest, SavesVariablesAtOnceAndUploadsTheWholeLibrary) {
  turnSyncOn();
  state().operations().deleteGlobalVariable(name.id);
  EXPECT_EQ(m_harness.documentQueue.pendingCount(), 1U);
  rest();
  EXPECT_EQ(m_harness.takeJournal(),
            "print iCloud sync: Uploaded 3 snippets, 2 folders, and 0 global variables");
  EXPECT_EQ(m_harness.store.loadGlobalVariables(), QList<GlobalVariable>());
  EXPECT_EQ(cloud()->snippets, state().library().snippets());
}

TEST_F(LibrarySaverTest, DropsTheSaveThatWaitsWithTheState) {
  state().operations().addSnippet(made(u";d"_s));
  m_harness.state.reset();
  rest();
  EXPECT_EQ(savedSnippets(), (QList{a, b, c}));
}

TEST_F(LibrarySaverTest, FinishesAnUploadAfterTheEndOfTheState) {
  turnSyncOn();
  state().operations().addSnippet(made(u";d"_s));
  debounce();
  m_harness.documentQueue.drain();
  m_harness.state.reset();
  rest();
  EXPECT_EQ(m_harness.store.loadSyncMetadata()->dataVersion, 1);
  EXPECT_EQ(cloud()->snippets.size(), 4);
}

// The drive has gone: the library is safe all the same.
TEST_F(LibrarySaverTest, SavesWhereTheUploadFails) {
  turnSyncOn();
  ASSERT_TRUE(QDir(m_harness.folder.filePath(u"Drive"_s)).removeRecursively());
  m_harness.drive.setSignedIn(false);
  state().operations().addSnippet(made(u";d"_s));
  rest();
  EXPECT_EQ(m_harness.takeJournal(), "");
  EXPECT_EQ(savedSnippets(), state().library().snippets());
}

}  // namespace
}  // namespace zarvy
