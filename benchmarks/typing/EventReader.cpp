#include "typing/EventReader.h"

#include <utility>

namespace zarvy::benchmarks {

EventReader::EventReader(const std::string& display)
    : m_connection(display), m_wakeUpWindow(xcb_generate_id(m_connection.get())) {
  xcb_create_window(m_connection.get(), XCB_COPY_FROM_PARENT, m_wakeUpWindow, m_connection.root(),
                    0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
}

EventReader::~EventReader() {
  stop();
}

void EventReader::start(Handler handler) {
  m_connection.synchronise();
  m_thread = std::thread([this, taken = std::move(handler)] { readEvents(taken); });
}

// An event that the connection sends to itself ends the reader's wait.
void EventReader::stop() {
  if (!m_thread.joinable()) return;
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = m_wakeUpWindow;
  xcb_send_event(m_connection.get(), 0, m_wakeUpWindow, XCB_EVENT_MASK_NO_EVENT,
                 reinterpret_cast<const char*>(&message));
  xcb_flush(m_connection.get());
  m_thread.join();
}

void EventReader::readEvents(const Handler& handler) const {
  for (;;) {
    const auto event = e2e::owned(xcb_wait_for_event(m_connection.get()));
    if (!event) return;  // the server has gone
    if (isWakeUp(*event)) return;
    handler(*event, std::chrono::steady_clock::now());
  }
}

// Others send messages too: to the root window, for the window manager.
bool EventReader::isWakeUp(const xcb_generic_event_t& event) const {
  return typeOf(event) == XCB_CLIENT_MESSAGE &&
         reinterpret_cast<const xcb_client_message_event_t&>(event).window == m_wakeUpWindow;
}

std::uint8_t typeOf(const xcb_generic_event_t& event) {
  constexpr std::uint8_t sentByClient = 0x80;
  return static_cast<std::uint8_t>(event.response_type & ~sentByClient);
}

}  // namespace zarvy::benchmarks
