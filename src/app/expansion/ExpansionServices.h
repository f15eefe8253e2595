#pragma once

#include "app/expansion/FillInWindow.h"
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
#include "platform/Workspace.h"
#include "stats/StatsStore.h"

namespace zarvy {

// What an expansion takes. All of it outlives AppState and what AppState posts.
struct ExpansionServices {
  KeyboardMonitor& monitor;
  TextExpansionEngine& engine;
  TextInjector& injector;
  KeyEventPoster& poster;
  Workspace& workspace;
  SoundOutput& sound;
  WorkerPool& workers;
  StatsStore& stats;
  SecureInputWatch& secureInputWatch;
  AccessibilityPermission& permission;
  FillInWindow& fillInWindow;
  QuickSearchWindow& quickSearchWindow;
  const HotKeys& hotKeys;
  Scheduler& scheduler;
  LineOutput& output;
};

}  // namespace zarvy
