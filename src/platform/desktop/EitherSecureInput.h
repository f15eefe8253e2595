#pragma once

#include "platform/SecureInput.h"

namespace zarvy {

// Secure input of two kinds as one. Where both are on, the first one's owner is named. Main thread.
class EitherSecureInput final : public SecureInput {
 public:
  // Both outlive this.
  EitherSecureInput(const SecureInput& first, const SecureInput& second)
      : m_first(first), m_second(second) {}

  [[nodiscard]] bool isSecureEventInputEnabled() const override {
    return m_first.isSecureEventInputEnabled() || m_second.isSecureEventInputEnabled();
  }

  [[nodiscard]] std::optional<qint32> ownerProcessIdentifier() const override {
    const SecureInput& active = m_first.isSecureEventInputEnabled() ? m_first : m_second;
    return active.ownerProcessIdentifier();
  }

 private:
  const SecureInput& m_first;
  const SecureInput& m_second;
};

}  // namespace zarvy
