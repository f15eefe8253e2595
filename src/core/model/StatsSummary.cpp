#include "core/model/StatsSummary.h"

#include "base/json/JsonRecord.h"

namespace zarvy {
namespace {

constexpr std::tuple statsSummaryFields{
    jsonField(u"totalExpansions", &StatsSummary::totalExpansions),
    jsonField(u"totalCharactersSaved", &StatsSummary::totalCharactersSaved),
    jsonField(u"totalTimeSavedSeconds", &StatsSummary::totalTimeSavedSeconds),
    jsonField(u"firstExpansionDate", &StatsSummary::firstExpansionDate),
};

}  // namespace

JsonResult<StatsSummary> StatsSummary::fromJson(const QJsonValue& value) {
  return recordFromJson<StatsSummary>(value, statsSummaryFields);
}

QJsonObject StatsSummary::toJson() const {
  return recordToJson(*this, statsSummaryFields);
}

}  // namespace zarvy
