#include <optional>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "app/library/LibraryLoader.h"
#include "fakes/ManualClock.h"
#include "fakes/ManualQueue.h"
#include "fakes/ManualScheduler.h"
#include "fakes/RecordingLineOutput.h"

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;

class LibraryLoaderTest : public testing::Test {
 protected:
  void load() {
    m_loader.load([this](const LoadedLibrary& library) {
      m_loaded = library;
      ++m_loadCount;
    });
  }

  void finish() {
    m_storageQueue.drain();
    m_scheduler.runPending();
    m_storageQueue.drain();
  }

  void write(const QString& fileName, const QByteArray& content) {
    QFile file(QDir(m_store.dataDirectory()).filePath(fileName));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(content), content.size());
  }

  // As if nothing had been written to it for two hours.
  void makeOld(const QString& fileName) {
    QFile file(QDir(m_store.dataDirectory()).filePath(fileName));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    const QDateTime then = QDateTime::currentDateTimeUtc().addSecs(-2 * 60 * 60);
    ASSERT_TRUE(file.setFileTime(then, QFileDevice::FileModificationTime));
  }

  [[nodiscard]] bool hasFile(const QString& fileName) const {
    return QFile::exists(QDir(m_store.dataDirectory()).filePath(fileName));
  }

  QTemporaryDir m_folder;
  RecordingLineOutput m_output;
  DataStore m_store{m_output, [this] { return std::optional(m_folder.path()); }};
  ManualSerialQueue m_storageQueue;
  ManualScheduler m_scheduler;
  ManualClock m_clock;
  DocumentQueue m_documents{m_store, m_storageQueue};
  CounterStore m_counters{m_documents, m_scheduler};
  StatsStore m_stats{m_documents, m_scheduler, m_clock};
  FieldDefaultsStore m_fieldDefaults{m_documents, m_scheduler};
  LibraryLoader m_loader{m_documents, {m_counters, m_stats, m_fieldDefaults}, m_scheduler};
  std::optional<LoadedLibrary> m_loaded;
  int m_loadCount = 0;
};

TEST_F(LibraryLoaderTest, ReadsOnTheStorageQueueAndDeliversOnTheMainThread) {
  load();
  EXPECT_FALSE(m_loaded);
  m_storageQueue.drain();
  EXPECT_FALSE(m_loaded);
  m_scheduler.runPending();
  EXPECT_TRUE(m_loaded);
  EXPECT_EQ(m_loadCount, 1);
}

TEST_F(LibraryLoaderTest, ReadsSettingsAndGlobalVariables) {
  Settings settings;
  settings.soundEnabled = false;
  settings.quickSearchKeyCode = 7;
  m_store.saveSettings(settings);
  const QDateTime noon = m_clock.now();
  const QList<GlobalVariable> variables{
      GlobalVariable{QUuid::createUuid(), u"Name"_s, u"Ada"_s, noon, noon}};
  m_store.saveGlobalVariables(variables);
  load();
  finish();
  EXPECT_EQ(m_loaded->settings.toJson(), settings.toJson());
  EXPECT_EQ(m_loaded->globalVariables, variables);
}

TEST_F(LibraryLoaderTest, ReadsImportsAndTheLastSync) {
  const QDateTime noon = m_clock.now();
  const QList<ImportBatch> imports{{QUuid::createUuid(), noon, u"export.csv"_s, {}}};
  const SyncMetadata metadata{noon, u"device"_s, 7};
  m_store.saveImportBatches(imports);
  m_store.saveSyncMetadata(metadata);
  load();
  finish();
  EXPECT_EQ(m_loaded->importBatches, imports);
  EXPECT_EQ(m_loaded->syncMetadata, metadata);
}

TEST_F(LibraryLoaderTest, HandsCountersStatisticsAndRememberedTextsToTheirStores) {
  m_store.saveCounters({{u"invoice"_s, 41}});
  m_store.saveStatsSummary({7, 70, 21, {}});
  m_store.saveFieldDefaults({{u"Name"_s, u"Ada"_s}});
  load();
  finish();
  EXPECT_EQ(m_stats.summary(), (StatsSummary{7, 70, 21, {}}));
  EXPECT_EQ(m_fieldDefaults.value(u"Name"_s), u"Ada"_s);
  EXPECT_EQ(m_scheduler.pendingCount(), 0U);
  EXPECT_EQ(m_counters.nextValue(u"invoice"_s, 1), 42);
}

TEST_F(LibraryLoaderTest, PrintsTheFailuresInTheOrderOfReading) {
  const QStringList documents{u"snippets"_s,       u"folders"_s,       u"settings"_s,
                              u"import batches"_s, u"sync metadata"_s, u"global variables"_s,
                              u"counters"_s,       u"stats events"_s,  u"stats summary"_s,
                              u"field defaults"_s};
  for (QString name : documents) write(name.replace(u' ', u'_') + u".json"_s, "?");
  load();
  m_storageQueue.drain();
  const QStringList lines = m_output.lines();
  ASSERT_EQ(lines.size(), documents.size());
  for (qsizetype index = 0; index < lines.size(); ++index) {
    const QString beginning = u"Error loading "_s + documents.at(index) + u": "_s;
    EXPECT_TRUE(lines.at(index).startsWith(beginning)) << lines.at(index).toStdString();
  }
}

TEST_F(LibraryLoaderTest, ClearsAwayWhatAKilledSaveLeftBehind) {
  const QString name = u".snippets.json.a1B2c3.zarvy-save"_s;
  write(name, "[");
  makeOld(name);
  load();
  m_storageQueue.drain();
  EXPECT_FALSE(hasFile(name));
}

}  // namespace
}  // namespace zarvy
