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
bool sleeps(const QByteArray& stat) {
  return stat.mid(stat.lastIndexOf(')') + 2).startsWith('S');
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
  const bool rested = sleeps(stat) && schedule == m_lastSchedule;
  m_lastSchedule = schedule;
  return rested;
}

}  // namespace zarvy::x11
