#pragma once

#include <QList>

#include "base/Clock.h"
#include "core/model/Folder.h"
#include "core/model/Snippet.h"

namespace zarvy {

// What an empty library starts with. The folders have fixed ids, the snippets fresh ones, so make
// it once a process.
struct FirstRunContent {
  QList<Folder> folders;
  QList<Snippet> snippets;

  [[nodiscard]] static FirstRunContent make(const Clock& clock);
};

}  // namespace zarvy
