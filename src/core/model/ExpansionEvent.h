#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QString>
#include <QUuid>

#include "base/json/JsonResult.h"

namespace zarvy {

// One expansion that took place. Trigger and title are those of that time.
struct ExpansionEvent {
  QUuid id;  // identity; never changes
  QUuid snippetID;
  QString snippetTrigger;
  QString snippetTitle;
  qint64 triggerLength = 0;    // user-perceived characters of the trigger field
  qint64 expansionLength = 0;  // the same of the text that was typed
  QDateTime timestamp;         // UTC
  qint64 hourOfDay = 0;        // 0 to 23, in the time zone of that moment
  qint64 dayOfWeek = 1;        // 1 for Sunday to 7 for Saturday, likewise

  [[nodiscard]] static JsonResult<ExpansionEvent> fromJson(const QJsonValue& value);
  [[nodiscard]] QJsonObject toJson() const;

  bool operator==(const ExpansionEvent&) const = default;
};

}  // namespace zarvy
