#pragma once

#include <cstdint>
#include <set>
#include <vector>

#include "e2e/harness/XConnection.h"

namespace zarvy::e2e {

// The device ids of every keyboard of the server, the master among them.
[[nodiscard]] std::vector<std::uint16_t> keyboardIds(const XConnection& connection);

// The keyboard that stands for hardware: neither a master nor the XTEST device. Throws
// std::runtime_error where there is none.
[[nodiscard]] std::uint16_t serverKeyboardId(const XConnection& connection);

// The key codes that are down on any single keyboard or on the master. A key can be down on one of
// them that the master, which the applications see, takes for up: the next press of it there is
// lost.
[[nodiscard]] std::set<std::uint8_t> heldKeys(const XConnection& connection);

// Keys repeat from now on only after three seconds. The hand of a test is a process like any other:
// on a busy machine it lets go of a key far later than a finger would.
void delayKeyRepeat(const XConnection& connection);

}  // namespace zarvy::e2e
