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

  // The devices that people type on, as XInput numbers them.
  [[nodiscard]] std::vector<uint16_t> physicalKeyboards() const { return keyboards(false); }

  // The devices that faked events come from.
  [[nodiscard]] std::vector<uint16_t> fakeKeyboards() const { return keyboards(true); }

  // The one among them whose events reach the applications that the connection's keyboard serves;
  // there can be a keyboard for each pointer on the screen. Absent where there is none.
  [[nodiscard]] std::optional<uint16_t> ownFakeKeyboard() const;

  // On the keyboards that people touch, whatever has been faked meanwhile.
  [[nodiscard]] KeycodeSet onPhysicalKeyboards() const { return onKeyboards(false); }

  // On the server's keyboard for faked events.
  [[nodiscard]] KeycodeSet onFakeKeyboard() const { return onKeyboards(true); }

 private:
  struct Keyboard {
    uint16_t device;
    uint16_t unionOfKeyboards;  // that it belongs to
    bool isFake;
  };
  [[nodiscard]] std::vector<Keyboard> keyboards() const;
  [[nodiscard]] std::vector<uint16_t> keyboards(bool fake) const;
  [[nodiscard]] KeycodeSet onKeyboards(bool fake) const;
  [[nodiscard]] KeycodeSet onDevice(uint16_t device) const;

  Connection& m_connection;
};

}  // namespace zarvy::x11
