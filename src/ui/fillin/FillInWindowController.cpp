#include "ui/fillin/FillInWindowController.h"

#include <utility>

#include <QPointer>
#include <QVBoxLayout>

#include "ui/window/BringForward.h"
#include "ui/window/UserScreen.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr QSize leastSize(350, 400);
constexpr QSize usualSize(450, 550);

// Qt takes these three characters for the place of a mark, unless they stand there twice.
QString literalTitle(QString title) {
  return title.replace(u"[*]"_s, u"[*][*]"_s);
}

// Of the forms that give way to another: the one that is open, and one that its end opens.
constexpr int toldOnes = 2;

}  // namespace

FillInPanel::FillInPanel(std::unique_ptr<QWidget> content, const QString& title) {
  setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                 Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint | Qt::WindowStaysOnTopHint);
  setWindowTitle(literalTitle(title));
  setWindowRole(u"fill-in"_s);
  setMinimumSize(leastSize);
  resize(usualSize);
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(content.release());
}

FillInWindowController::FillInWindowController(const FillInServices& services)
    : m_services(services) {}

FillInWindowController::~FillInWindowController() = default;

void FillInWindowController::show(const Snippet& snippet, FolderColor folderColor,
                                  TakeTypedAhead takeTypedAhead, OnComplete onComplete,
                                  OnCancel onCancel) {
  if (!giveWay()) return;
  m_didComplete = false;
  ++m_opening;
  auto form = std::make_unique<StandaloneFillInForm>(snippet, folderColor, m_services,
                                                     wrapped(onComplete), wrapped(onCancel));
  form->setTypedAhead(std::move(takeTypedAhead));
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

// False where a callback has ended the controller. A callback may open a form again whenever one
// closes: what it opens meanwhile is closed once more, and then no longer told of.
bool FillInWindowController::giveWay() {
  const QPointer<FillInWindowController> controller(this);
  if (!m_isGivingWay) {
    m_isGivingWay = true;
    for (int round = 0; m_window && round < toldOnes; ++round) {
      closeAndForget(m_opening);
      if (!controller) return false;
    }
    m_isGivingWay = false;
  }
  forget();
  return true;
}

void FillInWindowController::forget() {
  m_windowDelegate.reset();
  m_window.reset();
}

}  // namespace zarvy
