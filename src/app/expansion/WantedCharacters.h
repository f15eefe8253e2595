#pragma once

#include <QString>

#include "core/model/SnippetList.h"

namespace zarvy {

// The distinct characters that expansions of `snippets` are likely to type, those that the most
// replacements hold first and, among equals, in the order of the library. Without control
// characters of ASCII, which are no text, and without what is no character at all. Pure; any
// thread.
[[nodiscard]] QString wantedCharacters(const SnippetList& snippets);

}  // namespace zarvy
