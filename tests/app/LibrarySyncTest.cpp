#include <gtest/gtest.h>

#include "app/LibraryFixture.h"

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;
using std::chrono::milliseconds;

// The state, and a shared file that another machine has written.
class LibrarySyncTest : public LibraryFixture {
 protected:
  void SetUp() override {
    LibraryFixture::SetUp();
    EXPECT_TRUE(QDir(m_harness.folder.path()).mkpath(u"Drive/Zarvy"_s));
  }

  void writeCloud(qint64 version) {
    m_harness.cloudSync.upload({theirs}, {home}, {}, SyncMetadata{made, u"B"_s, version});
    m_harness.syncQueue.drain();
    (void)m_harness.takeJournal();
  }

  const QDateTime made = m_harness.clock.now().addSecs(-60);
  const Snippet theirs = m_harness.snippet(u";t"_s, u"Theirs"_s);
};

TEST_F(LibrarySyncTest, TakesOverWhatTheOtherMachineHas) {
  writeCloud(4);
  state().sync().performSync();
  EXPECT_EQ(state().sync().syncStatus(), SyncStatus::syncing());
  rest();
  EXPECT_EQ(state().sync().syncStatus(), SyncStatus::success(m_harness.clock.now()));
  EXPECT_EQ(state().sync().lastSyncDate(), m_harness.clock.now());
  EXPECT_EQ(state().library().snippets(), QList{theirs});
  EXPECT_EQ(state().library().folders(), QList{home});
  EXPECT_EQ(state().library().globalVariables(), QList<GlobalVariable>());
  EXPECT_EQ(engineSnippets(), QList{theirs});
  EXPECT_EQ(m_harness.engine.globalVariables(), QList<GlobalVariable>());
  EXPECT_EQ(state().sync().syncMetadata(), (SyncMetadata{made, u"B"_s, 4}));

  EXPECT_EQ(savedSnippets(), QList{theirs});
  EXPECT_EQ(m_harness.store.loadFolders(), QList{home});
  EXPECT_EQ(m_harness.store.loadGlobalVariables(), QList<GlobalVariable>());
  EXPECT_EQ(m_harness.store.loadSyncMetadata(), (SyncMetadata{made, u"B"_s, 4}));
  EXPECT_EQ(m_harness.journal.takeEntries().filter(u"Uploaded"_s), QStringList())
      << "a plain write and no upload";
}

TEST_F(LibrarySyncTest, BeginsWhenItIsTurnedOnAndNotWithAnyOtherChangeOfASetting) {
  const auto statuses = count(state().sync(), &LibrarySync::syncStatusChanged);
  Settings settings = state().library().settings();
  settings.soundEnabled = !settings.soundEnabled;
  state().changeSettings(settings);
  rest();
  EXPECT_EQ(*statuses, 0) << "it is off";
  settings.iCloudSyncEnabled = true;
  state().changeSettings(settings);
  rest();
  const int whenTurnedOn = *statuses;
  EXPECT_GT(whenTurnedOn, 0);
  settings.soundEnabled = !settings.soundEnabled;
  state().changeSettings(settings);
  rest();
  EXPECT_EQ(*statuses, whenTurnedOn) << "it was on before";
  settings.iCloudSyncEnabled = false;
  state().changeSettings(settings);
  rest();
  EXPECT_EQ(*statuses, whenTurnedOn);
}

TEST_F(LibrarySyncTest, KeepsTheLibraryWhereNothingIsToBeTakenOver) {
  state().sync().performSync();
  rest();
  EXPECT_EQ(state().sync().syncStatus(), SyncStatus::success(m_harness.clock.now()));
  EXPECT_EQ(state().library().snippets(), (QList{a, b, c}));
  EXPECT_EQ(state().sync().syncMetadata(), std::nullopt);
}

TEST_F(LibrarySyncTest, ChangesNothingOfTheLibraryWhereItFails) {
  writeCloud(4);
  const auto dates = count(state().sync(), &LibrarySync::lastSyncDateChanged);
  m_harness.drive.setSignedIn(false);
  state().sync().performSync();
  rest();
  EXPECT_EQ(state().sync().syncStatus(), SyncStatus::unavailable());
  m_harness.drive.setSignedIn(true);
  m_harness.drive.setPlaces({u"/nowhere"_s});
  state().sync().performSync();
  rest();
  EXPECT_EQ(state().sync().syncStatus(), SyncStatus::error(u"iCloud Drive not available"_s));
  EXPECT_EQ(state().library().snippets(), (QList{a, b, c}));
  EXPECT_EQ(*dates, 0);
}

// The result is taken over whatever has changed since; what is written is what is there by then.
TEST_F(LibrarySyncTest, TakesAResultOverThatArrivesAfterAnEdit) {
  writeCloud(4);
  state().sync().performSync();
  m_harness.pass(milliseconds{300});
  m_harness.syncQueue.drain();
  EXPECT_EQ(state().library().snippets(), QList{theirs});

  writeCloud(5);
  state().sync().performSync();
  m_harness.syncQueue.drain();
  m_harness.scheduler.advance(milliseconds{299});
  const Snippet late = m_harness.snippet(u";late"_s, u"Late"_s);
  state().operations().addSnippet(late);
  EXPECT_EQ(state().library().snippets(), (QList{theirs, late}));
  m_harness.scheduler.advance(milliseconds{1});
  m_harness.syncQueue.drain();
  m_harness.scheduler.runPending();
  EXPECT_EQ(state().library().snippets(), QList{theirs}) << "the cloud's library is taken whole";
  rest();
  EXPECT_EQ(savedSnippets(), (QList{theirs, late})) << "the edit's own save comes last";
}

TEST_F(LibrarySyncTest, WritesTheLibraryOfTheMomentAfterTakingOne) {
  writeCloud(4);
  state().sync().performSync();
  m_harness.syncQueue.drain();
  m_harness.scheduler.advance(milliseconds{300});
  m_harness.syncQueue.drain();
  const Snippet late = m_harness.snippet(u";late"_s, u"Late"_s);
  QObject::connect(&state().sync(), &LibrarySync::lastSyncDateChanged, &state(),
                   [&] { state().operations().addSnippet(late); });
  m_harness.scheduler.runPending();
  m_harness.documentQueue.drain();
  EXPECT_EQ(savedSnippets(), (QList{theirs, late}));
}

TEST_F(LibrarySyncTest, TellsOfEachChangeOnce) {
  writeCloud(4);
  const auto statuses = count(state().sync(), &LibrarySync::syncStatusChanged);
  const auto dates = count(state().sync(), &LibrarySync::lastSyncDateChanged);
  const auto metadata = count(state().sync(), &LibrarySync::syncMetadataChanged);
  const auto snippets = count(state().library(), &Library::snippetsChanged);
  state().sync().performSync();
  rest();
  state().sync().performSync();
  rest();
  EXPECT_EQ(*statuses, 4);
  EXPECT_EQ(*dates, 1) << "the clock has not moved";
  EXPECT_EQ(*metadata, 1);
  EXPECT_EQ(*snippets, 1);
}

TEST_F(LibrarySyncTest, DoesNothingOnceTheStateIsGone) {
  writeCloud(4);
  state().sync().performSync();
  m_harness.state.reset();
  rest();
  EXPECT_EQ(savedSnippets(), (QList{a, b, c}));
}

TEST_F(LibrarySyncTest, IsStartedByTheLoadWhereItIsOn) {
  writeCloud(4);
  Settings settings;
  settings.iCloudSyncEnabled = true;
  m_harness.store.saveSettings(settings);
  m_harness.makeState();
  m_harness.loadDocuments();
  EXPECT_EQ(state().sync().syncStatus(), SyncStatus::syncing());
  EXPECT_EQ(state().library().snippets(), (QList{a, b, c}));
  rest();
  EXPECT_EQ(state().library().snippets(), QList{theirs});
}

TEST_F(LibrarySyncTest, IsStartedByTheSettingUnlessThatIsTurnedOffAtOnce) {
  Settings settings;
  settings.iCloudSyncEnabled = true;
  state().changeSettings(settings);
  EXPECT_EQ(state().sync().syncStatus(), SyncStatus::idle());
  state().changeSettings(Settings());
  m_harness.scheduler.runPending();
  EXPECT_EQ(state().sync().syncStatus(), SyncStatus::idle());
  state().changeSettings(settings);
  m_harness.scheduler.runPending();
  EXPECT_EQ(state().sync().syncStatus(), SyncStatus::syncing());
}

}  // namespace
}  // namespace zarvy
