#pragma once

#include <bitset>

#include <QStringView>

namespace zarvy {

// The ASCII characters without which a text cannot match a regular expression, read from the text
// of a pattern that compiles. A search that would fail for want of one of them need not begin: a
// look at the text is some hundred times cheaper than trying the expression at each of its places.
//
// What the reader does not fully understand makes it ask for nothing: it may miss a character that
// is required, it never asks for one that is not.
class RequiredCharacters {
 public:
  RequiredCharacters() = default;
  explicit RequiredCharacters(QStringView pattern);

  // False only where no part of `text` can match.
  [[nodiscard]] bool arePresentIn(QStringView text) const;

 private:
  std::bitset<128> m_characters;
  bool m_ignoresCase = false;  // letters are kept in lower case then
};

}  // namespace zarvy
