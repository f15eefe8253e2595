#pragma once

#include <chrono>
#include <functional>

#include <QString>

#include "e2e/harness/KeyRhythm.h"
#include "e2e/harness/PhysicalKeyboard.h"
#include "e2e/harness/XConnection.h"

namespace zarvy::e2e {

// Through which device of the server the keys come.
enum class Body {
  xtest,           // the XTEST keyboard, which every program that types for others shares
  serverKeyboard,  // the server's own keyboard, the place of real hardware
};

// How somebody types.
struct TypingStyle {
  Body body = Body::xtest;
  std::chrono::milliseconds interval{15};  // from one key press to the next
  // How long a Shift or AltGr that the last character needed stays down after that key went up.
  std::chrono::milliseconds lateRelease{0};
  bool keepLastKeyDown = false;  // the last character's key is not released; see releaseAll()
  // A key that goes down with the last character, before anyone can have seen that, and stays down.
  std::optional<xkb_keysym_t> heldFromThen = {};
};

// Stands in for somebody at the keyboard: presses the keys that the present layout asks for, at the
// pace of `TypingStyle`. The rests between key presses are real time, as they are a person's. What
// it has pressed is released with it. Throws std::runtime_error for a character that the layout
// does not have.
class Person {
 public:
  explicit Person(const XConnection& connection);
  Person(const Person&) = delete;
  Person& operator=(const Person&) = delete;
  ~Person();

  void type(const QString& text, const TypingStyle& style = {});

  // Types `text` on the server's own keyboard with keys that overlap in time. Stops where
  // `isEnough`, which is given the number of characters typed, says so ahead of the next one. Gives
  // how many were typed; every key is up again then.
  qsizetype typeFluently(const QString& text, const KeyRhythm& rhythm, std::mt19937& random,
                         const std::function<bool(qsizetype)>& isEnough);

  // Presses and releases the key that has this symbol, a dead key or an arrow for example.
  void tap(xkb_keysym_t symbol, const TypingStyle& style = {});

  void press(xkb_keysym_t symbol, Body body = Body::xtest);
  void release(xkb_keysym_t symbol, Body body = Body::xtest);

  // Everything that is still down goes up.
  void releaseAll();

  // Where the keys of `body` are now.
  [[nodiscard]] PhysicalKeyboard keyboard(Body body) const;

  // Can this person type `text` on the present layout?
  [[nodiscard]] bool canType(const QString& text) const;

 private:
  struct HeldKey {
    xcb_keycode_t key;
    Body body;
    bool operator==(const HeldKey&) const = default;
  };

  void holdModifiers(const PhysicalKeyboard& keyboard, const KeyStroke& stroke, Body body);
  void queueKey(xcb_keycode_t key, bool down, Body body);
  void sendKey(xcb_keycode_t key, bool down, Body body);

  const XConnection& m_connection;
  std::uint8_t m_inputFirstEvent = 0;
  std::uint8_t m_serverKeyboard = 0;  // the device's id
  std::vector<HeldKey> m_held;
};

}  // namespace zarvy::e2e
