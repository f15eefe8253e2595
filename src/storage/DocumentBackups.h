#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

#include "base/LineOutput.h"

namespace zarvy {

// Keeps what the documents of a folder were before this program wrote them: whole sets of copies,
// in folders of the folder "Backups" among the documents. A set is named by its day, or by its
// second and its reason, so that the names are in the order of time. It is there whole or not at
// all, whenever the program is killed. Same thread rules as DataStore.
//
// Copies, not links: an editor that writes into a document would write into its backup. One that
// cannot be read, and is about to be replaced, is linked.
class DocumentBackups {
 public:
  struct Limits {
    qsizetype sets = 10;
    // Of all sets together; the newest one is kept however large it is.
    qint64 bytes = 256LL * 1024 * 1024;
  };

  // `names` are those of the documents.
  DocumentBackups(QStringList names, LineOutput& output, Limits limits);
  DocumentBackups(QStringList names, LineOutput& output)
      : DocumentBackups(std::move(names), output, Limits{}) {}

  // A document could not be read, so that it will be written over with something else: the next set
  // is kept though this day has one.
  void foundUnreadable() { m_foundUnreadable = true; }

  // To be called before each write to a document of `folder`. Keeps a set before the first one of a
  // day that has none, and before the first one that follows an unreadable document. Prints a line
  // where that fails, and keeps nothing; the write is not held up by it.
  void beforeWrite(const QString& folder, const QDateTime& now);

  // To be called before a sync replaces the library. Keeps a set.
  void beforeSync(const QString& folder, const QDateTime& now);

 private:
  enum class Reason { unreadable, other };
  [[nodiscard]] bool keep(const QString& folder, const QString& setName, Reason reason) const;

  const QStringList m_names;
  LineOutput& m_output;
  const Limits m_limits;
  QDate m_lastDay;  // of a write; of Greenwich
  bool m_foundUnreadable = false;
};

}  // namespace zarvy
