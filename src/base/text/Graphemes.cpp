#include "base/text/Graphemes.h"

#include <optional>
#include <utility>

#include <unicode/ubrk.h>
#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include "base/text/CodePoints.h"

namespace zarvy {

// The full rules of character boundaries over one text. One thread.
class GraphemeBreaker {
 public:
  // The text must outlive the breaker.
  explicit GraphemeBreaker(QStringView text) : m_text(text), m_iterator(copyOfRules()) {
    if (!m_iterator) return;
    UErrorCode status = U_ZERO_ERROR;
    ubrk_setText(m_iterator.get(), text.utf16(), static_cast<int32_t>(text.size()), &status);
    if (U_FAILURE(status)) m_iterator.reset();
  }

  // The nearest boundary before or after `position`, in UTF-16 units; else the text's start or end.
  [[nodiscard]] qsizetype preceding(qsizetype position) const {
    if (!m_iterator) return position > 0 ? position - 1 : 0;
    const int32_t boundary = ubrk_preceding(m_iterator.get(), static_cast<int32_t>(position));
    return boundary == UBRK_DONE ? 0 : boundary;
  }

  [[nodiscard]] qsizetype following(qsizetype position) const {
    if (!m_iterator) return position < m_text.size() ? position + 1 : m_text.size();
    const int32_t boundary = ubrk_following(m_iterator.get(), static_cast<int32_t>(position));
    return boundary == UBRK_DONE ? m_text.size() : boundary;
  }

  [[nodiscard]] bool isBoundary(qsizetype position) const {
    return !m_iterator || ubrk_isBoundary(m_iterator.get(), static_cast<int32_t>(position)) != 0;
  }

 private:
  struct Close {
    void operator()(UBreakIterator* iterator) const { ubrk_close(iterator); }
  };
  using Iterator = std::unique_ptr<UBreakIterator, Close>;

  // Null only where the installation of the ICU data is broken; every unit is a character then.
  static Iterator copyOfRules() {
    // Reading the rules takes ten times as long as copying what was read. Never changed once made.
    static const Iterator rules = [] {
      UErrorCode status = U_ZERO_ERROR;
      Iterator made(ubrk_open(UBRK_CHARACTER, "", nullptr, 0, &status));
      return U_SUCCESS(status) ? std::move(made) : nullptr;
    }();
    if (!rules) return nullptr;
    UErrorCode status = U_ZERO_ERROR;
    Iterator copy(ubrk_clone(rules.get(), &status));
    return U_SUCCESS(status) ? std::move(copy) : nullptr;
  }

  QStringView m_text;
  Iterator m_iterator;
};

namespace {

// Code points that join nothing by themselves: between two of them there is always a boundary.
bool isPlain(char32_t codePoint) {
  if (codePoint < 0x80) return codePoint >= 0x20 && codePoint != 0x7F;
  return u_getIntPropertyValue(static_cast<UChar32>(codePoint), UCHAR_GRAPHEME_CLUSTER_BREAK) ==
         U_GCB_OTHER;
}

char32_t codePointBefore(QStringView text, qsizetype position) {
  const char16_t unit = text[position - 1].unicode();
  if (U16_IS_TRAIL(unit) && position > 1 && text[position - 2].isHighSurrogate()) {
    return QChar::surrogateToUcs4(text[position - 2].unicode(), unit);
  }
  return unit;
}

// Walks forward; the full rules come in only where the quick test cannot tell.
class ForwardGraphemes {
 public:
  explicit ForwardGraphemes(QStringView text) : m_text(text) {}

  [[nodiscard]] bool atEnd() const { return m_position == m_text.size(); }

  QStringView next() {
    const qsizetype start = m_position;
    m_position = boundaryAfter(start);
    return m_text.sliced(start, m_position - start);
  }

 private:
  qsizetype boundaryAfter(qsizetype position) {
    const char32_t first = codePointAt(m_text, position);
    const qsizetype end = position + lengthOf(first);
    if (end == m_text.size()) return end;
    const bool isBoundary = (m_isPlain || isPlain(first)) && isPlain(codePointAt(m_text, end));
    m_isPlain = isBoundary;  // so is what comes next, if so
    if (isBoundary) return end;
    if (!m_breaker) m_breaker.emplace(m_text);
    return m_breaker->following(position);
  }

  QStringView m_text;
  qsizetype m_position = 0;
  bool m_isPlain = false;  // what stands at m_position is known to be
  std::optional<GraphemeBreaker> m_breaker;
};

}  // namespace

qsizetype graphemeCount(QStringView text) {
  qsizetype count = 0;
  for (ForwardGraphemes walk(text); !walk.atEnd(); ++count) walk.next();
  return count;
}

bool hasGraphemes(QStringView text, qsizetype count) {
  if (text.size() < count) return false;
  ForwardGraphemes walk(text);
  for (; count > 0 && !walk.atEnd(); --count) walk.next();
  return count <= 0;
}

QList<QStringView> graphemes(QStringView text) {
  QList<QStringView> result;
  for (ForwardGraphemes walk(text); !walk.atEnd();) result.append(walk.next());
  return result;
}

QStringView firstGraphemes(QStringView text, qsizetype count) {
  ForwardGraphemes walk(text);
  qsizetype length = 0;
  for (; count > 0 && !walk.atEnd(); --count) length += walk.next().size();
  return text.first(length);
}

bool isGraphemeBoundary(QStringView text, qsizetype position) {
  if (position <= 0 || position >= text.size()) return true;
  if (text[position - 1].isHighSurrogate() && text[position].isLowSurrogate()) return false;
  if (isPlain(codePointBefore(text, position)) && isPlain(codePointAt(text, position))) return true;
  return GraphemeBreaker(text).isBoundary(position);
}

ReverseGraphemes::ReverseGraphemes(QStringView text) : m_text(text), m_position(text.size()) {}

ReverseGraphemes::~ReverseGraphemes() = default;

QStringView ReverseGraphemes::next() {
  if (m_position == 0) return {};
  const qsizetype end = m_position;
  const char32_t last = codePointBefore(m_text, end);
  m_position = end - lengthOf(last);
  if (m_position > 0 && !(isPlain(last) && isPlain(codePointBefore(m_text, m_position)))) {
    if (!m_breaker) m_breaker = std::make_unique<GraphemeBreaker>(m_text);
    m_position = m_breaker->preceding(end);
  }
  return m_text.sliced(m_position, end - m_position);
}

}  // namespace zarvy
