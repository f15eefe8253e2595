#pragma once

namespace zarvy {

// What stands between the keys and the application in front on many desktops, and makes text of a
// script out of them that has more characters than a keyboard has keys.
class InputMethod {
 public:
  virtual ~InputMethod() = default;

  // Whether it takes the next keys for something else than the characters that are on them. False
  // where there is no input method. May wait for an answer, for a sixth of a second at most, so not
  // on the main thread.
  [[nodiscard]] virtual bool isComposing() = 0;
};

}  // namespace zarvy
