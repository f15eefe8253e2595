#pragma once

#include <algorithm>

#include <QList>

#include "core/model/Folder.h"
#include "core/model/Snippet.h"

namespace zarvy {

// The colour of the folder that `snippet` lies in; gray where it lies in none of `folders`.
[[nodiscard]] inline FolderColor folderColorOf(const Snippet& snippet,
                                               const QList<Folder>& folders) {
  if (!snippet.folderID) return FolderColor::gray;
  const auto found = std::find_if(folders.begin(), folders.end(), [&](const Folder& folder) {
    return folder.id == *snippet.folderID;
  });
  return found == folders.end() ? FolderColor::gray : found->color;
}

}  // namespace zarvy
