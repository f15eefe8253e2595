#pragma once

#include <mutex>

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>

#include "core/model/Snippet.h"

namespace zarvy {

// How often each pattern was too slow. After three times a pattern is left out, until the library
// has it no longer: what else changes in the library does not bring it back. Any thread.
class SlowPatterns {
 public:
  static constexpr int patience = 3;

  // Counts one more time. True for the one after which the pattern is left out.
  [[nodiscard]] bool note(const QString& pattern);

  [[nodiscard]] QSet<QString> leftOut() const;

  // Forgets the patterns that none of these snippets has.
  void keepThoseOf(const QList<Snippet>& regexes);

 private:
  mutable std::mutex m_lock;
  QHash<QString, int> m_times;  // guarded by m_lock, as is what follows
  QSet<QString> m_leftOut;
};

}  // namespace zarvy
