#pragma once

#include <functional>

#include <QObject>

#include "app/presence/OpenWindows.h"

namespace zarvy {

// The windows that this program has on the screen. Within the life of the QGuiApplication.
class OwnWindows final : public QObject, public OpenWindows {
  Q_OBJECT

 public:
  // `onOpened` is called with the native window of each that has come to the screen, once it is
  // there; `onClosed` with that of each that is about to go.
  using Listener = std::function<void(quint64 nativeWindow)>;
  OwnWindows(Listener onOpened, Listener onClosed);

  [[nodiscard]] QList<Window> windows() const override;

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  const Listener m_onOpened;
  const Listener m_onClosed;
};

}  // namespace zarvy
