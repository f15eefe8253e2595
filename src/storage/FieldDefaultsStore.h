#pragma once

#include <mutex>

#include <QMap>

#include "base/Scheduler.h"
#include "core/placeholders/PlaceholderServices.h"
#include "storage/DocumentQueue.h"

namespace zarvy {

// The remembered texts, kept in memory and written 0.1 s after the latest change. Any thread.
class FieldDefaultsStore final : public FieldDefaults {
 public:
  // Both outlive the store and the saves that it schedules.
  FieldDefaultsStore(DocumentQueue& documents, Scheduler& scheduler);

  [[nodiscard]] std::optional<QString> value(const QString& name) const override;

  void setValue(const QString& name, const QString& value);

  // Forgets the text; nothing is written if none was remembered.
  void removeValue(const QString& name);

  // Puts in what was read at start; nothing is written for it.
  void replaceAll(const QMap<QString, QString>& defaults);

 private:
  void scheduleSave();

  mutable std::mutex m_lock;  // guards all below
  QMap<QString, QString> m_defaults;
  DebouncedSave m_save;
};

}  // namespace zarvy
