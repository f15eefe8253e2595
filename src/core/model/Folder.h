#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>
#include <QUuid>

#include "base/json/JsonResult.h"
#include "core/model/FolderColor.h"

namespace zarvy {

struct Snippet;

// A named, coloured group of snippets.
struct Folder {
  QUuid id;  // identity; never changes
  QString name;
  FolderColor color = FolderColor::blue;
  qint64 sortOrder = 0;  // position among the folders, lower first

  [[nodiscard]] static JsonResult<Folder> fromJson(const QJsonValue& value);
  [[nodiscard]] QJsonObject toJson() const;

  bool operator==(const Folder&) const = default;
};

[[nodiscard]] size_t qHash(const Folder& folder, size_t seed = 0) noexcept;

// The colour of the folder that `snippet` lies in; gray where it lies in none of `folders`.
[[nodiscard]] FolderColor folderColorOf(const Snippet& snippet, const QList<Folder>& folders);

}  // namespace zarvy

template <>
struct std::hash<zarvy::Folder> {
  std::size_t operator()(const zarvy::Folder& folder) const noexcept { return qHash(folder); }
};
