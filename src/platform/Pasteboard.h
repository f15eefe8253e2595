#pragma once

#include <QString>

namespace zarvy {

// The user's clipboard. Main thread.
class Pasteboard {
 public:
  virtual ~Pasteboard() = default;

  // The text on it; empty where it holds none.
  [[nodiscard]] virtual QString text() const = 0;
};

}  // namespace zarvy
