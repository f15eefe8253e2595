#pragma once

#include <memory>

#include <QList>
#include <QStringView>

namespace zarvy {

// User-perceived characters (extended grapheme clusters) of a text. Positions and lengths are in
// UTF-16 units where not said otherwise. Any thread. A text may hold lone surrogates; each is a
// character of its own.

[[nodiscard]] qsizetype graphemeCount(QStringView text);

// Whether `text` has `count` characters or more; looks no further than it must.
[[nodiscard]] bool hasGraphemes(QStringView text, qsizetype count);

// The characters in order; views into `text`.
[[nodiscard]] QList<QStringView> graphemes(QStringView text);

// The first `count` characters, or all where there are fewer; looks no further than it must.
[[nodiscard]] QStringView firstGraphemes(QStringView text, qsizetype count);

// Whether a character begins or ends at `position`. Both ends of the text are boundaries.
[[nodiscard]] bool isGraphemeBoundary(QStringView text, qsizetype position);

class GraphemeBreaker;

// Walks the characters of a text from its end to its start. The text must outlive the walk.
class ReverseGraphemes {
 public:
  explicit ReverseGraphemes(QStringView text);
  ~ReverseGraphemes();
  ReverseGraphemes(const ReverseGraphemes&) = delete;
  ReverseGraphemes& operator=(const ReverseGraphemes&) = delete;

  // The next character towards the start; empty once the start is reached.
  [[nodiscard]] QStringView next();

 private:
  QStringView m_text;
  qsizetype m_position;                        // where the next character ends
  std::unique_ptr<GraphemeBreaker> m_breaker;  // made only for what the quick test cannot tell
};

}  // namespace zarvy
