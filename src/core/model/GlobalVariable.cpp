#include "core/model/GlobalVariable.h"

#include "base/json/JsonRecord.h"

namespace zarvy {
namespace {

constexpr std::tuple globalVariableFields{
    jsonField(u"id", &GlobalVariable::id),
    jsonField(u"name", &GlobalVariable::name),
    jsonField(u"value", &GlobalVariable::value),
    jsonField(u"createdAt", &GlobalVariable::createdAt),
    jsonField(u"modifiedAt", &GlobalVariable::modifiedAt),
};

}  // namespace

JsonResult<GlobalVariable> GlobalVariable::fromJson(const QJsonValue& value) {
  return recordFromJson<GlobalVariable>(value, globalVariableFields);
}

QJsonObject GlobalVariable::toJson() const {
  return recordToJson(*this, globalVariableFields);
}

size_t qHash(const GlobalVariable& variable, size_t seed) noexcept {
  return recordHash(variable, globalVariableFields, seed);
}

}  // namespace zarvy
