#pragma once

#include <chrono>
#include <random>
#include <vector>

#include "e2e/harness/PhysicalKeyboard.h"

namespace zarvy::e2e {

// The pace of somebody who types with all fingers: a key is often still down when the next one goes
// down.
struct KeyRhythm {
  std::chrono::milliseconds interval{110};  // from one key press to the next, on the average
};

// A key that goes down or up, so long after the first key press of the text.
struct KeyMove {
  std::chrono::microseconds at{0};
  xcb_keycode_t key = 0;
  bool down = false;
  bool isModifier = false;
};

// What the hands do to type `strokes`, in the order of time. A key stays down for 40 to 90 ms.
// Shift goes down 20 to 60 ms ahead of its letter, as far as the letter before leaves the time,
// stays down over letters in a row that need it, and goes up before the next letter that does not.
// AltGr is not used: throws std::invalid_argument for a stroke that needs it.
[[nodiscard]] std::vector<KeyMove> movesFor(const std::vector<KeyStroke>& strokes,
                                            xcb_keycode_t shiftKey, const KeyRhythm& rhythm,
                                            std::mt19937& random);

}  // namespace zarvy::e2e
