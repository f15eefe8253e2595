#pragma once

#include <cstdint>
#include <vector>

#include "platform/x11/keyboard/ModifierKeys.h"

namespace zarvy::x11 {

class Connection;

// Asks the server which keys are down on which kind of keyboard. Any thread.
class HeldKeys {
 public:
  explicit HeldKeys(Connection& connection) : m_connection(connection) {}

  // The devices that people type on, as XInput numbers them.
  [[nodiscard]] std::vector<uint16_t> physicalKeyboards() const { return keyboards(false); }

  // The devices that faked events come from.
  [[nodiscard]] std::vector<uint16_t> fakeKeyboards() const { return keyboards(true); }

  // On the keyboards that people touch, whatever has been faked meanwhile.
  [[nodiscard]] KeycodeSet onPhysicalKeyboards() const { return onKeyboards(false); }

  // On the server's keyboard for faked events.
  [[nodiscard]] KeycodeSet onFakeKeyboard() const { return onKeyboards(true); }

 private:
  [[nodiscard]] std::vector<uint16_t> keyboards(bool fake) const;
  [[nodiscard]] KeycodeSet onKeyboards(bool fake) const;
  [[nodiscard]] KeycodeSet onDevice(uint16_t device) const;

  Connection& m_connection;
};

}  // namespace zarvy::x11
