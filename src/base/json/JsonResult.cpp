#include "base/json/JsonResult.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

QString JsonError::description() const {
  return place.isEmpty() ? cause : place + u' ' + cause;
}

JsonError JsonError::inside(const QString& outerPlace) const {
  return {place.isEmpty() ? outerPlace : outerPlace + u", "_s + place, cause};
}

}  // namespace zarvy
