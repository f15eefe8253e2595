#pragma once

#include <QtGlobal>

namespace zarvy {

// A way that keys take inside an application before its widgets get them. Qt has one: each key that
// types something goes to the accessibility bus and back first, while a key that is a shortcut is
// acted on at once. In a text editor BackSpace and the arrows are shortcuts, so that they overtake
// the letters typed just before them.
class KeyDetour {
 public:
  virtual ~KeyDetour() = default;

  // The process that has the keyboard, where its keys go that way; 0 where they do not, or nothing
  // is known of it. Any thread.
  [[nodiscard]] virtual qint64 process() = 0;

  // Returns once the keys that this process has read so far are with its widgets; false where that
  // takes longer than a fifth of a second. Any thread but the main one.
  [[nodiscard]] virtual bool awaitPassage() = 0;
};

}  // namespace zarvy
