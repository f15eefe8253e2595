#pragma once

#include <memory>

#include <QObject>
#include <QString>

#include "app/expansion/FillInWindow.h"
#include "ui/fillin/StandaloneFillInForm.h"
#include "ui/window/Panel.h"

namespace zarvy {

// The window around a form, above all others.
class FillInPanel final : public Panel {
  Q_OBJECT

 public:
  // Takes `content` over.
  FillInPanel(std::unique_ptr<QWidget> content, const QString& title);
};

// Opens the form in a panel above the other windows. The end of the controller takes an open panel
// away without a call.
class FillInWindowController final : public QObject, public FillInWindow {
  Q_OBJECT

 public:
  explicit FillInWindowController(const FillInServices& services);
  ~FillInWindowController() override;
  FillInWindowController(const FillInWindowController&) = delete;
  FillInWindowController& operator=(const FillInWindowController&) = delete;

  // A press of "Cancel" calls `onCancel` twice, once for itself and once for the closing that
  // follows; any other closing without "Expand" calls it once. The form that is open gives way, and
  // so does one that its end opens in turn; what the end of that one opens goes without a call.
  void show(const Snippet& snippet, FolderColor folderColor, TakeTypedAhead takeTypedAhead,
            OnComplete onComplete, OnCancel onCancel) override;

  void close() override;

 private:
  [[nodiscard]] OnComplete wrapped(const OnComplete& onComplete);
  [[nodiscard]] OnCancel wrapped(const OnCancel& onCancel);
  [[nodiscard]] OnCancel onCloseOf(const OnCancel& onCancel);
  void closeAndForget(quint64 opening);
  [[nodiscard]] bool giveWay();
  void forget();

  const FillInServices m_services;
  PanelPtr<FillInPanel> m_window;
  std::shared_ptr<const WindowDelegate> m_windowDelegate;  // the panel does not keep it alive
  bool m_didComplete = false;                              // "Expand" was used
  bool m_isGivingWay = false;                              // to another form
  quint64 m_opening = 0;                                   // counts the panels
};

}  // namespace zarvy
