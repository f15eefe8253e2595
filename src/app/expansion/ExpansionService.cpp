#include "app/expansion/ExpansionService.h"

#include <QPointer>

#include "app/expansion/ExpansionCoordinator.h"
#include "app/expansion/WantedCharacters.h"
#include "app/library/AssignIfChanged.h"
#include "app/library/Library.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

// From the desktop's own question to the place where the permission is granted.
constexpr std::chrono::milliseconds settingsDelay{500};

}  // namespace

ExpansionService::ExpansionService(const Library& library, ExpansionCoordinator& coordinator,
                                   const ExpansionServices& services)
    : m_library(library),
      m_coordinator(coordinator),
      m_services(services),
      m_hotKeyWatch(library, services.hotKeys),
      m_hasAccessibilityPermission(services.permission.isTrusted()) {
  m_services.secureInputWatch.onChange([this] { Q_EMIT secureInputAppNameChanged(); });
  connect(&m_hotKeyWatch, &HotKeyWatch::takenHotKeyChanged, this,
          &ExpansionService::takenHotKeyChanged);
}

ExpansionService::~ExpansionService() {
  m_services.secureInputWatch.onChange(nullptr);
  m_services.secureInputWatch.stop();
}

void ExpansionService::startExpansion() {
  if (m_isPaused) return;
  if (!m_hasAccessibilityPermission) {
    m_services.output.print(u"Cannot start expansion: no accessibility permission"_s);
    return;
  }
  m_services.engine.setSnippets(m_library.snippets());
  prepareCharacters();
  connectServices();
  m_services.monitor.start();
  m_services.secureInputWatch.start();
}

void ExpansionService::connectServices() {
  const QPointer weak(this);
  const QPointer coordinator(&m_coordinator);
  m_services.injector.onInjectionComplete = [weak] {
    if (weak) weak->playExpansionSound();
  };
  applyHotKey();
  m_services.monitor.onQuickSearchTriggered = [weak] {
    if (weak) weak->toggleQuickSearch();
  };
  m_services.monitor.onQuickSearchTriggeredHere = [coordinator] {
    if (coordinator) coordinator->hideQuickSearch();
  };
  m_services.monitor.onPotentialTrigger = [weak](const QString& buffer) {
    if (weak) weak->handlePotentialTrigger(buffer);
  };
  m_services.engine.onNeedsFillIn = [coordinator](const Snippet& snippet,
                                                  const QList<FillInField>& fields) {
    if (coordinator) coordinator->handleNeedsFillIn(snippet, fields);
  };
}

void ExpansionService::applyHotKey() {
  m_services.monitor.quickSearchKeyCode = m_library.settings().quickSearchKeyCode;
  m_services.monitor.quickSearchModifiers = m_library.settings().quickSearchModifiers;
  m_hotKeyWatch.look();
}

// Where the key is another program's, that has done something of its own by now, and the panel
// would come up above it. A panel that is open goes in any case.
void ExpansionService::toggleQuickSearch() {
  const bool isTaken = m_hotKeyWatch.look();
  if (!isTaken || m_services.quickSearchWindow.isVisible()) m_coordinator.toggleQuickSearch();
}

void ExpansionService::stopExpansion() {
  m_services.monitor.stop();
  m_services.engine.onNeedsFillIn = nullptr;
  m_services.engine.onExpand = nullptr;
  m_services.injector.onInjectionComplete = nullptr;
  m_services.monitor.onQuickSearchTriggered = nullptr;
  m_services.secureInputWatch.stop();
}

void ExpansionService::togglePause() {
  m_isPaused = !m_isPaused;
  Q_EMIT isPausedChanged();
  if (m_isPaused) {
    stopExpansion();
  } else {
    startExpansion();
  }
}

void ExpansionService::handlePotentialTrigger(const QString& buffer) {
  if (!m_isPaused) m_coordinator.handlePotentialTrigger(buffer);
}

void ExpansionService::refreshAccessibilityPermission() {
  m_services.permission.lookAgain();
  if (assignIfChanged(m_hasAccessibilityPermission, m_services.permission.isTrusted())) {
    Q_EMIT hasAccessibilityPermissionChanged();
  }
  if (m_hasAccessibilityPermission && !m_isPaused) startExpansion();
}

void ExpansionService::requestAccessibilityPermission() {
  AccessibilityPermission& permission = m_services.permission;
  if (!permission.isTrusted()) permission.ask();
  m_services.scheduler.postAfter(settingsDelay, [&permission] { permission.openSettings(); });
}

void ExpansionService::warmUp() {
  m_services.workers.post([&engine = m_services.engine] { engine.warmUp(); });
}

// Tells the keyboard which characters are to come. That takes a while where the layout lacks many.
void ExpansionService::prepareCharacters() {
  m_services.workers.post([&poster = m_services.poster, snippets = m_library.snippets()] {
    poster.prepare(wantedCharacters(snippets));
  });
}

// The setting counts as it is when the text has been typed.
void ExpansionService::playExpansionSound() {
  if (m_library.settings().soundEnabled) m_services.sound.playExpansionSound();
}

}  // namespace zarvy
