#include "core/RollingBuffer.h"

#include <algorithm>

#include "base/text/Graphemes.h"
#include "base/text/Wipe.h"

namespace zarvy {

namespace {

constexpr qsizetype usualUnitsOfCharacter = 8;

}  // namespace

RollingBuffer::RollingBuffer(qsizetype maxLength) : m_maxLength(maxLength) {
  m_text.reserve(maxLength * usualUnitsOfCharacter);
}

QString RollingBuffer::append(QStringView character) {
  const std::scoped_lock guard(m_lock);
  m_text.append(character);
  const QList<QStringView> characters = graphemes(m_text);
  if (const qsizetype excess = characters.size() - m_maxLength; excess > 0) {
    const qsizetype units = characters.at(excess).data() - characters.front().data();
    std::copy(m_text.cbegin() + units, m_text.cend(), m_text.begin());
    chop(units);
  }
  return unsharedCopy(m_text);
}

void RollingBuffer::removeLast() {
  const std::scoped_lock guard(m_lock);
  chop(ReverseGraphemes(m_text).next().size());
}

void RollingBuffer::clear() {
  const std::scoped_lock guard(m_lock);
  chop(m_text.size());
}

QString RollingBuffer::text() const {
  const std::scoped_lock guard(m_lock);
  return unsharedCopy(m_text);
}

void RollingBuffer::chop(qsizetype units) {
  const qsizetype left = m_text.size() - units;
  wipe(m_text, left);
  m_text.resize(left);
}

}  // namespace zarvy
