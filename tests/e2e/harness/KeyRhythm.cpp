#include "e2e/harness/KeyRhythm.h"

#include <algorithm>
#include <stdexcept>

namespace zarvy::e2e {

namespace {

using std::chrono::microseconds;
using namespace std::chrono_literals;

// Two events of a hand are at least so far apart.
constexpr microseconds shortestGap = 4ms;

microseconds between(microseconds least, microseconds most, std::mt19937& random) {
  if (most <= least) return least;
  return microseconds(
      std::uniform_int_distribution<microseconds::rep>(least.count(), most.count())(random));
}

std::vector<microseconds> pressTimes(std::size_t count, const KeyRhythm& rhythm,
                                     std::mt19937& random) {
  const microseconds mean = rhythm.interval;
  std::vector<microseconds> times;
  microseconds next{0};
  for (std::size_t index = 0; index < count; ++index) {
    times.push_back(next);
    next += between(mean * 3 / 4, mean * 5 / 4, random);
  }
  return times;
}

// How long the key may stay down: it has to be up before it is pressed again.
microseconds releaseTime(const std::vector<KeyStroke>& strokes,
                         const std::vector<microseconds>& presses, std::size_t index,
                         std::mt19937& random) {
  microseconds latest = presses[index] + 90ms;
  for (std::size_t next = index + 1; next < strokes.size() && presses[next] < latest; ++next) {
    if (strokes[next].key == strokes[index].key) {
      latest = std::min(latest, presses[next] - shortestGap);
    }
  }
  return between(std::min<microseconds>(presses[index] + 40ms, latest), latest, random);
}

}  // namespace

std::vector<KeyMove> movesFor(const std::vector<KeyStroke>& strokes, xcb_keycode_t shiftKey,
                              const KeyRhythm& rhythm, std::mt19937& random) {
  const std::vector<microseconds> presses = pressTimes(strokes.size(), rhythm, random);
  std::vector<KeyMove> moves;
  const auto moveShift = [&](microseconds at, bool down) {
    moves.push_back({.at = at, .key = shiftKey, .down = down, .isModifier = true});
  };
  for (std::size_t index = 0; index < strokes.size(); ++index) {
    const KeyStroke& stroke = strokes[index];
    if (stroke.thirdLevel) throw std::invalid_argument("AltGr has no place in this rhythm");
    const bool heldBefore = index > 0 && strokes[index - 1].shift;
    if (stroke.shift && !heldBefore) {
      const microseconds earliest = index > 0 ? presses[index - 1] + shortestGap : -60ms;
      moveShift(std::max(earliest, presses[index] - between(20ms, 60ms, random)), true);
    }
    moves.push_back({.at = presses[index], .key = stroke.key, .down = true});
    moves.push_back({.at = releaseTime(strokes, presses, index, random), .key = stroke.key});
    const bool last = index + 1 == strokes.size();
    if (stroke.shift && (last || !strokes[index + 1].shift)) {
      const microseconds latest = last ? presses[index] + 120ms
                                       : std::max(presses[index + 1] - shortestGap, presses[index]);
      moveShift(between(std::min<microseconds>(presses[index] + 10ms, latest), latest, random),
                false);
    }
  }
  std::stable_sort(moves.begin(), moves.end(),
                   [](const KeyMove& left, const KeyMove& right) { return left.at < right.at; });
  return moves;
}

}  // namespace zarvy::e2e
