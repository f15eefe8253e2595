#include "platform/x11/typing/ProcessActivity.h"

#include <QByteArray>
#include <QFile>

namespace zarvy::x11 {

using namespace Qt::Literals::StringLiterals;

namespace {

// The fields of /proc/PID/task/TID/stat behind the name in parentheses, from 0.
constexpr qsizetype stateField = 0;
constexpr qsizetype userTimeField = 11;
constexpr qsizetype systemTimeField = 12;

}  // namespace

ProcessActivity::ProcessActivity(qint64 processIdentifier) {
  if (processIdentifier > 0) {
    m_statFile = u"/proc/%1/task/%1/stat"_s.arg(processIdentifier);
  }
}

bool ProcessActivity::isResting() {
  QFile file(m_statFile);
  if (m_statFile.isEmpty() || !file.open(QIODevice::ReadOnly)) return true;
  const QByteArray line = file.readAll();
  const QList<QByteArray> fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
  if (fields.size() <= systemTimeField) return true;
  const QByteArray times = fields[userTimeField] + ' ' + fields[systemTimeField];
  const bool rested = fields[stateField] == "S" && times == m_lastTimes;
  m_lastTimes = times;
  return rested;
}

}  // namespace zarvy::x11
