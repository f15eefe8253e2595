#pragma once

#include <string>
#include <vector>

#include <QString>

namespace zarvy::e2e {

// A snippet of the library that the program under test is started with.
struct TestSnippet {
  QString trigger;
  QString replacement;
};

// The program's document of snippets, byte for byte. Lone surrogates and control characters go in
// as JSON escapes.
[[nodiscard]] std::string snippetDocument(const std::vector<TestSnippet>& snippets);

}  // namespace zarvy::e2e
