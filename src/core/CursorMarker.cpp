#include "core/CursorMarker.h"

#include "base/text/Graphemes.h"
#include "core/placeholders/Replacement.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

ExpandedText resolveCursorMarker(const QString& text) {
  const QString marker = u"{{cursor}}"_s;
  const qsizetype start = text.indexOf(marker);
  if (start < 0) return {text, std::nullopt};
  const QStringView behind = QStringView(text).sliced(start + marker.size());
  const qsizetype offset = graphemeCount(behind);
  QString withoutMarkers = text;
  ExpansionLimit limit;
  replaceLiteral(withoutMarkers, marker, {}, limit);
  return {withoutMarkers, offset};
}

}  // namespace zarvy
