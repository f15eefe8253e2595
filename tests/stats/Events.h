#pragma once

#include <QList>
#include <QString>

#include <gtest/gtest.h>

#include "core/model/ExpansionEvent.h"

namespace zarvy {

// "2026-01-21T09:30:00Z"
inline QDateTime utc(const QString& text) {
  const QDateTime instant = QDateTime::fromString(text, Qt::ISODateWithMs);
  EXPECT_TRUE(instant.isValid()) << text.toStdString();
  return instant;
}

// An event that saved 96 characters.
inline ExpansionEvent eventAt(const QString& timestamp) {
  ExpansionEvent event;
  event.id = QUuid::createUuid();
  event.snippetTrigger = QStringLiteral(";sig");
  event.snippetTitle = QStringLiteral("Signature");
  event.triggerLength = 4;
  event.expansionLength = 100;
  event.timestamp = utc(timestamp);
  return event;
}

inline QList<ExpansionEvent> eventsAt(const QStringList& timestamps) {
  QList<ExpansionEvent> events;
  for (const QString& timestamp : timestamps) events.append(eventAt(timestamp));
  return events;
}

}  // namespace zarvy
