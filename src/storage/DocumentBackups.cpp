#include "storage/DocumentBackups.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <unistd.h>
#include <utility>
#include <vector>

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include "storage/PrivateFolder.h"
#include "storage/ReadFile.h"
#include "storage/ReplaceFile.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

namespace fs = std::filesystem;

const QString& unfinishedName() {
  static const QString name = u".unfinished"_s;
  return name;
}

// Other files in the folder are left alone.
bool isSet(const fs::directory_entry& entry) {
  static const QRegularExpression names(QRegularExpression::anchoredPattern(
      uR"(\d{4}-\d\d-\d\d(T\d{6}Z (unreadable|before sync))?)"_s));
  const QString name = QFile::decodeName(entry.path().filename().c_str());
  return entry.is_directory() && !entry.is_symlink() && names.match(name).hasMatch();
}

// The newest first.
std::vector<fs::path> setsIn(const fs::path& backups) {
  std::vector<fs::path> sets;
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(backups, error)) {
    if (isSet(entry)) sets.push_back(entry.path());
  }
  std::sort(sets.begin(), sets.end(), std::greater<>());
  return sets;
}

qint64 sizeOf(const fs::path& set) {
  qint64 size = 0;
  std::error_code error;
  for (const fs::directory_entry& file : fs::directory_iterator(set, error)) {
    const std::uintmax_t bytes = file.file_size(error);
    if (!error) size += static_cast<qint64>(bytes);
  }
  return size;
}

void removeOldest(const fs::path& backups, const DocumentBackups::Limits& limits) {
  qsizetype kept = 0;
  qint64 bytes = 0;
  for (const fs::path& set : setsIn(backups)) {
    const bool isNewest = kept == 0;
    const qint64 size = sizeOf(set);
    std::error_code error;
    if (isNewest || (kept < limits.sets && bytes + size <= limits.bytes)) {
      ++kept;
      bytes += size;
    } else {
      fs::remove_all(set, error);
    }
  }
}

// What cannot be read gets a second name among the copies, and loses its first one when it is
// replaced. A symbolic link is moved, since what it leads to stays.
bool keepAsItIs(const QString& place, const QString& kept) {
  const bool isLinked =
      !QFileInfo(place).isSymLink() &&
      ::link(QFile::encodeName(place).constData(), QFile::encodeName(kept).constData()) == 0;
  return isLinked || QFile::rename(place, kept);
}

QString second(const QDateTime& now) {
  return now.toUTC().toString(u"yyyy-MM-dd'T'HHmmss'Z'"_s);
}

}  // namespace

DocumentBackups::DocumentBackups(QStringList names, LineOutput& output, Limits limits)
    : m_names(std::move(names)), m_output(output), m_limits(limits) {}

void DocumentBackups::beforeWrite(const QString& folder, const QDateTime& now) {
  const QDate day = now.toUTC().date();
  const bool isFirst = std::exchange(m_lastDay, day) != day;
  if (m_foundUnreadable) {
    m_foundUnreadable = !keep(folder, second(now) + u" unreadable"_s, Reason::unreadable);
  } else if (isFirst) {
    static_cast<void>(keep(folder, now.toUTC().toString(u"yyyy-MM-dd"_s), Reason::other));
  }
}

void DocumentBackups::beforeSync(const QString& folder, const QDateTime& now) {
  static_cast<void>(keep(folder, second(now) + u" before sync"_s, Reason::other));
}

// The set is made under another name and renamed once all of it is on the disk.
bool DocumentBackups::keep(const QString& folder, const QString& setName, Reason reason) const {
  const QString backups = folder + u"/Backups"_s;
  const QString set = backups + u'/' + setName;
  const QString unfinished = backups + u'/' + unfinishedName();
  if (QFile::exists(set)) return true;
  QStringList present;
  std::copy_if(m_names.begin(), m_names.end(), std::back_inserter(present),
               [&](const QString& name) { return QFileInfo(folder + u'/' + name).isFile(); });
  if (present.isEmpty()) return true;
  std::error_code ignored;
  fs::remove_all(QFile::encodeName(unfinished).toStdString(), ignored);
  const auto fail = [&](const QString& error) {
    m_output.print(u"Error keeping a backup: "_s + error);
    return false;
  };
  for (const QString& made : {backups, unfinished}) {
    if (const auto error = makePrivateFolder(made)) return fail(*error);
  }
  for (const QString& name : std::as_const(present)) {
    const QString place = folder + u'/' + name;
    const QString kept = unfinished + u'/' + name;
    const auto content = readFile(place);
    if (!content && reason == Reason::unreadable && keepAsItIs(place, kept)) continue;
    const auto error = content ? replaceFile(kept, content.value()) : content.error().description();
    if (error) return fail(name + u": "_s + *error);
  }
  if (const auto error = synchronizeFolder(unfinished)) return fail(*error);
  if (!QFile::rename(unfinished, set)) return fail(setName);
  if (const auto error = synchronizeFolder(backups)) return fail(*error);
  removeOldest(QFile::encodeName(backups).toStdString(), m_limits);
  return true;
}

}  // namespace zarvy
