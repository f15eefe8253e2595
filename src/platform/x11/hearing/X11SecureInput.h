#pragma once

#include "platform/SecureInput.h"

namespace zarvy::x11 {

class GrabWatch;

// Takes a keyboard grab for secure input once it has lasted for a moment. Window managers and
// menus grab for the time of a key press.
class X11SecureInput final : public SecureInput {
 public:
  explicit X11SecureInput(const GrabWatch& grabs) : m_grabs(grabs) {}

  [[nodiscard]] bool isSecureEventInputEnabled() const override;

  // X does not tell who has the grab.
  [[nodiscard]] std::optional<qint32> ownerProcessIdentifier() const override { return {}; }

 private:
  const GrabWatch& m_grabs;
};

}  // namespace zarvy::x11
