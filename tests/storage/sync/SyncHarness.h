#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "base/UtcZone.h"
#include "fakes/FakeCloudDrive.h"
#include "fakes/FakeUserDefaults.h"
#include "fakes/ImmediateQueue.h"
#include "fakes/ManualClock.h"
#include "fakes/ManualScheduler.h"
#include "fakes/RecordingLineOutput.h"
#include "storage/sync/iCloudSyncService.h"
#include "support/QtPrinters.h"

namespace zarvy {

// What a machine has of the library. Told apart by a word that every record of it holds.
struct LocalLibrary {
  QList<Snippet> snippets;
  QList<Folder> folders;
  QList<GlobalVariable> globalVariables;

  // Two snippets, one folder and three variables, the same for the same word.
  [[nodiscard]] static LocalLibrary of(const QString& word) {
    const QDateTime date = QDateTime::fromSecsSinceEpoch(1768900000, utcZone);
    const auto id = [&word](int number) {
      return QUuid::createUuidV5(QUuid(), word + QString::number(number));
    };
    LocalLibrary library;
    for (int number = 0; number < 2; ++number) {
      library.snippets.append({id(number), word, QStringLiteral(";") + word,
                               QStringLiteral("a/b \"") + word, std::nullopt, date, date, false});
    }
    library.folders.append({id(2), word, FolderColor::pink, 7});
    for (int number = 3; number < 6; ++number) {
      library.globalVariables.append({id(number), word, word, date, date});
    }
    return library;
  }

  bool operator==(const LocalLibrary&) const = default;
};

// One machine with its service and its library, which does with a result what its caller has to.
class Machine {
 public:
  Machine(const CloudDrive& drive, const Clock& clock, LineOutput& output, const QString& name)
      : library(LocalLibrary::of(name)),
        m_service(drive, m_defaults, clock, m_scheduler, m_queue, output) {
    m_defaults.setString(QStringLiteral("ZarvySyncDeviceID"), name);
  }

  // Begins a sync, whose result is taken over when it is there.
  void beginSync() {
    m_result.reset();
    m_service.sync(library.snippets, library.folders, library.globalVariables, metadata,
                   [this](const SyncResult& result) { take(result); });
  }

  // The result of the latest sync; absent before its end.
  [[nodiscard]] const std::optional<SyncResult>& result() const { return m_result; }

  // Lets the time go on.
  void wait(std::chrono::milliseconds duration = waitForFile) { m_scheduler.advance(duration); }

  // Syncs, and takes over what comes of it.
  SyncResult sync() {
    beginSync();
    wait();
    EXPECT_TRUE(m_result.has_value());
    return m_result.value_or(SyncResult{});
  }

  [[nodiscard]] std::optional<SyncedData> download() {
    std::optional<std::optional<SyncedData>> downloaded;
    m_service.download([&downloaded](const auto& data) { downloaded = data; });
    wait();
    EXPECT_TRUE(downloaded.has_value());
    return downloaded.value_or(std::nullopt);
  }

  // What a save does after an edit that leaves the library `edited`.
  void save(const LocalLibrary& edited) {
    library = edited;
    const SyncMetadata next = m_service.nextMetadata(metadata);
    m_service.upload(library.snippets, library.folders, library.globalVariables, next);
    metadata = next;
  }

  [[nodiscard]] const iCloudSyncService& service() const { return m_service; }

  LocalLibrary library;
  std::optional<SyncMetadata> metadata;

 private:
  static constexpr std::chrono::milliseconds waitForFile{300};

  void take(const SyncResult& result) {
    if (result.metadata) metadata = result.metadata;
    if (result.snippets) {
      library = {*result.snippets, result.folders.value(), result.globalVariables.value()};
    }
    m_result = result;
  }

  FakeUserDefaults m_defaults;
  ManualScheduler m_scheduler;
  ImmediateSerialQueue m_queue;
  iCloudSyncService m_service;
  std::optional<SyncResult> m_result;
};

// A drive on the disk, and a machine with the identity "A".
class SyncHarness : public testing::Test {
 protected:
  SyncHarness() { EXPECT_TRUE(QDir().mkpath(m_place)); }

  // In the drive.
  [[nodiscard]] QString folder() const { return m_place + QStringLiteral("/Zarvy"); }
  [[nodiscard]] QString file() const { return folder() + QStringLiteral("/zarvy_sync.json"); }

  void write(const QByteArray& content) const {
    ASSERT_TRUE(QDir().mkpath(folder()));
    QFile file(this->file());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }

  [[nodiscard]] QByteArray content() const {
    QFile file(this->file());
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  }

  // Every file of the folder, hidden ones included, by name.
  [[nodiscard]] QStringList files() const {
    return QDir(folder()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
  }

  void forgetLines() { static_cast<void>(m_output.takeLines()); }

  [[nodiscard]] QString usingLine() const {
    return QStringLiteral("iCloud sync: Using folder at ") + folder();
  }

  static inline const QString uploadedLine =
      QStringLiteral("iCloud sync: Uploaded 2 snippets, 1 folders, and 3 global variables");
  static inline const QString downloadedLine =
      QStringLiteral("iCloud sync: Downloaded 2 snippets, 1 folders, and 3 global variables");

  const QTemporaryDir m_root;
  const QString m_home = m_root.filePath(QStringLiteral("home"));
  const QString m_place = m_home + QStringLiteral("/Drive");
  FakeCloudDrive m_drive{m_home, m_place};
  ManualClock m_clock;
  RecordingLineOutput m_output;
  ManualScheduler m_scheduler;
  ImmediateSerialQueue m_queue;
  Machine m_machine{m_drive, m_clock, m_output, QStringLiteral("A")};
};

}  // namespace zarvy
