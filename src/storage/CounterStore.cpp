#include "storage/CounterStore.h"

#include <chrono>

#include "base/CheckedArithmetic.h"

namespace zarvy {

using namespace std::chrono_literals;

CounterStore::CounterStore(DocumentQueue& documents, Scheduler& scheduler)
    : m_save(documents, scheduler, 100ms) {}

qint64 CounterStore::nextValue(const QString& name, qint64 startValue) {
  const std::scoped_lock guard(m_lock);
  const auto latest = m_counters.constFind(name);
  const qint64 value =
      latest == m_counters.cend()
          ? startValue
          : checkedSum(*latest, 1, "A counter has passed the greatest number of 64 bits.");
  m_counters.insert(name, value);
  scheduleSave();
  return value;
}

void CounterStore::resetCounter(const QString& name) {
  const std::scoped_lock guard(m_lock);
  m_counters.insert(name, 0);
  scheduleSave();
}

void CounterStore::replaceAll(const QMap<QString, qint64>& counters) {
  const std::scoped_lock guard(m_lock);
  m_counters = counters;
}

void CounterStore::scheduleSave() {
  m_save.schedule(
      [counters = m_counters](const DataStore& store) { store.saveCounters(counters); });
}

}  // namespace zarvy
