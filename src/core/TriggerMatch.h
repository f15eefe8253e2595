#pragma once

#include <QMap>
#include <QString>

#include "core/model/Snippet.h"

namespace zarvy {

// The snippet whose trigger ends the typed text.
struct TriggerMatch {
  Snippet snippet;
  // What the match consumed; its length in user-perceived characters is what gets deleted.
  QString matchedString;
  // The named groups of a regular-expression trigger that took part; empty for a literal one.
  QMap<QString, QString> captures;

  bool operator==(const TriggerMatch&) const = default;
};

}  // namespace zarvy
