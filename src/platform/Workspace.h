#pragma once

#include <optional>

#include <QRect>

#include "platform/RunningApplication.h"

namespace zarvy {

// The applications of the desktop, and which of them is in front. Any thread.
class Workspace {
 public:
  virtual ~Workspace() = default;

  // Absent where nothing, or nothing that can be told, has the keyboard.
  [[nodiscard]] virtual std::optional<RunningApplication> frontmostApplication() const = 0;
  // Where the window in front is, in pixels of the display, without what is drawn around it. Absent
  // where no window has the keyboard.
  [[nodiscard]] virtual std::optional<QRect> frontmostWindowArea() const = 0;

  [[nodiscard]] virtual std::optional<RunningApplication> runningApplication(
      qint64 processIdentifier) const = 0;

  [[nodiscard]] virtual bool isActive(const RunningApplication& application) const = 0;

  // Asks for `application` to come to the front; does not wait for it. False where it is gone, or
  // has no window any more that could come.
  virtual bool activate(const RunningApplication& application) = 0;

  // The identifier of this program itself, as frontmostApplication() would give it.
  [[nodiscard]] virtual std::optional<QString> ownBundleIdentifier() const = 0;
};

}  // namespace zarvy
