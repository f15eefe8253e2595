#include <cstring>
#include <memory>
#include <optional>
#include <utility>

#include "fuzz/ByteSource.h"
#include "fuzz/ProtocolTargets.h"
#include "platform/x11/capture/GrabProtocol.h"

namespace zarvy::fuzz {
namespace {

using x11::GrabChange;
using Kind = GrabChange::Kind;
using Protocol = GrabChange::Protocol;

// In memory of its own size, so that a look beyond it is found.
struct Message {
  explicit Message(Bytes bytes)
      : size(bytes.size()), memory(std::make_unique<std::byte[]>(bytes.size())) {
    std::memcpy(memory.get(), bytes.data(), bytes.size());
  }

  [[nodiscard]] std::span<const std::byte> bytes() const { return {memory.get(), size}; }

  template <typename Number>
  [[nodiscard]] Number at(std::size_t place) const {
    Number number{};
    std::memcpy(&number, memory.get() + place, sizeof(number));
    return number;
  }

  std::size_t size;
  std::unique_ptr<std::byte[]> memory;
};

// The requests and replies by the tables of the X protocol: the number of the request, its length
// in bytes, and where it says what.
class Tables {
 public:
  Tables(std::uint8_t xinput, std::uint16_t keyboard) : m_xinput(xinput), m_keyboard(keyboard) {}

  std::optional<GrabChange> request(const Message& message) {
    m_asked.reset();
    if (message.size < 4) return std::nullopt;
    const auto opcode = message.at<std::uint8_t>(0);
    const auto minor = message.at<std::uint8_t>(1);
    const bool isXinput = opcode == m_xinput;
    if (isXinput && minor == 51 && isOfKeyboard(message, 24, 16)) {
      m_asked = {Kind::grab, Protocol::xinput2, message.at<std::uint32_t>(4)};
    } else if (opcode == 31 && message.size >= 16) {
      m_asked = {Kind::grab, Protocol::core, message.at<std::uint32_t>(4)};
    }
    if (opcode == 32) return GrabChange{Kind::ungrab, Protocol::core};
    if (isXinput && minor == 52 && isOfKeyboard(message, 12, 8)) {
      return GrabChange{Kind::ungrab, Protocol::xinput2};
    }
    return std::nullopt;
  }

  std::optional<GrabChange> reply(const Message& message) {
    const auto asked = std::exchange(m_asked, std::nullopt);
    if (!asked) return std::nullopt;
    const bool isCore = asked->protocol == Protocol::core;
    const std::size_t length = isCore ? 8 : 32;
    const std::size_t statusPlace = isCore ? 1 : 8;
    if (message.size < length || message.at<std::uint8_t>(statusPlace) != 0) return std::nullopt;
    return asked;
  }

 private:
  [[nodiscard]] bool isOfKeyboard(const Message& message, std::size_t length,
                                  std::size_t place) const {
    return message.size >= length && message.at<std::uint16_t>(place) == m_keyboard;
  }

  const std::uint8_t m_xinput;
  const std::uint16_t m_keyboard;
  std::optional<GrabChange> m_asked;
};

void requireLengths(const Message& message) {
  const std::size_t request = x11::GrabProtocol::lengthOfRequest(message.bytes());
  const std::size_t reply = x11::GrabProtocol::lengthOfReply(message.bytes());
  const std::size_t units = message.size < 4 ? 0 : message.at<std::uint16_t>(2);
  require(request == 4 * units, "a request has another length");
  require(message.size < 32 ? reply == 0 || reply >= 32 : reply >= 32, "a reply is too short");
}

}  // namespace

void grabProtocol(Bytes bytes) {
  ByteSource source(bytes);
  const auto xinput = static_cast<std::uint8_t>(source.number() | 0x80U);  // as all extensions
  const auto keyboard = source.number<std::uint16_t>();
  x11::GrabProtocol protocol(xinput, keyboard);
  Tables tables(xinput, keyboard);
  while (!source.isEmpty()) {
    const bool isRequest = source.number() % 2 == 1;
    const Message message(source.take(source.below(50)));
    requireLengths(message);
    const auto change =
        isRequest ? protocol.readRequest(message.bytes()) : protocol.readReply(message.bytes());
    const auto expected = isRequest ? tables.request(message) : tables.reply(message);
    require(change == expected, "something else has happened to the keyboard");
  }
}

}  // namespace zarvy::fuzz
