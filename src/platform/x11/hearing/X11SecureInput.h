#pragma once

#include <functional>
#include <utility>

#include "platform/SecureInput.h"

namespace zarvy::x11 {

class GrabWatch;

// Takes a keyboard grab for secure input once it has lasted for a moment. Window managers grab for
// the time of a key press.
class X11SecureInput final : public SecureInput {
 public:
  // `ownWindowHasFocus` is asked on the main thread: a menu of this program grabs the keyboard too.
  X11SecureInput(const GrabWatch& grabs, std::function<bool()> ownWindowHasFocus)
      : m_grabs(grabs), m_ownWindowHasFocus(std::move(ownWindowHasFocus)) {}

  [[nodiscard]] bool isSecureEventInputEnabled() const override;

  // X does not tell who has the grab.
  [[nodiscard]] std::optional<qint32> ownerProcessIdentifier() const override { return {}; }

 private:
  const GrabWatch& m_grabs;
  const std::function<bool()> m_ownWindowHasFocus;
};

}  // namespace zarvy::x11
