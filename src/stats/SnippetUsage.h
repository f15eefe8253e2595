#pragma once

#include <QString>
#include <QUuid>

namespace zarvy {

// How often a snippet was used in a period, under the name that it had at the first use. Never
// stored.
struct SnippetUsage {
  QUuid snippetID;
  QString title;
  QString trigger;
  qint64 count = 0;

  [[nodiscard]] QUuid id() const { return snippetID; }

  bool operator==(const SnippetUsage&) const = default;
};

}  // namespace zarvy
