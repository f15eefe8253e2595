#pragma once

#include <cstdint>

#include <xcb/xcb.h>

namespace zarvy::x11 {

class Connection;

// The name of a keyboard's symbols, an atom. It is given together with a keymap and tells one from
// another, at a small part of the cost of reading it; a change of single keys leaves it as it is.
class KeymapName {
 public:
  // Asks for the name of the keyboard with this XInput number. Any thread.
  static KeymapName ask(Connection& connection, uint16_t device);

  // The answer; XCB_ATOM_NONE if there is none. Once.
  [[nodiscard]] xcb_atom_t answer() const;

 private:
  KeymapName(Connection& connection, unsigned sequence)
      : m_connection(connection), m_sequence(sequence) {}

  Connection& m_connection;
  unsigned m_sequence;  // of the request
};

}  // namespace zarvy::x11
