#include "core/model/ExpansionEvent.h"

#include "base/json/JsonRecord.h"

namespace zarvy {
namespace {

constexpr std::tuple expansionEventFields{
    jsonField(u"id", &ExpansionEvent::id),
    jsonField(u"snippetID", &ExpansionEvent::snippetID),
    jsonField(u"snippetTrigger", &ExpansionEvent::snippetTrigger),
    jsonField(u"snippetTitle", &ExpansionEvent::snippetTitle),
    jsonField(u"triggerLength", &ExpansionEvent::triggerLength),
    jsonField(u"expansionLength", &ExpansionEvent::expansionLength),
    jsonField(u"timestamp", &ExpansionEvent::timestamp),
    jsonField(u"hourOfDay", &ExpansionEvent::hourOfDay),
    jsonField(u"dayOfWeek", &ExpansionEvent::dayOfWeek),
};

}  // namespace

JsonResult<ExpansionEvent> ExpansionEvent::fromJson(const QJsonValue& value) {
  return recordFromJson<ExpansionEvent>(value, expansionEventFields);
}

QJsonObject ExpansionEvent::toJson() const {
  return recordToJson(*this, expansionEventFields);
}

}  // namespace zarvy
