#pragma once

#include <chrono>
#include <functional>
#include <thread>
#include <utility>
#include <vector>

#include <xcb/xcb.h>

#include "platform/x11/connection/HiddenWindow.h"

namespace zarvy::x11 {

class Connection;

// Takes every event of the connection on a thread of its own and hands it to the listeners. A
// thread, because a notifier on the socket would miss events that libxcb read while some other
// thread waited for a reply, and because the typing threads wait for answers that must reach them
// while the main thread is busy.
class EventReader {
 public:
  // Called on the reader's thread.
  using Listener = std::function<void(const xcb_generic_event_t&)>;

  explicit EventReader(Connection& connection);
  ~EventReader();  // ends the thread

  EventReader(const EventReader&) = delete;
  EventReader& operator=(const EventReader&) = delete;

  // Before start() only. Listeners are called in the order in which they were added.
  void addListener(Listener listener);

  // Before start() only. `pause` is asked on the reader's thread when all events there were have
  // been handed over, and says how long to leave those to come where they are.
  void pauseBetweenReads(std::function<std::chrono::microseconds()> pause) {
    m_pause = std::move(pause);
  }

  // `onConnectionLost` is called on the reader's thread, once, if the server goes away.
  void start(std::function<void()> onConnectionLost);

 private:
  void run();
  [[nodiscard]] xcb_generic_event_t* nextEvent();

  Connection& m_connection;
  std::vector<Listener> m_listeners;
  std::function<std::chrono::microseconds()> m_pause;
  std::function<void()> m_onConnectionLost;
  const HiddenWindow m_wakeUp;  // for the end of the thread
  std::thread m_thread;
};

}  // namespace zarvy::x11
