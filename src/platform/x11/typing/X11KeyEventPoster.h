#pragma once

#include "platform/KeyEventPoster.h"

namespace zarvy::x11 {

class Typist;

// Posts keys through XTEST; the layout's own keys where it has the character, scratch keys
// elsewhere.
class X11KeyEventPoster final : public KeyEventPoster {
 public:
  explicit X11KeyEventPoster(Typist& typist) : m_typist(typist) {}

  [[nodiscard]] std::unique_ptr<TypingSession> beginTyping(const QString& text) override;
  void prepare(const QString& characters) override;

 private:
  Typist& m_typist;
};

}  // namespace zarvy::x11
