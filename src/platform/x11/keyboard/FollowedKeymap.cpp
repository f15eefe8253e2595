#include "platform/x11/keyboard/FollowedKeymap.h"

#include <utility>

#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XkbProtocol.h"
#include "platform/x11/keyboard/OwnMapChanges.h"

namespace zarvy::x11 {

namespace {

constexpr uint8_t eventTypeMask = 0x7f;

}  // namespace

std::unique_ptr<FollowedKeymap> FollowedKeymap::create(Connection& connection,
                                                       const OwnMapChanges& ownChanges,
                                                       uint16_t device) {
  auto snapshot = KeymapSnapshot::read(connection, device);
  if (!snapshot) return nullptr;
  return std::unique_ptr<FollowedKeymap>(
      new FollowedKeymap(connection, ownChanges, device, std::move(snapshot)));
}

FollowedKeymap::FollowedKeymap(Connection& connection, const OwnMapChanges& ownChanges,
                               uint16_t device, std::shared_ptr<const KeymapSnapshot> snapshot)
    : m_connection(connection),
      m_ownChanges(ownChanges),
      m_device(device),
      m_snapshot(std::move(snapshot)) {
  selectEvents();
}

void FollowedKeymap::selectEvents() const {
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

std::shared_ptr<const KeymapSnapshot> FollowedKeymap::current() const {
  const std::lock_guard lock(m_mutex);
  return m_snapshot;
}

bool FollowedKeymap::handleEvent(const xcb_generic_event_t& event) {
  if ((event.response_type & eventTypeMask) != m_connection.xkbEventBase()) return false;
  // Every XKB event has its own type in the byte behind the event's, and its device in one place.
  const bool isNew = event.pad0 == XCB_XKB_NEW_KEYBOARD_NOTIFY;
  if (!isNew && event.pad0 != XCB_XKB_MAP_NOTIFY) return false;
  if (reinterpret_cast<const xcb_xkb_map_notify_event_t&>(event).deviceID != m_device) return false;
  if (!isNew && m_ownChanges.contains(event.full_sequence)) return false;
  reload();
  return true;
}

void FollowedKeymap::reload() {
  auto snapshot = KeymapSnapshot::read(m_connection, m_device);
  if (!snapshot) return;
  const std::lock_guard lock(m_mutex);
  m_snapshot = std::move(snapshot);
}

}  // namespace zarvy::x11
