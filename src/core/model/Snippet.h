#pragma once

#include <optional>

#include <QDateTime>
#include <QJsonObject>
#include <QString>
#include <QUuid>

#include "base/Clock.h"
#include "base/json/JsonResult.h"

namespace zarvy {

// One expansion of the library.
struct Snippet {
  QUuid id;                       // identity; never changes
  QString title;                  // shown in lists; may be empty
  QString trigger;                // the typed abbreviation, or a regular expression
  QString replacement;            // with its placeholders, unprocessed
  std::optional<QUuid> folderID;  // absent for a snippet in no folder
  QDateTime createdAt;            // UTC
  QDateTime modifiedAt;           // UTC
  bool isRegexTrigger = false;    // `trigger` is a regular expression

  // A snippet with a fresh random id; both dates are readings of `clock`.
  [[nodiscard]] static Snippet create(QString title, QString trigger, QString replacement,
                                      const Clock& clock,
                                      std::optional<QUuid> folderID = std::nullopt);

  [[nodiscard]] static JsonResult<Snippet> fromJson(const QJsonValue& value);
  [[nodiscard]] QJsonObject toJson() const;

  // Over every field, so that lists that watch their records see any change.
  bool operator==(const Snippet&) const = default;
};

[[nodiscard]] size_t qHash(const Snippet& snippet, size_t seed = 0) noexcept;

}  // namespace zarvy

template <>
struct std::hash<zarvy::Snippet> {
  std::size_t operator()(const zarvy::Snippet& snippet) const noexcept { return qHash(snippet); }
};
