#pragma once

#include <memory>

#include <QString>

namespace zarvy {

// One run of key presses into whatever has the keyboard focus. Between its making and its end the
// platform sees to it that modifiers which the user still holds do not change what is typed; its
// end gives them back. Belongs to one thread; several may exist at a time and then interleave.
class TypingSession {
 public:
  virtual ~TypingSession() = default;

  // Presses and releases a key by its virtual key code. False where that key cannot be pressed;
  // nothing has been sent then.
  virtual bool pressKey(quint16 virtualKeyCode) = 0;

  // Types a run of at most 20 UTF-16 units. The units of two calls in a row are one text: a
  // surrogate pair may be cut between them. False where something of the run could not be typed.
  virtual bool pressText(QStringView run) = 0;

  // For a platform on which a modifier that the user holds changes what is typed, so that
  // pressText() waits while the user types with one: whether it would wait now.
  [[nodiscard]] virtual bool mustWait() const { return false; }

  // For the same platform: pressText() without that wait. It types the user's own letters again,
  // which were deleted for a moment, and the user's next letters must come behind them. No pair is
  // cut.
  virtual bool pressTextAgain(QStringView run) { return pressText(run); }
};

// Sends key events that KeyEventSource recognises as this program's own. Any thread.
class KeyEventPoster {
 public:
  virtual ~KeyEventPoster() = default;

  // `text` is all that the session is about to type: a hint for a platform that needs to make room
  // for characters which the keyboard layout lacks, once, ahead of the first one; keys that are
  // pressed before the text do not wait for that. May wait for held modifiers to be released.
  [[nodiscard]] virtual std::unique_ptr<TypingSession> beginTyping(const QString& text) = 0;

  // A hint for the same platform: characters that sessions to come are likely to need, most wanted
  // first. May take a while: not on the main thread.
  virtual void prepare(const QString& /*characters*/) {}
};

}  // namespace zarvy
