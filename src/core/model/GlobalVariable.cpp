#include "core/model/GlobalVariable.h"

#include <utility>

#include "base/json/JsonObjectReader.h"
#include "base/json/JsonScalars.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

JsonResult<GlobalVariable> GlobalVariable::fromJson(const QJsonValue& value) {
  JsonObjectReader reader(value);
  GlobalVariable variable;
  variable.id = reader.uuid(u"id");
  variable.name = reader.string(u"name");
  variable.value = reader.string(u"value");
  variable.createdAt = reader.instant(u"createdAt");
  variable.modifiedAt = reader.instant(u"modifiedAt");
  return reader.result(std::move(variable));
}

QJsonObject GlobalVariable::toJson() const {
  return {{u"id"_s, jsonText(id)},
          {u"name"_s, name},
          {u"value"_s, value},
          {u"createdAt"_s, jsonText(createdAt)},
          {u"modifiedAt"_s, jsonText(modifiedAt)}};
}

size_t qHash(const GlobalVariable& variable, size_t seed) noexcept {
  return qHashMulti(seed, variable.id, variable.name, variable.value, variable.createdAt,
                    variable.modifiedAt);
}

}  // namespace zarvy
