#pragma once

#include <optional>

#include <QList>

#include "core/model/Folder.h"
#include "core/model/GlobalVariable.h"
#include "core/model/ImportBatch.h"
#include "core/model/Settings.h"
#include "core/model/Snippet.h"
#include "core/model/SyncMetadata.h"

namespace zarvy {

// What the program reads from its documents at start, beside what its stores keep for themselves.
struct LoadedLibrary {
  QList<Snippet> snippets;
  QList<Folder> folders;
  Settings settings;
  QList<GlobalVariable> globalVariables;
  QList<ImportBatch> importBatches = {};          // newest first
  std::optional<SyncMetadata> syncMetadata = {};  // of the last sync; absent before the first
};

}  // namespace zarvy
