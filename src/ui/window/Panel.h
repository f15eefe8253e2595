#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include <QWidget>

class QScreen;

namespace zarvy {

// Is told of the closing of a window, by whatever way it closes. The window does not keep it alive.
// What opened the window does, and hears of nothing more once it has dropped it.
struct WindowDelegate {
  std::function<void()> onClose;

  // Called by the window. The callback may drop this object.
  void windowWillClose() const {
    const auto callback = onClose;
    if (callback) callback();
  }
};

// A window that comes up where the user is, above all others, and goes when it has been answered.
// The pointer moves it by any part of it that is no control.
class Panel : public QWidget {
  Q_OBJECT

 public:
  // Told of the closing; not kept alive.
  void setDelegate(std::weak_ptr<const WindowDelegate> delegate);

  // Moves to the middle of `screen`, and fits into it.
  void centerOn(QScreen& screen);

  // The same for `desk`, what a screen has to offer, in logical pixels. Where that is too small the
  // panel is smaller than it would be at least, with its frame; one of a fixed size remains so.
  void fitInto(const QRect& desk);

  // Deletes a panel once the events under way are done with it.
  struct DeleteLater {
    void operator()(Panel* panel) const;
  };

 protected:
  using QWidget::QWidget;

  void closeEvent(QCloseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

  // Hands the panel to the window manager, which moves it until the button is let go. False where
  // there is none that could.
  virtual bool startMove();

 private:
  std::weak_ptr<const WindowDelegate> m_delegate;
  std::optional<QPoint> m_heldAt;  // where the pointer has taken hold of it, on the screen
};

// A panel that its owner drops whenever it likes.
template <typename SomePanel>
using PanelPtr = std::unique_ptr<SomePanel, Panel::DeleteLater>;

// Takes the same as the panel's constructor.
template <typename SomePanel, typename... Arguments>
[[nodiscard]] PanelPtr<SomePanel> makePanel(Arguments&&... arguments) {
  return PanelPtr<SomePanel>(
      std::make_unique<SomePanel>(std::forward<Arguments>(arguments)...).release());
}

}  // namespace zarvy
