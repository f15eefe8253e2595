#include "core/injection/TypedSince.h"

#include <algorithm>

#include "base/text/Graphemes.h"
#include "base/text/Wipe.h"

namespace zarvy {

// Seldom more, so that no piece is left behind where it grows.
TypedSince::TypedSince() {
  constexpr qsizetype usualLength = 64;
  m_text.reserve(usualLength);
}

TypedSince::~TypedSince() {
  chop(m_text.size());
}

void TypedSince::append(QStringView character) {
  const std::scoped_lock guard(m_lock);
  if (!m_hasEnded) m_text.append(character);
}

// One more than was typed takes off what was there before.
void TypedSince::removeLast() {
  const std::scoped_lock guard(m_lock);
  if (m_hasEnded) return;
  m_hasEnded = m_text.isEmpty();
  chop(ReverseGraphemes(m_text).next().size());
}

void TypedSince::end() {
  const std::scoped_lock guard(m_lock);
  m_hasEnded = true;
}

void TypedSince::lose() {
  const std::scoped_lock guard(m_lock);
  if (m_hasEnded) return;
  m_hasEnded = true;
  chop(m_text.size());
}

TypedSince::Text TypedSince::text() const {
  const std::scoped_lock guard(m_lock);
  return {.all = unsharedCopy(m_text), .rest = unsharedCopy(QStringView(m_text).sliced(m_taken))};
}

QString TypedSince::takeForForm() {
  const std::scoped_lock guard(m_lock);
  m_taken = m_text.size();
  return unsharedCopy(m_text);
}

void TypedSince::chop(qsizetype units) {
  const qsizetype left = m_text.size() - units;
  wipe(m_text, left);
  m_text.resize(left);
  m_taken = std::min(m_taken, left);
}

std::shared_ptr<TypedSince> TypedSinceNow::begin() {
  auto typed = std::make_shared<TypedSince>();
  m_listening.push_back(typed);
  return typed;
}

void TypedSinceNow::append(QStringView character) {
  tellAll([&](TypedSince& typed) { typed.append(character); });
}

void TypedSinceNow::removeLast() {
  tellAll([](TypedSince& typed) { typed.removeLast(); });
}

void TypedSinceNow::end() {
  tellAll([](TypedSince& typed) { typed.end(); });
}

void TypedSinceNow::lose() {
  tellAll([](TypedSince& typed) { typed.lose(); });
}

template <typename Tell>
void TypedSinceNow::tellAll(const Tell& tell) {
  std::erase_if(m_listening, [&](const std::weak_ptr<TypedSince>& listening) {
    const auto typed = listening.lock();
    if (typed) tell(*typed);
    return !typed;
  });
}

}  // namespace zarvy
