#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

namespace zarvy::x11 {

// Which characters lie on the scratch keys: a cache of (key, level) slots, least recently used
// first out. Pure book-keeping: ScratchKeyWriter carries it out. One thread at a time.
class ScratchKeyPool {
 public:
  // A level of a scratch key: 0 plain, 1 with Shift, 2 with LevelThree, 3 with both.
  struct Slot {
    uint8_t keycode = 0;
    int level = 0;
    char32_t character = 0;  // 0 while empty
    uint64_t lastUse = 0;
    bool isUnread = false;  // typed since the target last proved that it had read everything
  };

  // What fit() would change. Nothing has been changed yet.
  struct Plan {
    struct Change {
      std::size_t slot;
      char32_t character;
    };
    std::vector<Change> changes;
    bool replacesUnread = false;  // some slot must not be changed before the target has caught up
  };

  // Starts over, with `levels` empty slots on each key.
  void reset(std::span<const uint8_t> keycodes, int levels);

  [[nodiscard]] const std::vector<Slot>& slots() const { return m_slots; }
  [[nodiscard]] std::size_t capacity() const { return m_slots.size(); }

  [[nodiscard]] bool isEmpty() const { return m_slotOf.empty(); }

  // The slot that types `character` now.
  [[nodiscard]] std::optional<Slot> find(char32_t character) const;

  // How to make room for as many of `wanted` as fit, the first ones first, while keeping those of
  // them that are there already.
  [[nodiscard]] Plan fit(std::span<const char32_t> wanted) const;
  void apply(const Plan& plan);

  // `character` is about to be typed from its slot.
  void markUsed(char32_t character);

  // The target has read everything typed so far.
  void markAllRead();

 private:
  std::vector<Slot> m_slots;
  std::unordered_map<char32_t, std::size_t> m_slotOf;
  uint64_t m_uses = 0;
};

}  // namespace zarvy::x11
