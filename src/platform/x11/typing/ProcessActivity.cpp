#include "platform/x11/typing/ProcessActivity.h"

#include <QByteArray>
#include <QFile>

namespace zarvy::x11 {

using namespace Qt::Literals::StringLiterals;

namespace {

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
  if (processIdentifier > 0) m_folder = u"/proc/%1/task/%1"_s.arg(processIdentifier);
}

bool ProcessActivity::isResting() {
  if (m_folder.isEmpty()) return true;
  const QByteArray stat = readFile(m_folder + u"/stat"_s);
  if (stat.isEmpty()) return true;  // it has gone
  // Nanoseconds run, nanoseconds waited for a processor, turns taken: none of them moves in a
  // thread that sleeps on.
  const QByteArray schedule = readFile(m_folder + u"/schedstat"_s);
  const bool rested = stateIn(stat) == 'S' && schedule == m_lastSchedule;
  m_lastSchedule = schedule;
  return rested;
}

bool ProcessActivity::isStopped() const {
  if (m_folder.isEmpty()) return false;
  const char state = stateIn(readFile(m_folder + u"/stat"_s));
  return state == 'T' || state == 't';
}

}  // namespace zarvy::x11
