#pragma once

#include <memory>

#include <QString>
#include <QWidget>

#include "ui/WindowDelegate.h"

namespace zarvy {

// The window around a form: above all others, and moved by any part of it that is no control.
class FillInPanel final : public QWidget {
  Q_OBJECT

 public:
  // Takes `content` over.
  FillInPanel(std::unique_ptr<QWidget> content, const QString& title);

  // Told of the closing; not kept alive.
  void setDelegate(std::weak_ptr<const WindowDelegate> delegate);

  // Moves to the middle of the screen that the pointer is on, and fits into it.
  void center();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  std::weak_ptr<const WindowDelegate> m_delegate;
};

}  // namespace zarvy
