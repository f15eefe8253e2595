#include "platform/x11/keyboard/LiveKeymap.h"

#include <utility>

#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XEvents.h"
#include "platform/x11/connection/XkbProtocol.h"
#include "platform/x11/keyboard/OwnMapChanges.h"

namespace zarvy::x11 {

namespace {

// For a keymap to be read. It takes some milliseconds, or many on a busy machine.
constexpr std::chrono::seconds longestWait{1};

}  // namespace

std::unique_ptr<LiveKeymap> LiveKeymap::create(Connection& connection,
                                               const OwnMapChanges& ownChanges, uint16_t device) {
  std::unique_ptr<LiveKeymap> keymap(new LiveKeymap(connection, ownChanges, device));
  // Events first, so that a change after the reading is told.
  keymap->selectEvents();
  keymap->reload();
  return keymap->current() ? std::move(keymap) : nullptr;
}

LiveKeymap::LiveKeymap(Connection& connection, const OwnMapChanges& ownChanges, uint16_t device)
    : m_connection(connection), m_ownChanges(ownChanges), m_device(device) {}

void LiveKeymap::selectEvents() const {
  constexpr uint16_t events =
      XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
  constexpr uint16_t mapParts = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS |
                                XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_KEY_ACTIONS |
                                XCB_XKB_MAP_PART_VIRTUAL_MODS | XCB_XKB_MAP_PART_VIRTUAL_MOD_MAP;
  xcb_xkb_select_events_details_t details{};
  details.affectNewKeyboard = XCB_XKB_NKN_DETAIL_KEYCODES;
  details.newKeyboardDetails = XCB_XKB_NKN_DETAIL_KEYCODES;
  xcb_xkb_select_events_aux(m_connection.xcb(), m_device, events, 0, 0, mapParts, mapParts,
                            &details);
  m_connection.flush();
}

std::shared_ptr<const KeymapSnapshot> LiveKeymap::current() const {
  const std::lock_guard lock(m_mutex);
  return m_snapshot;
}

std::shared_ptr<const KeymapSnapshot> LiveKeymap::named(xcb_atom_t name) const {
  std::unique_lock lock(m_mutex);
  const bool isThere = m_read.wait_for(lock, longestWait, [&] {
    return name == XCB_ATOM_NONE || name == m_unreadName || m_snapshot->name() == name ||
           !m_connection.isAlive();
  });
  if (!isThere) m_unreadName = name;
  return m_snapshot;
}

bool LiveKeymap::handleEvent(const xcb_generic_event_t& event) {
  if (typeOf(event) != m_connection.xkbEventBase()) return false;
  // Every XKB event has its own type in the byte behind the event's, and its device in one place.
  const bool isNew = event.pad0 == XCB_XKB_NEW_KEYBOARD_NOTIFY;
  if (!isNew && event.pad0 != XCB_XKB_MAP_NOTIFY) return false;
  if (reinterpret_cast<const xcb_xkb_map_notify_event_t&>(event).deviceID != m_device) return false;
  if (!isNew && m_ownChanges.contains(event.full_sequence)) return false;
  reload();
  return true;
}

void LiveKeymap::reload() {
  auto snapshot = KeymapSnapshot::read(m_connection, m_device);
  if (!snapshot) return;
  {
    const std::lock_guard lock(m_mutex);
    m_snapshot = std::move(snapshot);
    m_unreadName = XCB_ATOM_NONE;
  }
  m_read.notify_all();
}

}  // namespace zarvy::x11
