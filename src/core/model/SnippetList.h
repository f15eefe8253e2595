#pragma once

#include "base/ChunkedList.h"
#include "core/model/Snippet.h"

namespace zarvy {

// The snippets of a library, in stored order.
using SnippetList = ChunkedList<Snippet>;

}  // namespace zarvy
