#include "platform/x11/clipboard/SelectionReader.h"

#include <algorithm>
#include <cerrno>
#include <limits>
#include <poll.h>

#include "platform/x11/connection/Atoms.h"
#include "platform/x11/connection/XEvents.h"

namespace zarvy::x11 {
namespace {

xcb_window_t makeWindow(xcb_connection_t* connection) {
  const xcb_window_t window = xcb_generate_id(connection);
  const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
  const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, root, 0, 0, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
  return window;
}

// Who owns it and says when it goes; none if it is gone by now.
xcb_window_t followOwner(xcb_connection_t* connection, xcb_atom_t selection) {
  const XcbPtr<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
      connection, xcb_get_selection_owner(connection, selection), nullptr));
  constexpr xcb_window_t noOwner = XCB_WINDOW_NONE;
  if (!reply || reply->owner == noOwner) return noOwner;
  const uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  const XcbPtr<xcb_generic_error_t> error(xcb_request_check(
      connection,
      xcb_change_window_attributes_checked(connection, reply->owner, XCB_CW_EVENT_MASK, &events)));
  return error ? noOwner : reply->owner;
}

}  // namespace

SelectionReader::SelectionReader(xcb_connection_t* connection, xcb_atom_t selection,
                                 QDeadlineTimer deadline)
    : m_connection(connection),
      m_selection(selection),
      m_deadline(deadline),
      m_window(makeWindow(connection)),
      m_property(internAtom(connection, "ZARVY_SELECTION")),
      m_inPieces(internAtom(connection, "INCR")),
      m_owner(followOwner(connection, selection)) {}

SelectionReader::~SelectionReader() {
  xcb_destroy_window(m_connection, m_window);
  xcb_flush(m_connection);
}

bool SelectionReader::canAsk() const {
  return m_owner != XCB_WINDOW_NONE && !m_deadline.hasExpired();
}

std::optional<QByteArray> SelectionReader::read(xcb_atom_t target, qsizetype most) {
  if (!canAsk() || !isOffered(target)) return std::nullopt;
  std::optional<QByteArray> bytes;
  if (const auto piece = takeProperty(most)) {
    bytes = piece->type == m_inPieces ? readInPieces(most) : piece->bytes;
  }
  // The owner may still be at it.
  if (!bytes) m_owner = XCB_WINDOW_NONE;
  return bytes;
}

bool SelectionReader::isOffered(xcb_atom_t target) {
  xcb_convert_selection(m_connection, m_window, m_selection, target, m_property, serverTime());
  const auto answer = waitFor([&](const xcb_generic_event_t& event) {
    if (typeOf(event) != XCB_SELECTION_NOTIFY) return false;
    const auto& notify = reinterpret_cast<const xcb_selection_notify_event_t&>(event);
    return notify.requestor == m_window && notify.selection == m_selection &&
           notify.target == target;
  });
  return answer &&
         reinterpret_cast<const xcb_selection_notify_event_t&>(*answer).property == m_property;
}

// Empty and without a type where there is no such property.
std::optional<SelectionReader::Piece> SelectionReader::takeProperty(qsizetype most) const {
  // In units of four bytes; one more than allowed tells a longer one.
  const auto length = static_cast<uint32_t>(most / 4 + 1);
  const XcbPtr<xcb_get_property_reply_t> reply(xcb_get_property_reply(
      m_connection,
      xcb_get_property(m_connection, 1, m_window, m_property, XCB_GET_PROPERTY_TYPE_ANY, 0, length),
      nullptr));
  if (!reply) return std::nullopt;
  const int size = xcb_get_property_value_length(reply.get());
  if (reply->bytes_after > 0 || size > most) return std::nullopt;
  return Piece{{static_cast<const char*>(xcb_get_property_value(reply.get())), size}, reply->type};
}

// Taking the announcement away has asked for the first piece, taking each piece away asks for the
// next, and an empty one is the end.
std::optional<QByteArray> SelectionReader::readInPieces(qsizetype most) {
  QByteArray all;
  while (true) {
    const auto change = waitFor([&](const xcb_generic_event_t& event) {
      if (typeOf(event) != XCB_PROPERTY_NOTIFY) return false;
      const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(event);
      return notify.window == m_window && notify.atom == m_property &&
             notify.state == XCB_PROPERTY_NEW_VALUE;
    });
    if (!change) return std::nullopt;
    const auto piece = takeProperty(most - all.size());
    if (!piece) return std::nullopt;
    if (piece->type == XCB_ATOM_NONE) continue;  // a change that was read with the one before
    if (piece->bytes.isEmpty()) return all;
    all += piece->bytes;
  }
}

// Owners may refuse a request that does not say when it was made: the time of a change that changes
// nothing.
xcb_timestamp_t SelectionReader::serverTime() {
  xcb_change_property(m_connection, XCB_PROP_MODE_APPEND, m_window, m_selection, XCB_ATOM_STRING, 8,
                      0, nullptr);
  const auto change = waitFor([&](const xcb_generic_event_t& event) {
    return typeOf(event) == XCB_PROPERTY_NOTIFY &&
           reinterpret_cast<const xcb_property_notify_event_t&>(event).atom == m_selection;
  });
  if (!change) return XCB_CURRENT_TIME;
  return reinterpret_cast<const xcb_property_notify_event_t&>(*change).time;
}

template <typename Condition>
XcbPtr<xcb_generic_event_t> SelectionReader::waitFor(Condition isWanted) {
  xcb_flush(m_connection);
  while (canAsk()) {
    XcbPtr<xcb_generic_event_t> event(xcb_poll_for_event(m_connection));
    if (!event) {
      if (xcb_connection_has_error(m_connection) != 0 || !waitForInput()) return nullptr;
      continue;
    }
    if (isWanted(*event)) return event;
    if (typeOf(*event) == XCB_DESTROY_NOTIFY) m_owner = XCB_WINDOW_NONE;
  }
  return nullptr;
}

// True where there may be an event.
bool SelectionReader::waitForInput() const {
  pollfd watched{xcb_get_file_descriptor(m_connection), POLLIN, 0};
  // Rounded up, so that the last millisecond is not spent awake.
  const qint64 left =
      std::min<qint64>(m_deadline.remainingTime() + 1, std::numeric_limits<int>::max());
  return poll(&watched, 1, static_cast<int>(left)) > 0 || errno == EINTR;
}

}  // namespace zarvy::x11
