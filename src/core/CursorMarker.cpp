#include "core/CursorMarker.h"

#include "base/text/Graphemes.h"
#include "core/placeholders/Openers.h"
#include "core/placeholders/Replacement.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

ExpandedText resolveCursorMarker(const QString& text) {
  const qsizetype start = text.indexOf(literal::cursor);
  if (start < 0) return {text, std::nullopt};
  const QStringView behind = QStringView(text).sliced(start + literal::cursor.size());
  const qsizetype offset = graphemeCount(behind);
  QString withoutMarkers = text;
  ExpansionLimit limit;
  replaceLiteral(withoutMarkers, literal::cursor, {}, limit);
  return {withoutMarkers, offset};
}

}  // namespace zarvy
