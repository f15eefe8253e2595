#pragma once

#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <optional>
#include <string>

#include "typing/EventReader.h"

namespace zarvy::benchmarks {

// Notes when a new window is on the screen and has the keyboard, by the events that the server
// sends of it. The public functions belong to one thread. Throws std::runtime_error where the
// display cannot be listened to.
class WindowObserver {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;

  explicit WindowObserver(const std::string& display);
  WindowObserver(const WindowObserver&) = delete;
  WindowObserver& operator=(const WindowObserver&) = delete;
  ~WindowObserver();

  // Windows made so far count no longer.
  void forget();

  // When a window made since forget() was both mapped and had the keyboard. Throws
  // std::runtime_error where that does not come about for long.
  [[nodiscard]] TimePoint waitForWindow();

  // Returns once that window has left the screen. Throws likewise.
  void waitUntilGone();

 private:
  struct NewWindow {
    bool isMapped = false;
    bool hasKeyboard = false;
  };

  struct Appearance {
    xcb_window_t window = XCB_WINDOW_NONE;
    TimePoint arrival;
    bool isGone = false;
  };

  void take(const xcb_generic_event_t& event, TimePoint arrival);
  void takeNew(xcb_window_t window);
  void takeChange(xcb_window_t window, bool NewWindow::*property, bool value, TimePoint arrival);

  // The state of the window has become what it is; under m_mutex.
  void judge(xcb_window_t window, TimePoint arrival);

  EventReader m_reader;
  std::mutex m_mutex;
  std::condition_variable m_changed;
  std::map<xcb_window_t, NewWindow> m_windows;  // under m_mutex
  std::optional<Appearance> m_appearance;       // under m_mutex
};

}  // namespace zarvy::benchmarks
