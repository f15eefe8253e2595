#include "platform/freedesktop/SyncedFolderDrive.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <pwd.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

// What the clients of the usual services make.
constexpr std::array<QStringView, 5> usualFolders{u"Nextcloud", u"Dropbox", u"OneDrive",
                                                  u"pCloudDrive", u"Sync"};

}  // namespace

std::optional<QString> SyncedFolderDrive::realHomeDirectory() {
  passwd user{};
  passwd* found = nullptr;
  std::vector<char> texts(1024);  // what `user` points into
  while (::getpwuid_r(::getuid(), &user, texts.data(), texts.size(), &found) == ERANGE) {
    texts.resize(2 * texts.size());
  }
  if (found == nullptr || found->pw_dir == nullptr || *found->pw_dir == '\0') return std::nullopt;
  return QFile::decodeName(found->pw_dir);
}

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
