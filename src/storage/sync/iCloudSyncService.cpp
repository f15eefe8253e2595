#include "storage/sync/iCloudSyncService.h"

#include <chrono>
#include <limits>
#include <utility>

#include <QFileInfo>
#include <QUuid>

#include "base/json/JsonScalars.h"
#include "base/json/JsonText.h"
#include "storage/DocumentFile.h"
#include "storage/PrivateFolder.h"
#include "storage/ReplaceFile.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr QStringView syncFileName = u"zarvy_sync.json";
constexpr QStringView folderName = u"Zarvy";
constexpr QStringView deviceIDKey = u"ZarvySyncDeviceID";
// How long the drive is given to bring a file that was just asked for.
constexpr std::chrono::milliseconds waitForFile{300};

DocumentFile syncFileIn(const QString& folder, LineOutput& output) {
  const DocumentKind kind{syncFileName, u"iCloud sync download error: "_s,
                          u"iCloud sync upload error: "_s};
  return {kind, folder, output};
}

QString placesAsText(const QStringList& places) {
  return places.join(u", "_s);
}

QString counts(const SyncedData& data) {
  return u"%1 snippets, %2 folders, and %3 global variables"_s.arg(data.snippets.size())
      .arg(data.folders.size())
      .arg(data.globalVariables.size());
}

// The shared file may hold any generation, so counting stops at the largest number instead of
// ending the process.
qint64 generationAfter(qint64 generation) {
  return generation == std::numeric_limits<qint64>::max() ? generation : generation + 1;
}

}  // namespace

iCloudSyncService::iCloudSyncService(const CloudDrive& drive, UserDefaults& defaults,
                                     const Clock& clock, Scheduler& scheduler, SerialQueue& queue,
                                     LineOutput& output)
    : m_drive(drive),
      m_defaults(defaults),
      m_clock(clock),
      m_scheduler(scheduler),
      m_queue(queue),
      m_output(output) {}

iCloudSyncService::~iCloudSyncService() {
  m_queue.drain();
}

void iCloudSyncService::sync(const QList<Snippet>& snippets, const QList<Folder>& folders,
                             const QList<GlobalVariable>& globalVariables,
                             const std::optional<SyncMetadata>& localMetadata,
                             OnSynced onSynced) const {
  m_queue.post([this, local = SyncedLists{snippets, folders, globalVariables}, localMetadata,
                onSynced = std::move(onSynced)] {
    if (const auto obstacle = prepare()) return onSynced({*obstacle});
    readAfterTheWait([this, local, localMetadata, onSynced](const auto& cloud) {
      onSynced(settle(local, localMetadata, cloud));
    });
  });
}

void iCloudSyncService::upload(const QList<Snippet>& snippets, const QList<Folder>& folders,
                               const QList<GlobalVariable>& globalVariables,
                               const std::optional<SyncMetadata>& metadata,
                               OnUploaded onUploaded) const {
  m_queue.post([this, lists = SyncedLists{snippets, folders, globalVariables}, metadata,
                onUploaded = std::move(onUploaded)] {
    write(lists, metadata);
    if (onUploaded) onUploaded();
  });
}

void iCloudSyncService::download(OnDownloaded onDownloaded) const {
  m_queue.post([this, onDownloaded = std::move(onDownloaded)]() mutable {
    readAfterTheWait(std::move(onDownloaded));
  });
}

std::optional<SyncStatus> iCloudSyncService::prepare() const {
  if (!m_drive.isSignedIn()) {
    m_output.print(u"iCloud sync: User not signed into iCloud"_s);
    return SyncStatus::unavailable();
  }
  const auto folder = findFolder();
  if (!folder) {
    printWhereTheDriveWasLookedFor();
    return SyncStatus::error(u"iCloud Drive not available"_s);
  }
  if (const auto error = prepareFolder(*folder)) {
    return SyncStatus::error(u"Failed to create iCloud directory: "_s + *error);
  }
  return std::nullopt;
}

SyncResult iCloudSyncService::settle(const SyncedLists& local,
                                     const std::optional<SyncMetadata>& localMetadata,
                                     const std::optional<SyncedData>& cloud) const {
  switch (verdictOn(localMetadata, cloud)) {
    case SyncVerdict::cloudNewer:
      return {SyncStatus::success(m_clock.now()), cloud->metadata, cloud->snippets, cloud->folders,
              cloud->globalVariables};
    case SyncVerdict::localNewer: {
      const SyncMetadata metadata = nextMetadata(localMetadata);
      write(local, metadata);
      return {SyncStatus::success(m_clock.now()), metadata};
    }
    default:
      return {SyncStatus::success(m_clock.now())};
  }
}

void iCloudSyncService::write(const SyncedLists& lists,
                              const std::optional<SyncMetadata>& metadata) const {
  const auto folder = findFolderIfSignedIn();
  if (!folder) return;
  const SyncedData data{lists.snippets, lists.folders, lists.globalVariables,
                        metadata ? *metadata : nextMetadata(std::nullopt)};
  if (syncFileIn(*folder, m_output).save(writeJson(data.toJson()))) {
    m_output.print(u"iCloud sync: Uploaded "_s + counts(data));
  }
}

void iCloudSyncService::readAfterTheWait(OnDownloaded onDownloaded) const {
  const auto folder = findFolderIfSignedIn();
  if (!folder) return onDownloaded(std::nullopt);
  m_scheduler.postAfter(waitForFile, [this, life = std::weak_ptr(m_life), folder = *folder,
                                      onDownloaded = std::move(onDownloaded)] {
    if (life.expired()) return;
    m_queue.post([this, folder, onDownloaded] { onDownloaded(read(folder)); });
  });
}

std::optional<SyncedData> iCloudSyncService::read(const QString& folder) const {
  auto data = syncFileIn(folder, m_output).load(SyncedData::fromJson);
  if (data) m_output.print(u"iCloud sync: Downloaded "_s + counts(*data));
  return data;
}

QString iCloudSyncService::deviceID() const {
  const QString key = deviceIDKey.toString();
  const std::scoped_lock guard(m_identityLock);
  if (auto known = m_defaults.string(key)) return *std::move(known);
  QString made = jsonText(QUuid::createUuid());
  m_defaults.setString(key, made);
  return made;
}

SyncMetadata iCloudSyncService::nextMetadata(const std::optional<SyncMetadata>& current) const {
  return {m_clock.now(), deviceID(), current ? generationAfter(current->dataVersion) : 1};
}

// The folder of the sync file, which may not be there yet, in the drive, which is.
std::optional<QString> iCloudSyncService::findFolder() const {
  const auto home = m_drive.homeDirectory();
  if (!home) {
    m_output.print(u"iCloud sync: Could not determine real home directory"_s);
    return std::nullopt;
  }
  const QStringList places = m_drive.places(*home);
  for (const QString& place : places) {
    if (QFileInfo(place).isDir()) return place + u'/' + folderName.toString();
  }
  m_output.print(u"iCloud sync: Mobile Documents folder not found at "_s + placesAsText(places));
  return std::nullopt;
}

std::optional<QString> iCloudSyncService::findFolderIfSignedIn() const {
  return m_drive.isSignedIn() ? findFolder() : std::nullopt;
}

void iCloudSyncService::printWhereTheDriveWasLookedFor() const {
  const QString home = m_drive.homeDirectory().value_or(u"unknown"_s);
  m_output.print(u"iCloud sync: iCloud Drive folder not found."_s);
  m_output.print(u"  Real home directory: "_s + home);
  m_output.print(u"  Looking for: "_s + placesAsText(m_drive.places(home)));
  m_output.print(u"  Make sure iCloud Drive is enabled in System Settings > Apple ID > iCloud"_s);
}

// What went wrong; absent where the folder is there now.
std::optional<QString> iCloudSyncService::prepareFolder(const QString& folder) const {
  m_output.print(u"iCloud sync: Using folder at "_s + folder);
  if (!QFileInfo::exists(folder)) return makePrivateFolder(folder);
  // An upload that was killed in the middle would otherwise be carried about for ever.
  removeUnfinishedReplacements(folder + u'/' + syncFileName.toString());
  return std::nullopt;
}

SyncVerdict iCloudSyncService::verdictOn(const std::optional<SyncMetadata>& local,
                                         const std::optional<SyncedData>& cloud) const {
  const auto cloudMetadata = cloud ? std::optional(cloud->metadata) : std::nullopt;
  const SyncVerdict verdict = compare(local, cloudMetadata);
  if (verdict != SyncVerdict::conflict) return verdict;
  const SettledConflict settled = settleConflict(local, cloudMetadata);
  m_output.print(settled.line.toString());
  return settled.verdict;
}

}  // namespace zarvy
