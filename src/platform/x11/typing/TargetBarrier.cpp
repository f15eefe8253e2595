#include "platform/x11/typing/TargetBarrier.h"

#include <thread>

#include "platform/x11/connection/Connection.h"
#include "platform/x11/typing/ProcessActivity.h"
#include "platform/x11/windows/WindowProperties.h"

namespace zarvy::x11 {

namespace {

using namespace std::chrono_literals;

constexpr uint8_t eventTypeMask = 0x7f;
constexpr auto longestPing = 1000ms;

// An application that answers no ping must have been found asleep so many times in a row; it gets
// at least the shortest time, and at most the longest.
constexpr int restsInARow = 8;
constexpr auto samplingInterval = 5ms;
constexpr auto shortestSettling = 60ms;
constexpr auto longestSettling = 3000ms;

}  // namespace

TargetBarrier::TargetBarrier(Connection& connection, const WindowProperties& windows)
    : m_connection(connection), m_windows(windows) {}

void TargetBarrier::waitUntilRead(xcb_window_t window) {
  m_connection.synchronize();
  if (window != XCB_WINDOW_NONE && m_windows.answersPing(window) && ping(window) == Answer::read)
    return;
  settle(window);
}

TargetBarrier::Answer TargetBarrier::ping(xcb_window_t window) {
  std::unique_lock lock(m_mutex);
  const uint32_t token = ++m_lastPing;
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = window;
  message.type = m_connection.atoms().wmProtocols;
  message.data.data32[0] = m_connection.atoms().netWmPing;
  message.data.data32[1] = token;  // stands where a time stamp is: the answer brings it back
  message.data.data32[2] = window;
  xcb_send_event(m_connection.xcb(), 0, window, XCB_EVENT_MASK_NO_EVENT,
                 reinterpret_cast<const char*>(&message));
  m_connection.flush();
  const bool answered =
      m_answered.wait_for(lock, longestPing, [&] { return m_released || m_lastAnswer >= token; });
  return answered ? Answer::read : Answer::silent;
}

void TargetBarrier::handleEvent(const xcb_generic_event_t& event) {
  if ((event.response_type & eventTypeMask) != XCB_CLIENT_MESSAGE) return;
  const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
  if (message.type != m_connection.atoms().wmProtocols ||
      message.data.data32[0] != m_connection.atoms().netWmPing) {
    return;
  }
  const std::lock_guard lock(m_mutex);
  const uint32_t token = message.data.data32[1];
  if (token > m_lastPing) return;  // the answer to a window manager's own ping
  m_lastAnswer = std::max(m_lastAnswer, token);
  m_answered.notify_all();
}

// An application also sleeps while it waits for an answer of a busy server. The server serves its
// clients in turn, so once it has answered this program too, that answer is on its way and the
// application is found awake at the next look.
void TargetBarrier::settle(xcb_window_t window) {
  ProcessActivity activity(m_windows.processIdentifier(window));
  const auto start = std::chrono::steady_clock::now();
  int rests = 0;
  for (;;) {
    m_connection.synchronize();
    rests = activity.isResting() ? rests + 1 : 0;
    const auto settled = std::chrono::steady_clock::now() - start;
    if (rests >= restsInARow && settled >= shortestSettling) return;
    if (settled >= longestSettling) return;
    std::unique_lock lock(m_mutex);
    if (m_answered.wait_for(lock, samplingInterval, [&] { return m_released; })) return;
  }
}

void TargetBarrier::release() {
  const std::lock_guard lock(m_mutex);
  m_released = true;
  m_answered.notify_all();
}

}  // namespace zarvy::x11
