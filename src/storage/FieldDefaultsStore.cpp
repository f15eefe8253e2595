#include "storage/FieldDefaultsStore.h"

#include <chrono>

namespace zarvy {

using namespace std::chrono_literals;

FieldDefaultsStore::FieldDefaultsStore(DocumentQueue& documents, Scheduler& scheduler)
    : m_save(documents, scheduler, 100ms) {}

std::optional<QString> FieldDefaultsStore::value(const QString& name) const {
  const std::scoped_lock guard(m_lock);
  const auto found = m_defaults.constFind(name);
  if (found == m_defaults.cend()) return std::nullopt;
  return *found;
}

void FieldDefaultsStore::setValue(const QString& name, const QString& value) {
  const std::scoped_lock guard(m_lock);
  m_defaults.insert(name, value);
  scheduleSave();
}

void FieldDefaultsStore::removeValue(const QString& name) {
  const std::scoped_lock guard(m_lock);
  if (m_defaults.remove(name) > 0) scheduleSave();
}

void FieldDefaultsStore::replaceAll(const QMap<QString, QString>& defaults) {
  const std::scoped_lock guard(m_lock);
  m_defaults = defaults;
}

void FieldDefaultsStore::scheduleSave() {
  m_save.schedule(
      [defaults = m_defaults](const DataStore& store) { store.saveFieldDefaults(defaults); });
}

}  // namespace zarvy
