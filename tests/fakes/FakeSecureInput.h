#pragma once

#include "platform/SecureInput.h"

namespace zarvy {

// Secure input that the test turns on and off.
class FakeSecureInput final : public SecureInput {
 public:
  bool isEnabled = false;
  std::optional<qint32> owner;

  [[nodiscard]] bool isSecureEventInputEnabled() const override { return isEnabled; }
  [[nodiscard]] std::optional<qint32> ownerProcessIdentifier() const override { return owner; }
};

}  // namespace zarvy
