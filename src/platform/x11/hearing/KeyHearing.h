#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

#include <xcb/xcb.h>

#include "platform/KeyEvent.h"
#include "platform/x11/hearing/KeyDecoder.h"

struct xcb_input_key_press_event_t;
struct xcb_input_raw_key_press_event_t;

namespace zarvy::x11 {

class Connection;
class OwnPosts;

// Follows the keyboard on the reader's thread: keymap, state, and every key that goes down or up
// anywhere on the display.
class KeyHearing {
 public:
  using PressHandler = std::function<void(const KeyEvent&)>;

  // Null where the server does not give its keymap.
  [[nodiscard]] static std::unique_ptr<KeyHearing> create(Connection& connection, OwnPosts& posts);

  // From now on `handler` gets every key-down, this program's own ones with the marker's x. On the
  // reader's thread. Before the reader starts.
  void onPress(PressHandler handler) { m_onPress = std::move(handler); }

  // Called on the reader's thread for each modifier or layout that changes.
  void onStateChange(std::function<void()> handler) { m_onStateChange = std::move(handler); }

  // Called on the reader's thread for each key that someone else releases.
  void onForeignRelease(std::function<void(uint8_t keycode)> handler) {
    m_onForeignRelease = std::move(handler);
  }

  // Sends a request that changes the mapping of keys which this program has taken for itself, and
  // which therefore makes no new keymap. `request` returns its sequence number. Any thread.
  void changeOwnKeys(const std::function<uint32_t()>& request);

  // The keymap in force. Any thread.
  [[nodiscard]] std::shared_ptr<const KeymapSnapshot> keymap() const;

  // Reads the server's keymap anew. On the reader's thread, or before it starts.
  void reloadKeymap();

  // On the reader's thread.
  void handleEvent(const xcb_generic_event_t& event);

 private:
  KeyHearing(Connection& connection, OwnPosts& posts,
             const std::shared_ptr<const KeymapSnapshot>& snapshot);
  void selectEvents();
  void selectAutorepeat();
  void selectInputEvents(uint16_t device, uint32_t mask);
  void handleKeyboardPress(const xcb_input_key_press_event_t& event);
  void handleRawKey(const xcb_input_raw_key_press_event_t& event, bool press);
  void handleXkbEvent(const xcb_generic_event_t& event);
  [[nodiscard]] bool isOwnMapChange(uint32_t sequence);

  Connection& m_connection;
  OwnPosts& m_posts;
  mutable std::mutex m_mutex;
  std::shared_ptr<const KeymapSnapshot> m_snapshot;  // guarded by m_mutex
  KeyDecoder m_decoder;
  PressHandler m_onPress;
  std::function<void()> m_onStateChange;
  std::function<void(uint8_t)> m_onForeignRelease;
  std::mutex m_mapChangeMutex;
  std::deque<uint32_t> m_ownMapChanges;  // the latest ones; guarded by m_mapChangeMutex
};

}  // namespace zarvy::x11
