#pragma once

#include <functional>
#include <set>
#include <sys/types.h>

namespace zarvy {

// Judges what processes say of the keyboard: that a field of theirs has it. Any program of the
// session may say so on the accessibility bus, by mistake or to have a password heard that is typed
// elsewhere.
//
// A process is believed where the display gives the keyboard to it or to its kin: browsers have
// helpers for what a page shows. It is believed too where the application with the keyboard has
// never said a true word of it: a program in a sandbox speaks through another process, one of
// another machine is not known here. One thread.
class FocusClaims {
 public:
  // `keyboardOwner` asks the display for the process that has the keyboard; 0 where it is not
  // known.
  explicit FocusClaims(std::function<pid_t()> keyboardOwner)
      : m_keyboardOwner(std::move(keyboardOwner)) {}

  [[nodiscard]] bool isCredible(pid_t process);

 private:
  const std::function<pid_t()> m_keyboardOwner;
  std::set<pid_t> m_speakers;  // which said it while they had the keyboard
};

}  // namespace zarvy
