#pragma once

#include <functional>

#include "base/posix/Users.h"
#include "platform/CloudDrive.h"
#include "platform/UserDefaults.h"

namespace zarvy {

// The folder of a file hosting service's own client: the one that the user names in the defaults,
// else the first there is of those that the usual clients make in the home folder. A folder that is
// named and not there is waited for; no other takes its place. Signed in means that it is there.
class SyncedFolderDrive final : public CloudDrive {
 public:
  // Under which key the defaults name the folder: by its path, from the home folder where it does
  // not begin with a slash.
  static constexpr QStringView folderKey = u"ZarvyCloudDriveFolder";

  // Gives a home folder; absent if there is none.
  using HomeLookup = std::function<std::optional<QString>()>;

  // Reads `defaults` at each use.
  explicit SyncedFolderDrive(const UserDefaults& defaults, HomeLookup home = homeInUserList);

  [[nodiscard]] bool isSignedIn() const override;
  [[nodiscard]] std::optional<QString> homeDirectory() const override;
  [[nodiscard]] QStringList places(const QString& homeDirectory) const override;

 private:
  const UserDefaults& m_defaults;
  const HomeLookup m_home;
};

}  // namespace zarvy
