#pragma once

#include <optional>

#include <QString>

namespace zarvy {

// Texts by their keys that survive restarts, apart from the documents: what the user has set in a
// file of settings (Zarvy.conf), and what the program keeps there for itself. Any thread.
class UserDefaults {
 public:
  virtual ~UserDefaults() = default;

  // Absent where nothing was stored under `key`.
  [[nodiscard]] virtual std::optional<QString> string(const QString& key) const = 0;

  // Stored when it returns, or lost without a word where that cannot be.
  virtual void setString(const QString& key, const QString& value) = 0;
};

}  // namespace zarvy
