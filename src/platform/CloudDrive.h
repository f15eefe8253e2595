#pragma once

#include <optional>

#include <QString>
#include <QStringList>

namespace zarvy {

// The user's folder that some other program keeps alike on several machines. Any thread.
class CloudDrive {
 public:
  virtual ~CloudDrive() = default;

  // Whether the user has such a folder on this machine at present.
  [[nodiscard]] virtual bool isSignedIn() const = 0;

  // The home folder that the system's own list of users names, whatever the environment says;
  // absent where the list has none.
  [[nodiscard]] virtual std::optional<QString> homeDirectory() const = 0;

  // Where the folder may lie for a user of that home, whether it is there or not. Never empty; the
  // first that is there is the one.
  [[nodiscard]] virtual QStringList places(const QString& homeDirectory) const = 0;
};

}  // namespace zarvy
