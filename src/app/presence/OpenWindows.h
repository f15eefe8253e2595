#pragma once

#include <QList>
#include <QString>

namespace zarvy {

// The windows of this program, the hidden ones too. Main thread.
class OpenWindows {
 public:
  struct Window {
    QString title;
    bool isVisible = false;
  };

  virtual ~OpenWindows() = default;

  [[nodiscard]] virtual QList<Window> windows() const = 0;
};

}  // namespace zarvy
