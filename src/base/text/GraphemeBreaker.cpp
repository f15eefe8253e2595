#include "base/text/GraphemeBreaker.h"

#include <utility>

#include <unicode/ubrk.h>

namespace zarvy {

void GraphemeBreaker::Close::operator()(UBreakIterator* iterator) const {
  ubrk_close(iterator);
}

GraphemeBreaker::GraphemeBreaker(QStringView text) : m_text(text) {
  // Reading the rules takes ten times as long as copying what was read. Never changed once made.
  static const std::unique_ptr<UBreakIterator, Close> rules = [] {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<UBreakIterator, Close> made(ubrk_open(UBRK_CHARACTER, "", nullptr, 0, &status));
    return U_SUCCESS(status) ? std::move(made) : nullptr;
  }();
  // Only a broken installation of the ICU data stops here; every unit is a character then.
  if (!rules) return;
  UErrorCode status = U_ZERO_ERROR;
  m_iterator.reset(ubrk_clone(rules.get(), &status));
  if (U_SUCCESS(status)) {
    ubrk_setText(m_iterator.get(), text.utf16(), static_cast<int32_t>(text.size()), &status);
  }
  if (U_FAILURE(status)) m_iterator.reset();
}

qsizetype GraphemeBreaker::preceding(qsizetype position) const {
  if (!m_iterator) return position > 0 ? position - 1 : 0;
  const int32_t boundary = ubrk_preceding(m_iterator.get(), static_cast<int32_t>(position));
  return boundary == UBRK_DONE ? 0 : boundary;
}

qsizetype GraphemeBreaker::following(qsizetype position) const {
  if (!m_iterator) return position < m_text.size() ? position + 1 : m_text.size();
  const int32_t boundary = ubrk_following(m_iterator.get(), static_cast<int32_t>(position));
  return boundary == UBRK_DONE ? m_text.size() : boundary;
}

bool GraphemeBreaker::isBoundary(qsizetype position) const {
  return !m_iterator || ubrk_isBoundary(m_iterator.get(), static_cast<int32_t>(position)) != 0;
}

}  // namespace zarvy
