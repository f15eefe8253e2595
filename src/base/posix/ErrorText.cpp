#include "base/posix/ErrorText.h"

#include <cerrno>
#include <system_error>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

QString textOfError(int error) {
  switch (error) {
    case EACCES:
      return u"Permission denied"_s;
    case EMFILE:
      return u"Too many open files"_s;
    case ENOENT:
      return u"No such file or directory"_s;
    case ENOSPC:
      return u"No space left on device"_s;
    default:
      return QString::fromLocal8Bit(std::generic_category().message(error));
  }
}

}  // namespace zarvy
