#pragma once

#include <memory>

#include "Desktop.h"
#include "app/AppState.h"
#include "app/LibraryLoader.h"
#include "base/LineOutput.h"
#include "base/QtScheduler.h"
#include "base/SystemClock.h"
#include "base/SystemSleeper.h"
#include "base/ThreadSerialQueue.h"
#include "base/ThreadWorkerPool.h"
#include "core/KeyboardMonitor.h"
#include "core/TextExpansionEngine.h"
#include "core/injection/TextInjector.h"
#include "platform/freedesktop/CanberraSoundOutput.h"
#include "storage/DataStore.h"

namespace zarvy {

// The composition root: makes each long-lived object once and wires them. Main thread, within the
// life of the QApplication. Its end stops listening and cuts injections short, so that no key is
// left pressed and the keyboard mapping is given back.
class ZarvyApp {
 public:
  explicit ZarvyApp(LineOutput& output);
  ~ZarvyApp();

  ZarvyApp(const ZarvyApp&) = delete;
  ZarvyApp& operator=(const ZarvyApp&) = delete;

  // Says what stands in the way, if anything, and loads the library; expansion starts after that.
  void start();

 private:
  [[nodiscard]] ExpansionServices expansionServices();

  // In the order in which they stand on each other.
  LineOutput& m_output;
  SystemClock m_clock;
  SystemSleeper m_sleeper;
  QtScheduler m_scheduler;
  Desktop m_desktop;
  DataStore m_store;
  ThreadSerialQueue m_keyboardProcessing;
  ThreadSerialQueue m_storageQueue;
  ThreadWorkerPool m_workers;
  CanberraSoundOutput m_sound;
  TextExpansionEngine m_engine;
  KeyboardMonitor m_monitor;
  std::shared_ptr<TextInjector> m_injector;
  AppState m_state;
  LibraryLoader m_loader;
};

}  // namespace zarvy
