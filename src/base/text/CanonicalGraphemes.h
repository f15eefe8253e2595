#pragma once

#include <optional>

#include <QHash>
#include <QString>

namespace zarvy {

// Text in canonical decomposition (NFD). Two texts are canonically equivalent exactly where this
// is the same; case is kept. Lone surrogates stay as they are. Any thread.
[[nodiscard]] QString canonicalDecomposition(QStringView text);

// Numbers characters so that two of them have the same number exactly where they are canonically
// equivalent. Adding is for one thread; finding is for any, once nothing is added any more.
class CanonicalGraphemes {
 public:
  using Number = char32_t;

  // The number of `grapheme`, given to it if it has none yet.
  [[nodiscard]] Number add(QStringView grapheme);

  // Absent where no equivalent character can have been added.
  [[nodiscard]] std::optional<Number> find(QStringView grapheme) const;

 private:
  QHash<QString, Number> m_numbers;  // decompositions of more than one code point
};

}  // namespace zarvy
