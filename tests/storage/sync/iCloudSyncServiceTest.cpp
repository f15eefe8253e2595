#include <limits>

#include <gtest/gtest.h>

#include "base/json/JsonText.h"
#include "storage/sync/SyncHarness.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr qint64 largest = std::numeric_limits<qint64>::max();

class iCloudSyncServiceTest : public SyncHarness {
 protected:
  // So many seconds after the clock's time.
  [[nodiscard]] SyncMetadata made(const QString& device, qint64 version, qint64 seconds = 0) {
    return {m_clock.now().addSecs(seconds), device, version};
  }

  // Puts a library of another machine into the shared file.
  void writeCloud(const SyncMetadata& metadata) {
    const LocalLibrary& library = m_cloud;
    const SyncedData data{library.snippets, library.folders, library.globalVariables, metadata};
    write(writeJson(data.toJson()));
  }

  [[nodiscard]] SyncedData cloud() const {
    const auto json = parseJson(content());
    EXPECT_TRUE(json.hasValue());
    auto data = SyncedData::fromJson(json.value());
    EXPECT_TRUE(data.hasValue());
    return std::move(data).value();
  }

  const LocalLibrary m_own = m_machine.library;
  const LocalLibrary m_cloud = LocalLibrary::of(u"cloud"_s);
};

TEST_F(iCloudSyncServiceTest, LeavesAllAsItIsWhereNeitherSideHasAnything) {
  EXPECT_EQ(m_machine.sync(), SyncResult{SyncStatus::success(m_clock.now())});
  EXPECT_EQ(m_output.lines(), QStringList{usingLine()});
  EXPECT_EQ(files(), QStringList());
  EXPECT_EQ(m_machine.metadata, std::nullopt);
}

TEST_F(iCloudSyncServiceTest, WaitsBeforeItReads) {
  m_machine.beginSync();
  m_machine.wait(std::chrono::milliseconds(299));
  EXPECT_EQ(m_machine.result(), std::nullopt);
  writeCloud(made(u"B"_s, 1));
  m_machine.wait(std::chrono::milliseconds(1));
  EXPECT_EQ(m_machine.metadata, made(u"B"_s, 1));
}

// The edit of a user who does not wait is not lost to a cloud that is about to be read.
TEST_F(iCloudSyncServiceTest, UploadsWhatComesDuringTheWaitBeforeItReads) {
  writeCloud(made(u"B"_s, 4));
  m_machine.beginSync();
  const LocalLibrary edited = LocalLibrary::of(u"edited"_s);
  m_machine.save(edited);
  m_machine.wait();
  EXPECT_EQ(m_machine.metadata, made(u"A"_s, 1));
  EXPECT_EQ(m_machine.library, edited);
  EXPECT_EQ(cloud().metadata, made(u"A"_s, 1));
}

TEST_F(iCloudSyncServiceTest, TakesTheLibraryOfTheCloudWhole) {
  const SyncMetadata metadata = made(u"B"_s, 4, -60);
  writeCloud(metadata);
  const QByteArray before = content();
  EXPECT_EQ(m_machine.sync(),
            (SyncResult{SyncStatus::success(m_clock.now()), metadata, m_cloud.snippets,
                        m_cloud.folders, m_cloud.globalVariables}));
  EXPECT_EQ(m_output.lines(), (QStringList{usingLine(), downloadedLine}));
  EXPECT_EQ(m_machine.library, m_cloud);
  EXPECT_EQ(content(), before);
}

TEST_F(iCloudSyncServiceTest, TakesAnEmptyLibraryToo) {
  write(writeJson(SyncedData{{}, {}, {}, made(u"B"_s, 4)}.toJson()));
  const SyncResult result = m_machine.sync();
  EXPECT_EQ(result.snippets, QList<Snippet>());
  EXPECT_EQ(m_machine.library, LocalLibrary());
  EXPECT_EQ(m_output.lines(), (QStringList{usingLine(),
                                           u"iCloud sync: Downloaded 0 snippets, 0 folders, and 0 "
                                           "global variables"_s}));
}

TEST_F(iCloudSyncServiceTest, UploadsWhereTheCloudHasNothing) {
  m_machine.metadata = made(u"B"_s, 4, -60);
  EXPECT_EQ(m_machine.sync(), (SyncResult{SyncStatus::success(m_clock.now()), made(u"A"_s, 5)}));
  EXPECT_EQ(m_output.lines(), (QStringList{usingLine(), uploadedLine}));
  EXPECT_EQ(cloud(),
            (SyncedData{m_own.snippets, m_own.folders, m_own.globalVariables, made(u"A"_s, 5)}));
}

// What of both sides comes of a sync where both have something, and what is printed of it.
TEST_F(iCloudSyncServiceTest, FollowsTheVerdict) {
  const QString cloudLine = u"iCloud sync: Conflict resolved - cloud is newer"_s;
  const QString localLine = u"iCloud sync: Conflict resolved - local is newer or same"_s;
  enum class Winner { none, local, cloud };
  struct Row {
    SyncMetadata local;
    SyncMetadata cloud;
    Winner winner;
    qint64 version;  // of both sides, afterwards
    QStringList lines;
  };
  const QList<Row> rows{
      {made(u"A"_s, 5), made(u"A"_s, 5), Winner::none, 5, {}},
      {made(u"A"_s, 5), made(u"A"_s, 5, 60), Winner::none, 5, {}},
      {made(u"B"_s, 5), made(u"B"_s, 5), Winner::none, 5, {}},
      {made(u"A"_s, 5), made(u"B"_s, 5), Winner::local, 6, {localLine, uploadedLine}},
      {made(u"A"_s, 5, 1), made(u"B"_s, 5), Winner::local, 6, {localLine, uploadedLine}},
      {made(u"A"_s, 5), made(u"B"_s, 5, 1), Winner::cloud, 5, {cloudLine}},
      {made(u"A"_s, 9), made(u"B"_s, 3, 60), Winner::local, 10, {uploadedLine}},
      {made(u"A"_s, 3, 60), made(u"B"_s, 9), Winner::cloud, 9, {}},
      {made(u"A"_s, 6), made(u"A"_s, 5), Winner::local, 7, {uploadedLine}},
      {made(u"A"_s, 5), made(u"A"_s, 6), Winner::cloud, 6, {}},
      {made(u"A"_s, -3), made(u"B"_s, -4), Winner::local, -2, {uploadedLine}},
      {made(u"A"_s, largest), made(u"B"_s, 5), Winner::local, largest, {uploadedLine}},
  };
  for (qsizetype index = 0; index < rows.size(); ++index) {
    SCOPED_TRACE(index);
    const Row& row = rows[index];
    writeCloud(row.cloud);
    const QByteArray before = content();
    m_machine.library = m_own;
    m_machine.metadata = row.local;
    const SyncResult result = m_machine.sync();

    EXPECT_EQ(result.status, SyncStatus::success(m_clock.now()));
    EXPECT_EQ(m_output.takeLines(), (QStringList{usingLine(), downloadedLine} << row.lines));
    EXPECT_EQ(m_machine.library, row.winner == Winner::cloud ? m_cloud : m_own);
    EXPECT_EQ(m_machine.metadata->dataVersion, row.version);
    if (row.winner == Winner::local) {
      EXPECT_EQ(result.metadata, made(u"A"_s, row.version));
      EXPECT_EQ(cloud(), (SyncedData{m_own.snippets, m_own.folders, m_own.globalVariables,
                                     made(u"A"_s, row.version)}));
    } else {
      EXPECT_EQ(content(), before);
      EXPECT_EQ(result.metadata.has_value(), row.winner == Winner::cloud);
      EXPECT_EQ(m_machine.metadata, row.winner == Winner::cloud ? row.cloud : row.local);
    }
    EXPECT_EQ(result.snippets.has_value(), row.winner == Winner::cloud);
    EXPECT_EQ(result.folders.has_value(), row.winner == Winner::cloud);
    EXPECT_EQ(result.globalVariables.has_value(), row.winner == Winner::cloud);
  }
}

TEST_F(iCloudSyncServiceTest, IsInStepOnceItTookTheCloud) {
  writeCloud(made(u"B"_s, 4));
  EXPECT_TRUE(m_machine.sync().snippets.has_value());
  const QByteArray before = content();
  EXPECT_EQ(m_machine.sync(), SyncResult{SyncStatus::success(m_clock.now())});
  EXPECT_EQ(content(), before);
}

TEST_F(iCloudSyncServiceTest, TellsTheMomentOfFinishing) {
  const ManualClock clock(m_clock.now(), std::chrono::seconds(1));
  Machine machine(m_drive, clock, m_output, u"A"_s);
  machine.metadata = made(u"A"_s, 1);
  EXPECT_EQ(machine.sync(),
            (SyncResult{SyncStatus::success(m_clock.now().addSecs(1)), made(u"A"_s, 2)}));
}

TEST_F(iCloudSyncServiceTest, UploadsWithTheMetadataGivenOrAsTheFirstGeneration) {
  ASSERT_TRUE(QDir().mkpath(folder()));
  m_machine.service().upload(m_own.snippets, m_own.folders, m_own.globalVariables,
                             made(u"anyone"_s, 12, -60));
  EXPECT_EQ(cloud().metadata, made(u"anyone"_s, 12, -60));
  m_machine.service().upload({}, m_own.folders, {}, std::nullopt);
  EXPECT_EQ(cloud(), (SyncedData{{}, m_own.folders, {}, made(u"A"_s, 1)}));
  EXPECT_EQ(m_output.lines(), (QStringList{uploadedLine,
                                           u"iCloud sync: Uploaded 0 snippets, 1 folders, and 0 "
                                           "global variables"_s}));
}

TEST_F(iCloudSyncServiceTest, MakesItsIdentityOnceAndStoresIt) {
  FakeUserDefaults defaults;
  const auto identity = [&] {
    return iCloudSyncService(m_drive, defaults, m_clock, m_scheduler, m_queue, m_output).deviceID();
  };
  const QString made = identity();
  EXPECT_EQ(made, QUuid::fromString(made).toString(QUuid::WithoutBraces).toUpper());
  EXPECT_FALSE(QUuid::fromString(made).isNull());
  EXPECT_EQ(identity(), made);
  EXPECT_EQ(defaults.texts(), (QMap<QString, QString>{{u"ZarvySyncDeviceID"_s, made}}));
  for (const QString& stored : {u"any text"_s, u""_s}) {
    defaults.setString(u"ZarvySyncDeviceID"_s, stored);
    EXPECT_EQ(identity(), stored);
  }
  EXPECT_EQ(m_output.lines(), QStringList());
}

TEST_F(iCloudSyncServiceTest, CountsGenerationsFromOneToTheLargestNumber) {
  const iCloudSyncService& service = m_machine.service();
  EXPECT_EQ(service.nextMetadata(std::nullopt), made(u"A"_s, 1));
  EXPECT_EQ(service.nextMetadata(made(u"B"_s, 7, -60)), made(u"A"_s, 8));
  EXPECT_EQ(service.nextMetadata(made(u"B"_s, largest)), made(u"A"_s, largest));
}

}  // namespace
}  // namespace zarvy
