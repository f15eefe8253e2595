#include "platform/freedesktop/SyncedFolderDrive.h"

#include <algorithm>
#include <array>
#include <utility>

#include <QDir>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

// What the clients of the usual services make.
constexpr std::array<QStringView, 5> usualFolders{u"Nextcloud", u"Dropbox", u"OneDrive",
                                                  u"pCloudDrive", u"Sync"};

}  // namespace

SyncedFolderDrive::SyncedFolderDrive(const UserDefaults& defaults, HomeLookup home)
    : m_defaults(defaults), m_home(std::move(home)) {}

bool SyncedFolderDrive::isSignedIn() const {
  const auto home = homeDirectory();
  if (!home) return false;
  const QStringList candidates = places(*home);
  return std::any_of(candidates.begin(), candidates.end(),
                     [](const QString& place) { return QFileInfo(place).isDir(); });
}

std::optional<QString> SyncedFolderDrive::homeDirectory() const {
  return m_home();
}

QStringList SyncedFolderDrive::places(const QString& homeDirectory) const {
  const QString named = m_defaults.string(folderKey.toString()).value_or(QString());
  const QDir home(homeDirectory);
  const auto pathOf = [&home](const QString& name) {
    return QDir::cleanPath(home.filePath(name.startsWith(u"~/") ? name.sliced(2) : name));
  };
  if (!named.isEmpty()) return {pathOf(named)};
  QStringList places;
  for (const QStringView folder : usualFolders) places.append(pathOf(folder.toString()));
  return places;
}

}  // namespace zarvy
