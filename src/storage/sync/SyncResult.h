#pragma once

#include <optional>

#include <QList>

#include "core/model/Folder.h"
#include "core/model/GlobalVariable.h"
#include "core/model/Snippet.h"
#include "core/model/SyncMetadata.h"
#include "storage/sync/SyncStatus.h"

namespace zarvy {

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
