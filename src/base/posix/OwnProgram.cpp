#include "base/posix/OwnProgram.h"

#include <QFile>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

QString pathOfOwnProgram() {
  return QFile::symLinkTarget(u"/proc/self/exe"_s);
}

}  // namespace zarvy
