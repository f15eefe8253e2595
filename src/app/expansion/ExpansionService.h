#pragma once

#include <optional>

#include <QObject>
#include <QString>

#include "app/expansion/HotKeyWatch.h"
#include "app/expansion/QuickSearchWindow.h"
#include "app/expansion/SecureInputWatch.h"
#include "base/LineOutput.h"
#include "base/Scheduler.h"
#include "base/TaskQueue.h"
#include "core/KeyboardMonitor.h"
#include "core/TextExpansionEngine.h"
#include "core/injection/TextInjector.h"
#include "platform/AccessibilityPermission.h"
#include "platform/HotKeys.h"
#include "platform/KeyEventPoster.h"
#include "platform/SoundOutput.h"

namespace zarvy {

class ExpansionCoordinator;
class Library;

// What the running of expansion takes. All of it outlives AppState and what AppState posts.
struct ExpansionServices {
  KeyboardMonitor& monitor;
  TextExpansionEngine& engine;
  TextInjector& injector;
  KeyEventPoster& poster;
  SoundOutput& sound;
  WorkerPool& workers;
  SecureInputWatch& secureInputWatch;
  AccessibilityPermission& permission;
  const QuickSearchWindow& quickSearchWindow;
  const HotKeys& hotKeys;
  Scheduler& scheduler;
  LineOutput& output;
};

// Whether expansion runs: it does once start() has been called, unless the user has paused it or
// the permission is missing. A signal is raised only when a value has really changed. Main thread.
class ExpansionService final : public QObject {
  Q_OBJECT

 public:
  // All of it outlives this object.
  ExpansionService(const Library& library, ExpansionCoordinator& coordinator,
                   const ExpansionServices& services);
  ~ExpansionService() override;
  ExpansionService(const ExpansionService&) = delete;
  ExpansionService& operator=(const ExpansionService&) = delete;

  // The user has paused expansion. Not remembered: every start is unpaused.
  [[nodiscard]] bool isPaused() const { return m_isPaused; }

  // As it was when this was made, or last refreshed.
  [[nodiscard]] bool hasAccessibilityPermission() const { return m_hasAccessibilityPermission; }

  // Begins to listen for triggers. Prints a line and does nothing without the permission; does
  // nothing while paused.
  void startExpansion();

  // Stops listening. An injection in flight goes on to its end, without the sound.
  void stopExpansion();

  void togglePause();

  // Listens for the quick search key of the settings from now on, and looks whose it is.
  void applyHotKey();

  // What is known of the permission; to be asked for by requestAccessibilityPermission().
  [[nodiscard]] const AccessibilityPermission& permission() const { return m_services.permission; }

  // The application that keeps expansion from working, by having the keyboard for itself.
  [[nodiscard]] const std::optional<QString>& secureInputAppName() const {
    return m_services.secureInputWatch.secureInputAppName();
  }

  // The quick search key where it is another program's: it does not open quick search then.
  [[nodiscard]] const std::optional<TakenHotKey>& takenHotKey() const {
    return m_hotKeyWatch.takenHotKey();
  }

  // The coordinator's, but for what arrives after a pause.
  void handlePotentialTrigger(const QString& buffer);

  // Makes ahead of need, away from the main thread, what the first expansion would wait for.
  void warmUp();

  // Looks whether the permission is there, and starts expansion if it is, unless paused.
  void refreshAccessibilityPermission();

  // Asks for the permission if it is missing, and half a second later opens where it is granted.
  void requestAccessibilityPermission();

 Q_SIGNALS:
  void isPausedChanged();
  void hasAccessibilityPermissionChanged();
  void secureInputAppNameChanged();
  void takenHotKeyChanged();

 private:
  void connectServices();
  void toggleQuickSearch();
  void prepareCharacters();
  void playExpansionSound();

  const Library& m_library;
  ExpansionCoordinator& m_coordinator;
  const ExpansionServices m_services;
  HotKeyWatch m_hotKeyWatch;
  bool m_isPaused = false;
  bool m_hasAccessibilityPermission;
};

}  // namespace zarvy
