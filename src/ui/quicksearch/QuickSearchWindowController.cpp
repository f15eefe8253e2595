#include "ui/quicksearch/QuickSearchWindowController.h"

#include <chrono>
#include <utility>

#include <QGuiApplication>
#include <QPointer>
#include <QWindow>

#include "base/Scheduler.h"
#include "platform/Workspace.h"
#include "ui/quicksearch/FloatingPanel.h"
#include "ui/quicksearch/QuickSearchView.h"
#include "ui/window/BringForward.h"
#include "ui/window/UserScreen.h"

namespace zarvy {
namespace {

// A window manager that is busy with the hot key may have missed the first request.
constexpr std::chrono::milliseconds secondRequestDelay{50};

// A window manager takes the keyboard for a moment at a key of its own, and for as long as it moves
// the panel about; the panel stays in front all the while, or nothing is.
constexpr std::chrono::milliseconds absenceInterval{100};

}  // namespace

QuickSearchWindowController::QuickSearchWindowController(QuickSearchServices services)
    : m_services(std::move(services)) {
  connect(qGuiApp, &QGuiApplication::focusWindowChanged, this,
          &QuickSearchWindowController::followKeyboard);
  connect(qGuiApp, &QGuiApplication::applicationStateChanged, this,
          &QuickSearchWindowController::followActivity);
}

QuickSearchWindowController::~QuickSearchWindowController() {
  hide();
}

bool QuickSearchWindowController::isVisible() const {
  return m_panel && m_panel->isVisible();
}

void QuickSearchWindowController::hide() {
  m_secondRequest.cancel();
  m_windowDelegate.reset();
  m_panel.reset();
  m_hasHadKeyboard = false;
  m_absence.cancel();  // last: the end of the panel may be a loss of activity
}

void QuickSearchWindowController::show(const SnippetList& snippets, const QList<Folder>& folders,
                                       OnSelect onSelect) {
  hide();
  ++m_opening;
  auto view = std::make_unique<QuickSearchView>(snippets, folders, wrapped(onSelect), onDismiss());
  QuickSearchView& shown = *view;
  m_panel = makePanel<FloatingPanel>(std::move(view), m_services.hasCompositor());
  m_windowDelegate = std::make_shared<const WindowDelegate>(WindowDelegate{[this] { hide(); }});
  m_panel->setDelegate(m_windowDelegate);
  m_panel->centerOn(screenOfUser(m_services.workspace));
  m_services.keepOutOfTaskbar(m_panel->winId());
  shown.focusSearch();
  showInFront(*m_panel, m_services.workspace);
  m_secondRequest = m_services.scheduler.postAfter(
      secondRequestDelay, [this] { bringForward(*m_panel, m_services.workspace); });
}

// Called at most once: the panel that is hidden may still have a key on its way to it.
QuickSearchWindow::OnSelect QuickSearchWindowController::wrapped(const OnSelect& onSelect) {
  const QPointer<QuickSearchWindowController> controller(this);
  return [controller, onSelect, opening = m_opening](const Snippet& snippet) {
    auto* const alive = controller.data();
    if (alive == nullptr || !alive->m_panel || alive->m_opening != opening) return;
    alive->hide();
    onSelect(snippet);
  };
}

std::function<void()> QuickSearchWindowController::onDismiss() {
  const QPointer<QuickSearchWindowController> controller(this);
  return [controller] {
    if (auto* const alive = controller.data()) alive->hide();
  };
}

void QuickSearchWindowController::followKeyboard(const QWindow* window) {
  if (m_panel && window == m_panel->windowHandle()) m_hasHadKeyboard = true;
}

// Another application is in front until the panel gets the keyboard.
void QuickSearchWindowController::followActivity(Qt::ApplicationState state) {
  m_absence.cancel();
  if (state == Qt::ApplicationActive || !m_panel || !m_hasHadKeyboard) return;
  m_absence = m_services.scheduler.repeatEvery(absenceInterval, [this] { hideWhereUserHasLeft(); });
}

void QuickSearchWindowController::hideWhereUserHasLeft() {
  const auto frontmost = m_services.workspace.frontmostApplication();
  const bool hasLeft =
      frontmost ? frontmost->nativeWindow != m_panel->winId() : !m_panel->isBeingMoved();
  if (hasLeft) hide();
}

}  // namespace zarvy
