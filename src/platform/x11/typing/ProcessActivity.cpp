#include "platform/x11/typing/ProcessActivity.h"

#include <chrono>
#include <utility>

#include <QDir>
#include <QFile>

namespace zarvy::x11 {

using namespace Qt::Literals::StringLiterals;

namespace {

// Of all threads together since the last look. A key costs an application more than that.
constexpr qint64 mostRunTimeAtRest =
    std::chrono::nanoseconds(std::chrono::microseconds(150)).count();

QByteArray readFile(const QString& path) {
  QFile file(path);
  if (path.isEmpty() || !file.open(QIODevice::ReadOnly)) return {};
  return file.readAll();
}

// The state is the first field behind the name in parentheses.
char stateIn(const QByteArray& stat) {
  const qsizetype at = stat.lastIndexOf(')') + 2;
  return at < stat.size() ? stat[at] : '\0';
}

}  // namespace

ProcessActivity::ProcessActivity(qint64 processIdentifier) {
  if (processIdentifier > 0) m_folder = u"/proc/%1"_s.arg(processIdentifier);
}

bool ProcessActivity::isResting() {
  if (m_folder.isEmpty()) return true;
  const QString threads = m_folder + u"/task"_s;
  std::map<QByteArray, qint64> runTimes;
  bool allSleep = true;
  qint64 ran = 0;
  for (const QString& thread : QDir(threads).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
    const QString folder = threads + u'/' + thread;
    const char state = stateIn(readFile(folder + u"/stat"_s));
    if (state == '\0') continue;  // it has ended meanwhile
    allSleep = allSleep && state != 'R' && state != 'D';
    // Nanoseconds run, nanoseconds waited for a processor, turns taken.
    const qint64 runTime = readFile(folder + u"/schedstat"_s).split(' ').first().toLongLong();
    const auto before = m_runTimes.find(thread.toLatin1());
    ran += before == m_runTimes.end() ? mostRunTimeAtRest + 1 : runTime - before->second;
    runTimes.emplace(thread.toLatin1(), runTime);
  }
  m_runTimes = std::move(runTimes);
  return allSleep && ran <= mostRunTimeAtRest;
}

bool ProcessActivity::isStopped() const {
  if (m_folder.isEmpty()) return false;
  const char state = stateIn(readFile(m_folder + u"/stat"_s));
  return state == 'T' || state == 't';
}

}  // namespace zarvy::x11
