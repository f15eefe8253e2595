#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <thread>

#include "e2e/harness/XConnection.h"

namespace zarvy::benchmarks {

// A connection to the display whose events a thread of its own reads and does nothing else, so that
// none waits for anything. The public functions belong to one thread. Throws std::runtime_error
// where it cannot connect.
class EventReader {
 public:
  explicit EventReader(const std::string& display);
  EventReader(const EventReader&) = delete;
  EventReader& operator=(const EventReader&) = delete;
  ~EventReader();

  // For requests of either thread.
  [[nodiscard]] const e2e::XConnection& connection() const { return m_connection; }

  // Hands each event to `handler`, on the reader's thread, until stop(). Called once.
  using Handler = std::function<void(const xcb_generic_event_t&,
                                     std::chrono::steady_clock::time_point arrival)>;
  void start(Handler handler);

  // The handler runs no more when this returns. Called by whoever owns what the handler uses.
  void stop();

 private:
  void readEvents(const Handler& handler) const;
  [[nodiscard]] bool isWakeUp(const xcb_generic_event_t& event) const;

  e2e::XConnection m_connection;
  xcb_window_t m_wakeUpWindow;
  std::thread m_thread;
};

// What kind of event it is, whoever sent it.
[[nodiscard]] std::uint8_t typeOf(const xcb_generic_event_t& event);

}  // namespace zarvy::benchmarks
