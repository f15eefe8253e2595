#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace zarvy::x11 {

// A client took the keyboard for itself, or gave it back.
struct GrabChange {
  enum class Kind { grab, ungrab };
  // The core protocol's requests and those of XInput 2 do not end each other's grabs.
  enum class Protocol { core, xinput2 };

  Kind kind;
  Protocol protocol;
  uint32_t window = 0;  // that the keyboard was taken for; none where it was given back

  bool operator==(const GrabChange&) const = default;
};

// Reads the recorded requests of clients that ask for the keyboard, and what they are answered: a
// grab counts once the server has granted it. The server answers such a request before it looks at
// any other client's, so that an answer belongs to the request before it. One thread.
class GrabProtocol {
 public:
  // The opcode of XInput, and the id of the keyboard whose grabs count.
  GrabProtocol(uint8_t xinputOpcode, uint16_t keyboard)
      : m_xinputOpcode(xinputOpcode), m_keyboard(keyboard) {}

  // `bytes` begins with one request of a client's; what is behind it is not looked at.
  [[nodiscard]] std::optional<GrabChange> readRequest(std::span<const std::byte> bytes);

  // The same for an answer of the server's.
  [[nodiscard]] std::optional<GrabChange> readReply(std::span<const std::byte> bytes);

  // How long the request or reply is with which `bytes` begins; 0 where that cannot be told.
  [[nodiscard]] static std::size_t lengthOfRequest(std::span<const std::byte> bytes);
  [[nodiscard]] static std::size_t lengthOfReply(std::span<const std::byte> bytes);

 private:
  const uint8_t m_xinputOpcode;
  const uint16_t m_keyboard;
  std::optional<GrabChange> m_asked;  // the keyboard was asked for, and not answered yet
};

}  // namespace zarvy::x11
