#include "base/posix/OwnProcess.h"

#include <pthread.h>
#include <sys/prctl.h>

#include <QFile>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

QString pathOfOwnProgram() {
  return QFile::symLinkTarget(u"/proc/self/exe"_s);
}

void keepMemoryPrivate() {
  ::prctl(PR_SET_DUMPABLE, 0, 0, 0, 0);
}

void nameThisThread(const std::string& name) {
  constexpr std::size_t longestName = 15;
  pthread_setname_np(pthread_self(), name.substr(0, longestName).c_str());
}

}  // namespace zarvy
