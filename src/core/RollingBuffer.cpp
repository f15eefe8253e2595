#include "core/RollingBuffer.h"

#include "base/text/Graphemes.h"

namespace zarvy {

QString RollingBuffer::append(QStringView character) {
  const std::scoped_lock guard(m_lock);
  m_text.append(character);
  const QList<QStringView> characters = graphemes(m_text);
  if (const qsizetype excess = characters.size() - m_maxLength; excess > 0) {
    m_text.remove(0, characters.at(excess).data() - characters.front().data());
  }
  return m_text;
}

void RollingBuffer::removeLast() {
  const std::scoped_lock guard(m_lock);
  m_text.chop(ReverseGraphemes(m_text).next().size());
}

void RollingBuffer::clear() {
  const std::scoped_lock guard(m_lock);
  m_text.clear();
}

QString RollingBuffer::text() const {
  const std::scoped_lock guard(m_lock);
  return m_text;
}

}  // namespace zarvy
