#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>

#include <xcb/xcb.h>

namespace zarvy::x11 {

class Connection;
class WindowProperties;

// Waits until the application behind a window has read every event sent to it so far. An X server
// does not tell; a toolkit that answers _NET_WM_PING does, since it reads its events in order. An
// application that does not answer is given time, and watched until it sleeps.
class TargetBarrier {
 public:
  TargetBarrier(Connection& connection, const WindowProperties& windows);

  // Any thread but the reader's. Waits for a bounded time; a window that has gone has read all that
  // it will ever read.
  void waitUntilRead(xcb_window_t window);

  // On the reader's thread.
  void handleEvent(const xcb_generic_event_t& event);

  // Ends every wait at once. Any thread.
  void release();

 private:
  enum class Answer { read, silent };
  [[nodiscard]] Answer ping(xcb_window_t window);
  void settle(xcb_window_t window);

  Connection& m_connection;
  const WindowProperties& m_windows;
  std::mutex m_mutex;
  std::condition_variable m_answered;
  uint32_t m_lastPing = 0;
  uint32_t m_lastAnswer = 0;
  bool m_released = false;
};

}  // namespace zarvy::x11
