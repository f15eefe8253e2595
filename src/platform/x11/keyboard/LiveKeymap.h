#pragma once

#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>

#include <xcb/xcb.h>

#include "platform/x11/keyboard/KeymapSnapshot.h"

namespace zarvy::x11 {

class Connection;
class OwnMapChanges;

// The keymap of one keyboard, read again whenever another client changes it.
//
// The one that matters is that of the union of all keyboards: applications read keys by it. It
// becomes the keymap of whichever keyboard is used, and this program types on the one that the user
// does.
class LiveKeymap {
 public:
  // Null where the server does not give the keymap of the keyboard with this XInput number.
  [[nodiscard]] static std::unique_ptr<LiveKeymap> create(Connection& connection,
                                                          const OwnMapChanges& ownChanges,
                                                          uint16_t device);

  // The keyboard's XInput number.
  [[nodiscard]] uint16_t device() const { return m_device; }

  // The keymap in force. Any thread.
  [[nodiscard]] std::shared_ptr<const KeymapSnapshot> current() const;

  // The keymap of this name, as KeymapName tells it. Waits until it has been read, but not for
  // ever, and only once where nothing is read meanwhile: then, and for XCB_ATOM_NONE, the one in
  // force. Any thread but the reader's.
  [[nodiscard]] std::shared_ptr<const KeymapSnapshot> named(xcb_atom_t name) const;

  // True where the event made a new keymap. On the reader's thread.
  bool handleEvent(const xcb_generic_event_t& event);

  // Reads the keymap again. On the reader's thread, or before it starts.
  void reload();

 private:
  LiveKeymap(Connection& connection, const OwnMapChanges& ownChanges, uint16_t device);
  void selectEvents() const;

  Connection& m_connection;
  const OwnMapChanges& m_ownChanges;
  const uint16_t m_device;
  mutable std::mutex m_mutex;
  mutable std::condition_variable m_read;
  std::shared_ptr<const KeymapSnapshot> m_snapshot;  // guarded by m_mutex, as the next
  mutable xcb_atom_t m_unreadName = XCB_ATOM_NONE;   // waited for already
};

}  // namespace zarvy::x11
