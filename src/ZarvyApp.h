#pragma once

#include <memory>

#include "app/AppState.h"
#include "base/Clock.h"
#include "base/LineOutput.h"
#include "base/MainThread.h"
#include "base/QtScheduler.h"
#include "base/Sleeper.h"
#include "base/ThreadQueues.h"
#include "base/posix/ChildReaper.h"
#include "base/text/RegionalSettings.h"
#include "core/KeyboardMonitor.h"
#include "core/TextExpansionEngine.h"
#include "core/evaluation/JSEvaluator.h"
#include "core/evaluation/ShellEvaluator.h"
#include "core/injection/TextInjector.h"
#include "core/placeholders/DateFormatters.h"
#include "platform/Desktop.h"
#include "platform/freedesktop/CanberraSoundOutput.h"
#include "platform/freedesktop/PortalColorScheme.h"
#include "platform/freedesktop/QSettingsUserDefaults.h"
#include "platform/freedesktop/QtPasteboard.h"
#include "platform/freedesktop/SyncedFolderDrive.h"
#include "platform/freedesktop/XdgLoginItem.h"
#include "stats/StatsStore.h"
#include "storage/CounterStore.h"
#include "storage/DataStore.h"
#include "storage/DocumentQueue.h"
#include "storage/FieldDefaultsStore.h"
#include "storage/sync/iCloudSyncService.h"
#include "ui/MenuBarView.h"
#include "ui/SceneWindows.h"
#include "ui/TrayIcon.h"
#include "ui/fillin/FillInWindowController.h"
#include "ui/quicksearch/QuickSearchWindowController.h"
#include "ui/style/DesktopColors.h"
#include "ui/window/OwnWindows.h"

namespace zarvy {

// The composition root: makes each long-lived object once and wires them. Main thread, within the
// life of the QApplication. Its end stops listening and cuts injections short, so that no key is
// left pressed and the keyboard mapping is given back; saves that have begun are finished.
class ZarvyApp {
 public:
  explicit ZarvyApp(LineOutput& output);
  ~ZarvyApp();

  ZarvyApp(const ZarvyApp&) = delete;
  ZarvyApp& operator=(const ZarvyApp&) = delete;

  // Says what stands in the way, if anything, and loads the library; expansion starts after that.
  void start();

  // What the menu's "Manage Snippets..." does.
  void openManageSnippets();

  // What the destructor does; once. False where the display, a disk or the sound server does not
  // answer: a thread waits for it, and the destructor would as well, for ever. What could be saved
  // has been.
  [[nodiscard]] bool end();

 private:
  [[nodiscard]] bool finishSaves(std::chrono::steady_clock::time_point deadline);
  [[nodiscard]] PlaceholderServices placeholderServices();
  [[nodiscard]] CoordinatorServices coordinatorServices();
  [[nodiscard]] ExpansionServices expansionServices();
  [[nodiscard]] LibraryServices libraryServices();
  [[nodiscard]] PresenceServices presenceServices();
  [[nodiscard]] FillInServices fillInServices();
  [[nodiscard]] QuickSearchServices quickSearchServices();

  // In the order in which they stand on each other.
  LineOutput& m_output;
  SystemClock m_clock;
  ThreadTimeClock m_matchingClock;
  SystemSleeper m_sleeper;
  QtScheduler m_scheduler;
  MainThread m_mainThread;
  QSettingsUserDefaults m_userDefaults;
  const std::unique_ptr<Desktop> m_desktop;
  const DesktopParts& m_parts;  // of the desktop
  DataStore m_store;
  ThreadSerialQueue m_keyboardProcessing;
  ThreadSerialQueue m_storageQueue;
  DocumentQueue m_documents;
  CounterStore m_counters;
  FieldDefaultsStore m_fieldDefaults;
  StatsStore m_stats;
  ThreadSerialQueue m_syncQueue;
  SyncedFolderDrive m_cloudDrive;
  iCloudSyncService m_cloudSync;
  ThreadWorkerPool m_workers;
  ThreadWorkerPool m_soundWorkers;  // of its own: a sound server may take its time
  CanberraSoundOutput m_sound;
  const RegionalSettings m_region;
  DateFormatters m_dates;
  QtPasteboard m_pasteboard;
  ChildReaper m_childReaper;
  ShellEvaluator m_shell;
  JSEvaluator m_javaScript;
  TextExpansionEngine m_engine;
  KeyboardMonitor m_monitor;
  std::shared_ptr<TextInjector> m_injector;
  SecureInputWatch m_secureInputWatch;
  XdgLoginItem m_loginItem;
  DesktopColors m_colors;
  PortalColorScheme m_colorScheme;
  OwnWindows m_ownWindows;
  FillInWindowController m_fillInWindow;
  QuickSearchWindowController m_quickSearchWindow;
  AppState m_state;
  SceneWindows m_windows;
  MenuBarView m_menu;
  TrayIcon m_trayIcon;
  bool m_hasEnded = false;
  bool m_hasEndedInOrder = false;
};

}  // namespace zarvy
