#pragma once

#include <initializer_list>
#include <utility>

#include <QList>
#include <QString>

#include "core/model/Folder.h"
#include "core/model/Snippet.h"

namespace zarvy {

[[nodiscard]] inline Snippet searchedSnippet(const QString& title, const QString& trigger) {
  Snippet snippet;
  snippet.id = QUuid::createUuid();
  snippet.title = title;
  snippet.trigger = trigger;
  return snippet;
}

[[nodiscard]] inline Folder searchedFolder(FolderColor color) {
  Folder folder;
  folder.id = QUuid::createUuid();
  folder.color = color;
  return folder;
}

// Of these titles and triggers, in this order.
[[nodiscard]] inline QList<Snippet> libraryOf(
    std::initializer_list<std::pair<QString, QString>> texts) {
  QList<Snippet> snippets;
  for (const auto& [title, trigger] : texts) snippets.append(searchedSnippet(title, trigger));
  return snippets;
}

}  // namespace zarvy
