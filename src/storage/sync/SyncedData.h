#pragma once

#include <QJsonObject>
#include <QList>

#include "base/json/JsonResult.h"
#include "core/model/Folder.h"
#include "core/model/GlobalVariable.h"
#include "core/model/Snippet.h"
#include "core/model/SyncMetadata.h"

namespace zarvy {

// What of a library takes part in the sync.
struct SyncedLists {
  QList<Snippet> snippets;
  QList<Folder> folders;
  QList<GlobalVariable> globalVariables;
};

// The document that the machines of a user share.
struct SyncedData {
  QList<Snippet> snippets;
  QList<Folder> folders;
  QList<GlobalVariable> globalVariables;
  SyncMetadata metadata;

  [[nodiscard]] static JsonResult<SyncedData> fromJson(const QJsonValue& value);
  [[nodiscard]] QJsonObject toJson() const;

  bool operator==(const SyncedData&) const = default;
};

}  // namespace zarvy
