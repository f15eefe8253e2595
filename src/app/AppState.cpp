#include "app/AppState.h"

#include <QPointer>

#include "app/WantedCharacters.h"
#include "base/text/Graphemes.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

constexpr qsizetype printedLength = 50;  // user-perceived characters

// From the desktop's own question to the place where the permission is granted.
constexpr std::chrono::milliseconds settingsDelay{500};

}  // namespace

AppState::AppState(const ExpansionServices& services, AccessibilityPermission& permission)
    : m_services(services),
      m_permission(permission),
      m_hasAccessibilityPermission(permission.isTrusted()) {
  m_services.secureInputWatch.onChange = [this] { Q_EMIT secureInputAppNameChanged(); };
}

AppState::~AppState() {
  m_services.secureInputWatch.onChange = nullptr;
}

template <typename Value>
void AppState::assign(Value& property, const Value& value, void (AppState::*changed)()) {
  if (property == value) return;
  property = value;
  Q_EMIT(this->*changed)();
}

void AppState::setSettings(const Settings& settings) {
  // The record has no equality of its own; its stored form holds every field.
  if (m_settings.toJson() == settings.toJson()) return;
  m_settings = settings;
  Q_EMIT settingsChanged();
}

void AppState::adoptLibrary(const Library& library) {
  assign(m_snippets, library.snippets, &AppState::snippetsChanged);
  assign(m_folders, library.folders, &AppState::foldersChanged);
  setSettings(library.settings);
  assign(m_globalVariables, library.globalVariables, &AppState::globalVariablesChanged);
  m_services.engine.setSnippets(m_snippets);
  m_services.engine.setGlobalVariables(m_globalVariables);
  if (m_hasAccessibilityPermission && !m_isPaused) startExpansion();
}

void AppState::startExpansion() {
  if (m_isPaused) return;
  if (!m_hasAccessibilityPermission) {
    m_services.output.print(u"Cannot start expansion: no accessibility permission"_s);
    return;
  }
  m_services.engine.setSnippets(m_snippets);
  prepareCharacters();
  connectServices();
  m_services.monitor.start();
  m_services.secureInputWatch.start();
}

void AppState::connectServices() {
  const QPointer<AppState> weak = this;
  m_services.injector.onInjectionComplete = [weak] {
    if (weak) weak->playExpansionSound();
  };
  m_services.monitor.quickSearchKeyCode = m_settings.quickSearchKeyCode;
  m_services.monitor.quickSearchModifiers = m_settings.quickSearchModifiers;
  m_services.monitor.onPotentialTrigger = [weak](const QString& buffer) {
    if (weak) weak->handlePotentialTrigger(buffer);
  };
}

void AppState::stopExpansion() {
  m_services.monitor.stop();
  m_services.engine.onNeedsFillIn = nullptr;
  m_services.engine.onExpand = nullptr;
  m_services.injector.onInjectionComplete = nullptr;
  m_services.monitor.onQuickSearchTriggered = nullptr;
  m_services.secureInputWatch.stop();
}

void AppState::togglePause() {
  assign(m_isPaused, !m_isPaused, &AppState::isPausedChanged);
  if (m_isPaused) {
    stopExpansion();
  } else {
    startExpansion();
  }
}

void AppState::refreshAccessibilityPermission() {
  assign(m_hasAccessibilityPermission, m_permission.isTrusted(),
         &AppState::hasAccessibilityPermissionChanged);
  if (m_hasAccessibilityPermission && !m_isPaused) startExpansion();
}

void AppState::requestAccessibilityPermission() {
  if (!m_permission.isTrusted()) m_permission.ask();
  m_services.scheduler.postAfter(settingsDelay,
                                 [&permission = m_permission] { permission.openSettings(); });
}

void AppState::setPendingNewSnippet(bool pending) {
  assign(m_pendingNewSnippet, pending, &AppState::pendingNewSnippetChanged);
}

void AppState::handlePotentialTrigger(const QString& buffer) {
  if (m_isPaused) return;
  const auto match = m_services.engine.findMatch(buffer);
  if (!match) return;
  m_services.monitor.clearBuffer();
  const qsizetype matchLength = graphemeCount(match->matchedString);
  assign(m_pendingMatchLength, matchLength, &AppState::pendingMatchLengthChanged);
  const auto expanded = m_services.engine.processSnippet(match->snippet, match->captures);
  if (!expanded) return;
  const QString beginning = firstGraphemes(expanded->text, printedLength).toString();
  m_services.output.print(u"EXPANDING to: '"_s + beginning + u"...'"_s);
  m_services.injector.inject(expanded->text, matchLength, {}, expanded->cursorOffset);
  m_services.stats.recordExpansion(match->snippet, graphemeCount(expanded->text));
}

// Tells the keyboard which characters are to come. That takes a while where the layout lacks many.
void AppState::prepareCharacters() {
  m_services.workers.post([&poster = m_services.poster, snippets = m_snippets] {
    poster.prepare(wantedCharacters(snippets));
  });
}

void AppState::playExpansionSound() {
  if (m_settings.soundEnabled) m_services.sound.playExpansionSound();
}

}  // namespace zarvy
