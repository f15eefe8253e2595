#pragma once

#include <mutex>

#include <QMap>

#include "base/Scheduler.h"
#include "core/placeholders/PlaceholderServices.h"
#include "storage/DocumentQueue.h"

namespace zarvy {

// The counters, kept in memory and written 0.1 s after the latest change. Any thread.
class CounterStore final : public Counters {
 public:
  // Both outlive the store and the saves that it schedules.
  CounterStore(DocumentQueue& documents, Scheduler& scheduler);

  [[nodiscard]] qint64 nextValue(const QString& name, qint64 startValue) override;
  void resetCounter(const QString& name) override;

  // Puts in what was read at start; nothing is written for it.
  void replaceAll(const QMap<QString, qint64>& counters);

 private:
  void scheduleSave();

  std::mutex m_lock;  // guards all below
  QMap<QString, qint64> m_counters;
  DebouncedSave m_save;
};

}  // namespace zarvy
