#include "ui/fillin/FillInWindowController.h"

#include <utility>

#include <QPointer>

#include "ui/fillin/FillInPanel.h"
#include "ui/fillin/StandaloneFillInForm.h"
#include "ui/window/BringForward.h"
#include "ui/window/UserScreen.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

FillInWindowController::FillInWindowController(const FillInServices& services)
    : m_services(services) {}

FillInWindowController::~FillInWindowController() = default;

void FillInWindowController::show(const Snippet& snippet, FolderColor folderColor,
                                  OnComplete onComplete, OnCancel onCancel) {
  while (m_window) closeAndForget(m_opening);  // the end of one may have opened another
  m_didComplete = false;
  ++m_opening;
  auto form = std::make_unique<StandaloneFillInForm>(snippet, folderColor, m_services,
                                                     wrapped(onComplete), wrapped(onCancel));
  form->takeTypedAhead = takeTypedAhead;
  m_window = makePanel<FillInPanel>(std::move(form), u"Fill In - "_s + snippet.title);
  m_windowDelegate = std::make_shared<const WindowDelegate>(WindowDelegate{onCloseOf(onCancel)});
  m_window->setDelegate(m_windowDelegate);
  m_window->centerOn(screenOfUser(m_services.workspace));
  showInFront(*m_window, m_services.workspace);
}

void FillInWindowController::close() {
  if (m_window) m_window->close();
}

FillInWindow::OnComplete FillInWindowController::wrapped(const OnComplete& onComplete) {
  const QPointer<FillInWindowController> controller(this);
  return [controller, onComplete, opening = m_opening](const QMap<QString, QString>& values) {
    if (auto* const alive = controller.data()) alive->m_didComplete = true;
    onComplete(values);
    if (auto* const alive = controller.data()) alive->closeAndForget(opening);
  };
}

FillInWindow::OnCancel FillInWindowController::wrapped(const OnCancel& onCancel) {
  const QPointer<FillInWindowController> controller(this);
  return [controller, onCancel, opening = m_opening] {
    if (auto* const alive = controller.data()) alive->m_didComplete = false;
    onCancel();
    if (auto* const alive = controller.data()) alive->closeAndForget(opening);
  };
}

FillInWindow::OnCancel FillInWindowController::onCloseOf(const OnCancel& onCancel) {
  const QPointer<FillInWindowController> controller(this);
  return [controller, onCancel] {
    auto* const alive = controller.data();
    if (alive == nullptr) return;
    const bool didComplete = alive->m_didComplete;
    alive->forget();
    if (!didComplete) onCancel();
  };
}

// A callback may have opened another form meanwhile, which is none of its own.
void FillInWindowController::closeAndForget(quint64 opening) {
  const QPointer<FillInWindowController> controller(this);
  if (opening != m_opening) return;
  close();
  if (controller && opening == m_opening) forget();
}

void FillInWindowController::forget() {
  m_windowDelegate.reset();
  m_window.reset();
}

}  // namespace zarvy
