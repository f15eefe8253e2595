#pragma once

#include <cstdint>

#include "platform/x11/keyboard/ModifierKeys.h"

namespace zarvy::x11 {

class Connection;

// Asks the server which keys are down. Any thread.
class HeldKeys {
 public:
  explicit HeldKeys(Connection& connection) : m_connection(connection) {}

  // As applications see it: the union of all keyboards, less what was released by a faked event.
  [[nodiscard]] KeycodeSet seenByApplications() const;

  // On the keyboards that people touch, whatever has been faked meanwhile.
  [[nodiscard]] KeycodeSet onPhysicalKeyboards() const { return onKeyboards(false); }

  // On the server's keyboard for faked events.
  [[nodiscard]] KeycodeSet onFakeKeyboard() const { return onKeyboards(true); }

 private:
  [[nodiscard]] KeycodeSet onKeyboards(bool fake) const;
  [[nodiscard]] KeycodeSet onDevice(uint16_t device) const;

  Connection& m_connection;
};

}  // namespace zarvy::x11
