#pragma once

#include <optional>

#include <QString>

namespace zarvy {

// Whether the desktop starts this program when the user logs in. Main thread.
class LoginItem {
 public:
  virtual ~LoginItem() = default;

  // What went wrong, in the words of the system; absent where it is done.
  [[nodiscard]] virtual std::optional<QString> enable() = 0;
  [[nodiscard]] virtual std::optional<QString> disable() = 0;
};

}  // namespace zarvy
