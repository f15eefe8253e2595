#include <gtest/gtest.h>

#include "app/AppStateFixture.h"
#include "core/model/FirstRunContent.h"
#include "support/QtPrinters.h"

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;
using std::chrono::milliseconds;

class LoadData : public AppStateFixture {
 protected:
  [[nodiscard]] FirstRunContent firstRun() const { return FirstRunContent::make(m_harness.clock); }
  [[nodiscard]] bool hasFile(const QString& name) const {
    return QFile::exists(m_harness.folder.filePath(u"Zarvy/"_s + name));
  }
};

TEST_F(LoadData, ReadsAwayFromTheMainThreadAndOnce) {
  EXPECT_FALSE(state().hasLoadedData());
  state().loadData();
  EXPECT_TRUE(state().hasLoadedData());
  EXPECT_TRUE(state().library().snippets().isEmpty());
  state().loadData();
  EXPECT_EQ(m_harness.documentQueue.pendingCount(), 1U);
  m_harness.documentQueue.drain();
  EXPECT_TRUE(state().library().snippets().isEmpty());
  EXPECT_EQ(m_harness.source.handlerCount(), 0U);
  m_harness.scheduler.runPending();
  EXPECT_FALSE(state().library().snippets().isEmpty());
  EXPECT_EQ(m_harness.source.handlerCount(), 1U);
}

TEST_F(LoadData, GivesANewUserTheFirstRunContentAndSavesIt) {
  m_harness.loadDocuments();
  EXPECT_EQ(state().library().folders(), firstRun().folders);
  EXPECT_EQ(state().library().snippets().size(), firstRun().snippets.size());
  EXPECT_EQ(m_harness.engine.snippets(), state().library().snippets());
  EXPECT_FALSE(hasFile(u"snippets.json"_s));
  m_harness.pass(milliseconds{50});
  EXPECT_EQ(m_harness.store.loadSnippets(), state().library().snippets());
  EXPECT_EQ(m_harness.store.loadFolders(), state().library().folders());
  EXPECT_FALSE(hasFile(u"settings.json"_s));
}

TEST_F(LoadData, FindsTheSameContentAtTheSecondStart) {
  m_harness.loadDocuments();
  m_harness.pass(milliseconds{50});
  const SnippetList first = state().library().snippets();
  m_harness.makeState();
  m_harness.loadDocuments();
  EXPECT_EQ(state().library().snippets(), first);
  EXPECT_EQ(state().library().folders(), firstRun().folders);
}

// Empty lists beside settings with sync on, as a user leaves them who deletes everything.
TEST_F(LoadData, NeverUploadsTheFirstRunContentByItsSave) {
  ASSERT_TRUE(QDir(m_harness.folder.path()).mkpath(u"Drive/Zarvy"_s));
  Settings settings;
  settings.iCloudSyncEnabled = true;
  m_harness.load({{}, {}, settings, {}});
  m_harness.pass(milliseconds{400});
  EXPECT_EQ(state().library().folders(), firstRun().folders);
  EXPECT_EQ(m_harness.store.loadFolders(), firstRun().folders);
  EXPECT_EQ(m_harness.journal.takeEntries().filter(u"Uploaded"_s), QStringList());
  EXPECT_FALSE(QFile::exists(m_harness.folder.filePath(u"Drive/Zarvy/zarvy_sync.json"_s)));
}

TEST_F(LoadData, TakesFoldersWithoutSnippetsForALibrary) {
  const QList<Folder> folders{Folder{QUuid::createUuid(), u"Mine"_s, FolderColor::pink, 4}};
  m_harness.load({{}, folders, {}, {}});
  m_harness.pass(milliseconds{50});
  EXPECT_TRUE(state().library().snippets().isEmpty());
  EXPECT_EQ(state().library().folders(), folders);
  EXPECT_EQ(m_harness.store.loadSnippets(), QList<Snippet>());
}

TEST_F(LoadData, TakesSnippetsWithoutFoldersForALibrary) {
  const QList<Snippet> snippets{m_harness.snippet(u";x"_s, u"y"_s)};
  m_harness.load({snippets, {}, {}, {}});
  m_harness.pass(milliseconds{50});
  EXPECT_EQ(state().library().snippets(), snippets);
  EXPECT_TRUE(state().library().folders().isEmpty());
}

TEST_F(LoadData, TakesOverImportsAndTheLastSync) {
  const QDateTime noon = m_harness.clock.now();
  const QList<ImportBatch> imports{{QUuid::createUuid(), noon, u"export.csv"_s, {}}};
  const SyncMetadata metadata{noon, u"device"_s, 7};
  m_harness.load({{m_harness.snippet(u";x"_s, u"y"_s)}, {}, {}, {}, imports, metadata});
  EXPECT_EQ(state().library().recentImports(), imports);
  EXPECT_EQ(state().sync().syncMetadata(), metadata);
  EXPECT_EQ(state().sync().lastSyncDate(), std::nullopt);
  EXPECT_EQ(state().sync().syncStatus(), SyncStatus::idle());
}

TEST_F(LoadData, LeavesTheTaskbarWhereTheUserWantsIt) {
  Settings settings;
  settings.hideDockIcon = true;
  m_harness.load({{m_harness.snippet(u";x"_s, u"y"_s)}, {}, settings, {}});
  EXPECT_EQ(m_harness.journal.entries().front(), u"accessory"_s);
}

TEST_F(LoadData, DoesNothingWhereTheStateGoesMeanwhile) {
  state().loadData();
  m_harness.state.reset();
  m_harness.documentQueue.drain();
  m_harness.scheduler.runPending();
  EXPECT_EQ(m_harness.takeJournal(), "");
}

// The tray is there ahead of a slow disk, and so may be a window.
TEST_F(LoadData, SavesNothingOfWhatIsChangedBeforeItsEnd) {
  const QList<Snippet> snippets{m_harness.snippet(u";x"_s, u"y"_s)};
  m_harness.store.saveSnippets(snippets);
  Settings settings;
  settings.soundEnabled = false;
  m_harness.store.saveSettings(settings);
  state().loadData();
  state().operations().addSnippet(m_harness.snippet(u";new"_s, u"z"_s));
  state().operations().addFolder({QUuid::createUuid(), u"F"_s, FolderColor::red, 0});
  state().operations().addGlobalVariable({QUuid::createUuid(), u"N"_s, u"v"_s, {}, {}});
  state().changeSettings(Settings());
  EXPECT_FALSE(state().library().isLoaded());
  m_harness.pass(milliseconds{400});
  EXPECT_TRUE(state().library().isLoaded());
  EXPECT_EQ(state().library().snippets(), snippets);
  EXPECT_EQ(m_harness.store.loadSnippets(), snippets);
  EXPECT_FALSE(m_harness.store.loadSettings().soundEnabled);
  EXPECT_FALSE(hasFile(u"folders.json"_s));
  EXPECT_FALSE(hasFile(u"global_variables.json"_s));
}

// Nothing that can be read: the program serves with what it has, and overwrites nothing but what it
// makes for a new user.
TEST_F(LoadData, WorksThoughEveryDocumentIsGarbage) {
  const QStringList names{u"snippets"_s,       u"folders"_s,       u"settings"_s,
                          u"import_batches"_s, u"sync_metadata"_s, u"global_variables"_s,
                          u"counters"_s,       u"stats_events"_s,  u"stats_summary"_s,
                          u"field_defaults"_s};
  const QString directory = m_harness.store.dataDirectory();
  for (const QString& name : names) {
    QFile file(directory + u'/' + name + u".json"_s);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("{ garbage");
  }
  m_harness.loadDocuments();
  m_harness.pass(milliseconds{1000});
  EXPECT_EQ(m_harness.source.handlerCount(), 1U);
  EXPECT_EQ(state().library().folders(), firstRun().folders);
  for (const QString& name : names.sliced(2)) {
    QFile file(directory + u'/' + name + u".json"_s);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "{ garbage") << name.toStdString();
  }
  EXPECT_EQ(m_harness.journal.takeEntries().filter(u"print Error loading"_s).size(), 10);
}

}  // namespace
}  // namespace zarvy
