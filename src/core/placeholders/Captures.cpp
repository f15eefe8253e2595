#include "core/placeholders/Captures.h"

#include "core/placeholders/Replacement.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

QString applyCaptures(const QString& text, const QMap<QString, QString>& captures) {
  ExpansionLimit limit;
  QString result = text;
  for (auto capture = captures.cbegin(); capture != captures.cend(); ++capture) {
    replaceLiteral(result, u"{{"_s + capture.key() + u"}}"_s, capture.value(), limit);
  }
  return result;
}

}  // namespace zarvy
