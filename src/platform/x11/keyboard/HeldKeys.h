#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/x11/keyboard/KeycodeSet.h"

namespace zarvy::x11 {

class Connection;

// Asks the server which keys are down on which kind of keyboard. Any thread.
class HeldKeys {
 public:
  explicit HeldKeys(Connection& connection) : m_connection(connection) {}

  // Every single keyboard, as XInput numbers them.
  [[nodiscard]] std::vector<uint16_t> allKeyboards() const;

  // Those that people type on.
  [[nodiscard]] std::vector<uint16_t> physicalKeyboards() const;

  // The one among them whose events reach the applications that the connection's keyboard serves;
  // there can be a keyboard for each pointer on the screen. Absent if there is none.
  [[nodiscard]] std::optional<uint16_t> ownFakeKeyboard() const;

  // On one keyboard, or on the union of all.
  [[nodiscard]] KeycodeSet on(uint16_t keyboard) const;

 private:
  struct Keyboard {
    uint16_t device;
    uint16_t unionOfKeyboards;  // that it belongs to
    bool isFake;
  };
  [[nodiscard]] std::vector<Keyboard> keyboards() const;

  Connection& m_connection;
};

}  // namespace zarvy::x11
