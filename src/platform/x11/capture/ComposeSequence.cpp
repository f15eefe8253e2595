#include "platform/x11/capture/ComposeSequence.h"

#include <array>
#include <string>
#include <utility>

namespace zarvy::x11 {

namespace {

std::string localeName() {
  for (const char* variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
    if (const QByteArray value = qgetenv(variable); !value.isEmpty()) return value.toStdString();
  }
  return "C";
}

// Applications fall back on this table where the locale has none of its own.
constexpr const char* fallbackLocale = "en_US.UTF-8";

}  // namespace

ComposeSequence::ComposeSequence() : m_context(xkb_context_new(XKB_CONTEXT_NO_FLAGS)) {
  if (!m_context) return;
  xkb_context_set_log_level(m_context, XKB_LOG_LEVEL_CRITICAL);
  m_table = xkb_compose_table_new_from_locale(m_context, localeName().c_str(),
                                              XKB_COMPOSE_COMPILE_NO_FLAGS);
  if (!m_table) {
    m_table =
        xkb_compose_table_new_from_locale(m_context, fallbackLocale, XKB_COMPOSE_COMPILE_NO_FLAGS);
  }
  if (m_table) m_state = xkb_compose_state_new(m_table, XKB_COMPOSE_STATE_NO_FLAGS);
}

ComposeSequence::~ComposeSequence() {
  xkb_compose_state_unref(m_state);
  xkb_compose_table_unref(m_table);
  xkb_context_unref(m_context);
}

std::optional<QString> ComposeSequence::feed(xkb_keysym_t symbol, std::optional<QString> plain) {
  if (!m_state) return plain;
  if (xkb_compose_state_feed(m_state, symbol) == XKB_COMPOSE_FEED_IGNORED) return std::nullopt;
  switch (xkb_compose_state_get_status(m_state)) {
    case XKB_COMPOSE_NOTHING:
      return plain;
    case XKB_COMPOSE_COMPOSING:
      return std::nullopt;
    case XKB_COMPOSE_CANCELLED:
      xkb_compose_state_reset(m_state);
      return std::nullopt;
    case XKB_COMPOSE_COMPOSED: {
      std::array<char, 64> utf8{};
      const int size = xkb_compose_state_get_utf8(m_state, utf8.data(), utf8.size());
      xkb_compose_state_reset(m_state);
      if (size <= 0) return std::nullopt;
      return QString::fromUtf8(utf8.data());
    }
  }
  return plain;
}

bool ComposeSequence::isUnderWay() const {
  return m_state && xkb_compose_state_get_status(m_state) == XKB_COMPOSE_COMPOSING;
}

void ComposeSequence::breakOff() {
  if (m_state) xkb_compose_state_reset(m_state);
}

}  // namespace zarvy::x11
