#pragma once

#include <optional>

#include <QList>
#include <QObject>
#include <QString>

#include "app/Library.h"
#include "app/SecureInputWatch.h"
#include "base/LineOutput.h"
#include "base/TaskQueue.h"
#include "core/KeyboardMonitor.h"
#include "core/TextExpansionEngine.h"
#include "core/injection/TextInjector.h"
#include "platform/AccessibilityPermission.h"
#include "platform/KeyEventPoster.h"
#include "platform/SoundOutput.h"
#include "stats/StatsStore.h"

namespace zarvy {

// What an expansion takes. All of it outlives AppState and what AppState posts, as does the
// permission.
struct ExpansionServices {
  KeyboardMonitor& monitor;
  TextExpansionEngine& engine;
  TextInjector& injector;
  KeyEventPoster& poster;
  SoundOutput& sound;
  WorkerPool& workers;
  StatsStore& stats;
  SecureInputWatch& secureInputWatch;
  Scheduler& scheduler;
  LineOutput& output;
};

// The state that all screens share, and the running of the expansion service: from the keystroke
// that completes a trigger to the text that takes its place. A signal is raised only when a value
// has really changed. Main thread.
class AppState final : public QObject {
  Q_OBJECT

 public:
  AppState(const ExpansionServices& services, AccessibilityPermission& permission);
  ~AppState() override;

  // The library, in stored order.
  [[nodiscard]] const QList<Snippet>& snippets() const { return m_snippets; }
  [[nodiscard]] const QList<Folder>& folders() const { return m_folders; }
  [[nodiscard]] const QList<GlobalVariable>& globalVariables() const { return m_globalVariables; }
  [[nodiscard]] const Settings& settings() const { return m_settings; }

  // The user has paused expansion. Not remembered: every start is unpaused.
  [[nodiscard]] bool isPaused() const { return m_isPaused; }

  // Length of the latest match in user-perceived characters: what is to be deleted for it.
  [[nodiscard]] qsizetype pendingMatchLength() const { return m_pendingMatchLength; }

  // As it was when this was made, or last refreshed.
  [[nodiscard]] bool hasAccessibilityPermission() const { return m_hasAccessibilityPermission; }

  // Why the permission is missing, in one line for the user; empty where it is there.
  [[nodiscard]] QString reasonForMissingPermission() const {
    return m_permission.reasonForMissing();
  }

  // The application that keeps expansion from working, by having the keyboard for itself.
  [[nodiscard]] const std::optional<QString>& secureInputAppName() const {
    return m_services.secureInputWatch.secureInputAppName();
  }

  // Somebody asked for a new snippet, and the main window is to begin one.
  [[nodiscard]] bool pendingNewSnippet() const { return m_pendingNewSnippet; }
  void setPendingNewSnippet(bool pending);

  void setSettings(const Settings& settings);

  // Takes over what was read at start, hands it to the engine and starts expansion, if it may run.
  void adoptLibrary(const Library& library);

  // Begins to listen for triggers. Prints a line and does nothing without the permission; does
  // nothing while paused.
  void startExpansion();

  // Stops listening. An injection in flight goes on to its end, without the sound.
  void stopExpansion();

  void togglePause();

  // Looks whether the permission is there, and starts expansion if it is, unless paused.
  void refreshAccessibilityPermission();

  // Asks for the permission if it is missing, and half a second later opens where it is granted.
  void requestAccessibilityPermission();

  // Expands the snippet whose trigger ends `buffer`, if there is one.
  void handlePotentialTrigger(const QString& buffer);

 Q_SIGNALS:
  void snippetsChanged();
  void foldersChanged();
  void globalVariablesChanged();
  void settingsChanged();
  void isPausedChanged();
  void pendingMatchLengthChanged();
  void hasAccessibilityPermissionChanged();
  void secureInputAppNameChanged();
  void pendingNewSnippetChanged();

 private:
  template <typename Value>
  void assign(Value& property, const Value& value, void (AppState::*changed)());
  void connectServices();
  void prepareCharacters();
  void playExpansionSound();

  ExpansionServices m_services;
  AccessibilityPermission& m_permission;
  QList<Snippet> m_snippets;
  QList<Folder> m_folders;
  QList<GlobalVariable> m_globalVariables;
  Settings m_settings;
  bool m_isPaused = false;
  qsizetype m_pendingMatchLength = 0;
  bool m_hasAccessibilityPermission;
  bool m_pendingNewSnippet = false;
};

}  // namespace zarvy
