#include "core/model/StatsSummary.h"

#include "base/json/JsonObjectReader.h"
#include "base/json/JsonScalars.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

JsonResult<StatsSummary> StatsSummary::fromJson(const QJsonValue& value) {
  JsonObjectReader reader(value);
  StatsSummary summary;
  summary.totalExpansions = reader.integer(u"totalExpansions");
  summary.totalCharactersSaved = reader.integer(u"totalCharactersSaved");
  summary.totalTimeSavedSeconds = reader.number(u"totalTimeSavedSeconds");
  summary.firstExpansionDate = reader.optionalInstant(u"firstExpansionDate");
  return reader.result(summary);
}

QJsonObject StatsSummary::toJson() const {
  QJsonObject object{{u"totalExpansions"_s, totalExpansions},
                     {u"totalCharactersSaved"_s, totalCharactersSaved},
                     {u"totalTimeSavedSeconds"_s, totalTimeSavedSeconds}};
  if (firstExpansionDate) object.insert(u"firstExpansionDate"_s, jsonText(*firstExpansionDate));
  return object;
}

}  // namespace zarvy
