#pragma once

#include <cstdint>
#include <optional>
#include <sys/types.h>

namespace zarvy::x11 {

class Connection;
class KeySender;

// Which keyboard this program is typing on right now, in a property of the root window. The
// property is there only while something is typed. One that is found was left by a run that died
// meanwhile, and may have left keys down on that keyboard.
//
// One thread at a time; what is written goes out with the connection's next flush.
class TypingRecord {
 public:
  explicit TypingRecord(Connection& connection) : m_connection(connection) {}

  // Something is about to be typed on this keyboard, an XInput number.
  void write(uint16_t keyboard);

  // All has been typed.
  void erase();

  struct Entry {
    uint16_t keyboard = 0;
    pid_t process = 0;  // that typed
  };
  [[nodiscard]] static std::optional<Entry> read(Connection& connection);

 private:
  Connection& m_connection;
  std::optional<uint16_t> m_keyboard;  // that has been written
};

// Releases whatever is down on the keyboard that the record names and on the one for faked keys,
// and removes the record. Without a record it releases modifiers alone, on the keyboard for faked
// keys: other programs may hold keys there. Does nothing while the process of the record lives,
// which another user or another data folder may have on the same display. At the start.
void releaseKeysLeftDown(Connection& connection, KeySender& sender);

// The same where the record is of that process, on a connection of its own to the display that the
// environment names. For a process that outlives it, while the display may have gone too. Has the
// server answer, however long that takes.
void releaseKeysOfDeadProcess(pid_t process);

}  // namespace zarvy::x11
