#pragma once

#include <optional>

#include <QString>

#include <xkbcommon/xkbcommon-compose.h>

namespace zarvy::x11 {

// Follows dead keys and Compose sequences as applications do, by the table of the user's locale.
// One thread.
class ComposeSequence {
 public:
  ComposeSequence();
  ~ComposeSequence();
  ComposeSequence(const ComposeSequence&) = delete;
  ComposeSequence& operator=(const ComposeSequence&) = delete;

  // What the press of a key with this symbol types: `plain` outside a sequence, the composed text
  // where it ends one, absent within one and where it breaks one off.
  [[nodiscard]] std::optional<QString> feed(xkb_keysym_t symbol, std::optional<QString> plain);

  // Whether a sequence has begun and not ended.
  [[nodiscard]] bool isUnderWay() const;

  // The sequence that has begun, if one has, goes no further.
  void breakOff();

 private:
  xkb_context* m_context;
  xkb_compose_table* m_table = nullptr;
  xkb_compose_state* m_state = nullptr;
};

}  // namespace zarvy::x11
