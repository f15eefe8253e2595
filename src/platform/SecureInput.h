#pragma once

#include <optional>

#include <QtGlobal>

namespace zarvy {

// Whether an application has the keyboard for itself, so that no other program may hear what is
// typed. Main thread.
class SecureInput {
 public:
  virtual ~SecureInput() = default;

  // Cheap enough to be asked twice a second.
  [[nodiscard]] virtual bool isSecureEventInputEnabled() const = 0;

  // The process that has it; absent where the desktop does not tell.
  [[nodiscard]] virtual std::optional<qint32> ownerProcessIdentifier() const = 0;
};

}  // namespace zarvy
