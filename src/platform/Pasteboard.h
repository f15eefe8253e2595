#pragma once

#include <QString>

namespace zarvy {

// The user's clipboard. Main thread.
class Pasteboard {
 public:
  virtual ~Pasteboard() = default;

  // The text on it; empty where it holds none, or where its owner does not hand it over within a
  // second.
  [[nodiscard]] virtual QString text() const = 0;
};

}  // namespace zarvy
