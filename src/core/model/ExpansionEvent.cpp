#include "core/model/ExpansionEvent.h"

#include <utility>

#include "base/json/JsonObjectReader.h"
#include "base/json/JsonScalars.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

JsonResult<ExpansionEvent> ExpansionEvent::fromJson(const QJsonValue& value) {
  JsonObjectReader reader(value);
  ExpansionEvent event;
  event.id = reader.uuid(u"id");
  event.snippetID = reader.uuid(u"snippetID");
  event.snippetTrigger = reader.string(u"snippetTrigger");
  event.snippetTitle = reader.string(u"snippetTitle");
  event.triggerLength = reader.integer(u"triggerLength");
  event.expansionLength = reader.integer(u"expansionLength");
  event.timestamp = reader.instant(u"timestamp");
  event.hourOfDay = reader.integer(u"hourOfDay");
  event.dayOfWeek = reader.integer(u"dayOfWeek");
  return reader.result(std::move(event));
}

QJsonObject ExpansionEvent::toJson() const {
  return {{u"id"_s, jsonText(id)},
          {u"snippetID"_s, jsonText(snippetID)},
          {u"snippetTrigger"_s, snippetTrigger},
          {u"snippetTitle"_s, snippetTitle},
          {u"triggerLength"_s, triggerLength},
          {u"expansionLength"_s, expansionLength},
          {u"timestamp"_s, jsonText(timestamp)},
          {u"hourOfDay"_s, hourOfDay},
          {u"dayOfWeek"_s, dayOfWeek}};
}

}  // namespace zarvy
