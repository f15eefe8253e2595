#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <set>
#include <vector>

#include <xcb/xcb.h>

namespace zarvy {
class KeyDetour;
}

namespace zarvy::x11 {

class Connection;
class ProcessActivity;
class WindowProperties;

// Waits until the application behind a window has read every event sent to it so far. An X server
// does not tell; a toolkit that answers _NET_WM_PING does, since it reads its events in order. An
// application that does not answer is given time, and watched until it sleeps; so is one whose keys
// may be on their way through an input method, together with that.
class TargetBarrier {
 public:
  // `keyDetour` may be null. A window gets `longestDetour` to answer ahead of one.
  TargetBarrier(Connection& connection, const WindowProperties& windows, KeyDetour* keyDetour,
                std::chrono::milliseconds longestDetour = std::chrono::milliseconds(200));

  // Any thread but the reader's. Waits for a bounded time for all the windows together. A window
  // that is gone has read all that it will ever read; one whose process has been stopped may read
  // on tomorrow, and is not waited for.
  void waitUntilRead(const std::set<xcb_window_t>& windows);

  // Waits until the text typed so far cannot be overtaken by a key that the application behind the
  // window acts on at once; false where that cannot happen, without delay, and for some seconds
  // after an application has not answered in time: what is typed while this waits ahead of
  // backspaces is deleted in place of the trigger. Any thread but the reader's.
  bool awaitKeyDetour(xcb_window_t window);

  // Gives applications time to take over a change of the keymap: some read it on another thread
  // than their keys. Any thread but the reader's.
  void letKeymapBeRead();

  // On the reader's thread.
  void handleEvent(const xcb_generic_event_t& event);

  // From now on all waits together take only a moment: the program is about to end. Any thread.
  void hurry();

  // Ends every wait at once. Any thread.
  void release();

 private:
  using Clock = std::chrono::steady_clock;
  enum class Answer { read, silent };
  void waitForOne(xcb_window_t window);
  [[nodiscard]] Answer ping(xcb_window_t window, Clock::duration longest);
  void settle(std::vector<ProcessActivity> processes);

  // Waits for `condition` or a time limit, that of all waits included; false in the latter case.
  // Under the lock.
  template <typename Condition>
  [[nodiscard]] bool waitFor(std::unique_lock<std::mutex>& lock, Clock::duration longest,
                             Condition condition);

  Connection& m_connection;
  const WindowProperties& m_windows;
  KeyDetour* const m_keyDetour;
  const std::chrono::milliseconds m_longestDetour;
  std::mutex m_mutex;
  std::condition_variable m_answered;
  uint32_t m_lastPing = 0;
  uint32_t m_lastAnswer = 0;
  Clock::time_point m_deadline = Clock::time_point::max();
  Clock::time_point m_noDetourUntil;
  bool m_hurried = false;
  bool m_released = false;
};

}  // namespace zarvy::x11
