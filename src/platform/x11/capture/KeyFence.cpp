#include "platform/x11/capture/KeyFence.h"

namespace zarvy::x11 {

void KeyFence::set() {
  ++m_set;
  m_window.sendMessage();
}

void KeyFence::handleEvent(const xcb_generic_event_t& event) {
  if (m_window.isMessage(event)) ++m_passed;
}

}  // namespace zarvy::x11
