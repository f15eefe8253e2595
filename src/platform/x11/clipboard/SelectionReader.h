#pragma once

#include <optional>

#include <QByteArray>
#include <QDeadlineTimer>

#include <xcb/xcb.h>

#include "platform/x11/connection/XcbReply.h"

namespace zarvy::x11 {

// Asks the owner of a selection for what it holds, by the rules of the ICCCM, and waits for it
// until the deadline. One thread; takes the events of its connection, on which no other reader
// may wait.
class SelectionReader {
 public:
  // On a connection that outlives it. Asks the owner of the selection, if there is one.
  SelectionReader(xcb_connection_t* connection, xcb_atom_t selection, QDeadlineTimer deadline);
  ~SelectionReader();
  SelectionReader(const SelectionReader&) = delete;
  SelectionReader& operator=(const SelectionReader&) = delete;

  // What the owner gives for `target`, in bytes. Absent where it refuses, and may then be asked for
  // another one; absent too where it ends in the middle, gives more than `most` bytes or is not
  // ready by the deadline.
  [[nodiscard]] std::optional<QByteArray> read(xcb_atom_t target, qsizetype most);

  // False once no owner is left to answer, or no time.
  [[nodiscard]] bool canAsk() const;

 private:
  struct Piece {
    QByteArray bytes;
    xcb_atom_t type = XCB_ATOM_NONE;
  };

  [[nodiscard]] bool isOffered(xcb_atom_t target);
  [[nodiscard]] std::optional<Piece> takeProperty(qsizetype most) const;
  [[nodiscard]] std::optional<QByteArray> readInPieces(qsizetype most);
  [[nodiscard]] xcb_timestamp_t serverTime();
  // The next event that `isWanted`; null where the owner goes, the connection breaks or time is up.
  template <typename Condition>
  [[nodiscard]] XcbPtr<xcb_generic_event_t> waitFor(Condition isWanted);
  [[nodiscard]] bool waitForInput() const;

  xcb_connection_t* const m_connection;
  const xcb_atom_t m_selection;
  const QDeadlineTimer m_deadline;
  const xcb_window_t m_window;  // which the owner puts its answers on
  const xcb_atom_t m_property;
  const xcb_atom_t m_inPieces;  // INCR
  xcb_window_t m_owner = XCB_WINDOW_NONE;
};

}  // namespace zarvy::x11
