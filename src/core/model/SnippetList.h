#pragma once

#include <QtGlobal>

#include "base/ChunkedList.h"
#include "core/model/Snippet.h"

namespace zarvy {

// What has become of a list: a stretch of records that stand side by side was added, removed or
// updated, or the list is another one altogether.
struct ListChange {
  enum class Kind { added, removed, updated, reset };

  Kind kind = Kind::reset;
  qsizetype first = 0;  // the position of the first of them; meaningless for a reset, as is `count`
  qsizetype count = 0;

  bool operator==(const ListChange&) const = default;
};

// The snippets of a library, in stored order.
using SnippetList = ChunkedList<Snippet>;

}  // namespace zarvy
