#pragma once

#include <optional>
#include <utility>

#include <QDateTime>
#include <QList>
#include <QString>

#include "core/model/Folder.h"
#include "core/model/GlobalVariable.h"
#include "core/model/Snippet.h"
#include "core/model/SyncMetadata.h"

namespace zarvy {

// How the sync stands, as the user is shown it. Equal where kind, date and message are.
class SyncStatus {
 public:
  enum class Kind {
    success,
    error,
    idle,         // nothing has been tried
    syncing,      // a sync is running
    disabled,     // the user turned it off
    unavailable,  // there is no drive on this machine
  };

  // idle().
  SyncStatus() = default;

  // `date` is when the sync ended, in UTC.
  [[nodiscard]] static SyncStatus success(const QDateTime& date) {
    return {Kind::success, date, {}};
  }
  // `message` is what the user is told.
  [[nodiscard]] static SyncStatus error(const QString& message) {
    return {Kind::error, std::nullopt, message};
  }
  [[nodiscard]] static SyncStatus idle() { return {}; }
  [[nodiscard]] static SyncStatus syncing() { return {Kind::syncing, std::nullopt, {}}; }
  [[nodiscard]] static SyncStatus disabled() { return {Kind::disabled, std::nullopt, {}}; }
  [[nodiscard]] static SyncStatus unavailable() { return {Kind::unavailable, std::nullopt, {}}; }

  [[nodiscard]] Kind kind() const { return m_kind; }
  // Present with success alone.
  [[nodiscard]] const std::optional<QDateTime>& date() const { return m_date; }
  // Empty but with error.
  [[nodiscard]] const QString& message() const { return m_message; }

  bool operator==(const SyncStatus&) const = default;

 private:
  SyncStatus(Kind kind, std::optional<QDateTime> date, QString message)
      : m_kind(kind), m_date(std::move(date)), m_message(std::move(message)) {}

  Kind m_kind = Kind::idle;
  std::optional<QDateTime> m_date;
  QString m_message;
};

// What came of one sync. Whatever is present is to be taken over by the caller and saved; the three
// lists are there all together or not at all, and never without the metadata.
struct SyncResult {
  SyncStatus status;
  std::optional<SyncMetadata> metadata = {};
  std::optional<QList<Snippet>> snippets = {};
  std::optional<QList<Folder>> folders = {};
  std::optional<QList<GlobalVariable>> globalVariables = {};

  bool operator==(const SyncResult&) const = default;
};

}  // namespace zarvy
