#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <utility>

#include <xcb/xcb.h>

#include "platform/x11/capture/GrabProbe.h"
#include "platform/x11/capture/GrabProtocol.h"

struct xcb_input_enter_event_t;  // which events of focus are too

namespace zarvy::x11 {

class Connection;
class KeyFence;

// Knows whether a client holds the keyboard for itself: a password prompt, a screen locker, a menu,
// a window manager with a key of its own. What is typed then goes to that client alone, but raw key
// events tell of it nevertheless.
//
// The server tells of a grab as a change of focus away from the window that has it, so that one is
// followed. What it does not tell in this way, a grab by that very window and who it is that grabs,
// comes from the recorded requests, where the server records. A grab that is older than both is
// found by asking.
class GrabWatch {
 public:
  // `fence` is set where the end of a grab becomes known ahead of the keys before it.
  GrabWatch(Connection& connection, KeyFence& fence);

  // Called at the beginning of each grab, once isGrabbed() says so, on the thread that brought the
  // news. Before the reader starts.
  void onGrab(std::function<void()> handler) { m_onGrab = std::move(handler); }

  // Called on the reader's thread each time that the focus has gone to another window; none where
  // it is nowhere, or wherever the pointer is. Before the reader starts.
  void onFocusMoved(std::function<void(xcb_window_t window)> handler) {
    m_onFocusMoved = std::move(handler);
  }

  // Has onFocusMoved()'s handler told of the window that has the focus now. Before the reader
  // starts.
  void tellFocus() const { m_onFocusMoved(m_window); }

  // On the reader's thread.
  void handleEvent(const xcb_generic_event_t& event);

  // From a GrabRecord: what a client did, and that it has ended. Any thread.
  void handleRecorded(const GrabChange& change, uint32_t client, xcb_timestamp_t time);
  void handleLostClient(uint32_t client);

  // Asks the server whether the keyboard is grabbed, and believes it: finds a grab that nothing has
  // told of, and ends one whose end nothing has told. Waits for the answer. Any thread; to be
  // called once the record runs, and now and then during a grab.
  void lookAgain();

  // Any thread.
  [[nodiscard]] bool isGrabbed() const;

  // Whether a key that went down at `time`, by the server's clock, may have been meant for the
  // client that has or had the keyboard: the record may tell of an end ahead of the keys before it.
  // Any thread.
  [[nodiscard]] bool mayHide(xcb_timestamp_t time) const;

  // For how long by now; nothing where it is not grabbed. Any thread.
  [[nodiscard]] std::chrono::steady_clock::duration grabbedFor() const;

  // Who holds the keyboard: a client, by the base of its resources, for a window that need not be
  // its own.
  struct Holder {
    uint32_t client;
    xcb_window_t window;
  };

  // Absent where no client does, where the server does not record, and for a grab that is older
  // than the record. Any thread.
  [[nodiscard]] std::optional<Holder> holder() const;

 private:
  using Instant = std::chrono::steady_clock::time_point;
  struct RecordedGrab {
    Holder holder;
    GrabChange::Protocol protocol;
    xcb_timestamp_t time;
  };

  void handleFocusChange(const xcb_input_enter_event_t& event, bool into);
  void endBefore(xcb_timestamp_t time);
  void lookAgainIfFound();
  [[nodiscard]] bool believe(bool isGrabbed, std::uint64_t newsCount);
  // How the news stands to the key events: in their order, or ahead of those that wait to be read.
  enum class News { inOrder, ahead };
  void handleNews(News news, const std::function<void()>& change);
  void update(News news, const std::function<void()>& change);
  void followFocus();
  [[nodiscard]] bool isRoot(xcb_window_t window) const;
  [[nodiscard]] xcb_window_t focusedWindow() const;

  Connection& m_connection;
  KeyFence& m_fence;
  const GrabProbe m_probe;
  std::function<void()> m_onGrab;
  std::function<void(xcb_window_t)> m_onFocusMoved;
  xcb_window_t m_window = XCB_WINDOW_NONE;  // the one that is listened to

  std::atomic<std::uint64_t> m_newsCount = 0;  // of grabs and ends that were told

  mutable std::mutex m_lock;
  bool m_isTold = false;                        // there is one by a change of focus
  std::optional<RecordedGrab> m_recorded;       // there is one by a request
  std::optional<xcb_timestamp_t> m_lastUngrab;  // the latest that was recorded
  bool m_isFound = false;          // there is one by asking, and nothing has told of it
  std::optional<Instant> m_since;  // present exactly while there is one
};

}  // namespace zarvy::x11
