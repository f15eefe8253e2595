#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QUuid>

#include "base/json/JsonResult.h"

namespace zarvy {

// One import, kept so that it can be undone.
struct ImportBatch {
  QUuid id;                 // identity; never changes
  QDateTime timestamp;      // UTC; when it was committed
  QString sourceFile;       // the file's name without its folder
  QList<QUuid> snippetIDs;  // the snippets that it added, in order

  [[nodiscard]] static JsonResult<ImportBatch> fromJson(const QJsonValue& value);
  [[nodiscard]] QJsonObject toJson() const;

  bool operator==(const ImportBatch&) const = default;
};

}  // namespace zarvy
