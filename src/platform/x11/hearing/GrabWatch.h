#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <utility>

#include <xcb/xcb.h>

#include "platform/x11/hearing/GrabProtocol.h"

struct xcb_input_enter_event_t;  // which events of focus are too

namespace zarvy::x11 {

class Connection;

// Knows whether somebody holds the keyboard for themselves: a password prompt, a screen locker, a
// menu, a window manager's own key. What is typed then goes to nobody else, and raw key events tell
// of it all the same.
//
// The server tells of a grab as a change of focus away from the window that has it, so that one is
// followed. What it does not tell in this way, a grab by that very window and who it is that grabs,
// comes from the recorded requests, where the server records. A grab that is older than this object
// goes unnoticed.
class GrabWatch {
 public:
  explicit GrabWatch(Connection& connection);

  // Called at the beginning of each grab, once isGrabbed() says so, on the thread that brought the
  // news. Before the reader starts.
  void onGrab(std::function<void()> handler) { m_onGrab = std::move(handler); }

  // Called on the reader's thread each time that the focus has gone to another window. Before the
  // reader starts.
  void onFocusMoved(std::function<void()> handler) { m_onFocusMoved = std::move(handler); }

  // On the reader's thread.
  void handleEvent(const xcb_generic_event_t& event);

  // From a GrabRecord: what a client did, and that it has ended. Any thread.
  void handleRecorded(const GrabChange& change, uint32_t client, xcb_timestamp_t time);
  void handleLostClient(uint32_t client);

  // Any thread.
  [[nodiscard]] bool isGrabbed() const;

  // For how long by now; nothing where it is not grabbed. Any thread.
  [[nodiscard]] std::chrono::steady_clock::duration grabbedFor() const;

  // The client that holds the keyboard, by the base of its resources; absent where nobody does or
  // the server does not record. Any thread.
  [[nodiscard]] std::optional<uint32_t> holder() const;

 private:
  using Instant = std::chrono::steady_clock::time_point;
  struct RecordedGrab {
    uint32_t client;
    GrabChange::Protocol protocol;
    xcb_timestamp_t time;
  };

  void handleFocusChange(const xcb_input_enter_event_t& event, bool into);
  void endBefore(xcb_timestamp_t time);
  void update(const std::function<void()>& change);
  void followFocus();
  [[nodiscard]] bool isRoot(xcb_window_t window) const;
  [[nodiscard]] xcb_window_t focusedWindow() const;

  Connection& m_connection;
  std::function<void()> m_onGrab;
  std::function<void()> m_onFocusMoved;
  xcb_window_t m_window = XCB_WINDOW_NONE;  // the one that is listened to

  mutable std::mutex m_lock;
  bool m_isTold = false;                   // there is one by a change of focus
  std::optional<RecordedGrab> m_recorded;  // there is one by a request
  std::optional<Instant> m_since;          // present exactly while there is one
};

}  // namespace zarvy::x11
