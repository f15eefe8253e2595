#pragma once

#include <optional>

#include "platform/x11/connection/HiddenWindow.h"

namespace zarvy::x11 {

class Connection;

// Asks the server whether another client holds the keyboard or the pointer for itself, and changes
// nothing by that: it is asked for on behalf of a window that is never shown. The server looks
// first whether a client has it and then whether the window is to be seen, and refuses it in either
// case. Any thread.
class GrabProbe {
 public:
  explicit GrabProbe(Connection& connection) : m_connection(connection), m_window(connection) {}

  // Waits for the answer. Absent where the server is gone.
  [[nodiscard]] std::optional<bool> isGrabbedByAnother() const;

  // The same for the pointer; false where the server is gone. While one of its buttons is held, a
  // client has it as well.
  [[nodiscard]] bool isPointerGrabbedByAnother() const;

 private:
  Connection& m_connection;
  const HiddenWindow m_window;
};

}  // namespace zarvy::x11
