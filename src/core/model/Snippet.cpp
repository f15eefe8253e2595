#include "core/model/Snippet.h"

#include <utility>

#include "base/json/JsonRecord.h"

namespace zarvy {
namespace {

constexpr std::tuple snippetFields{
    jsonField(u"id", &Snippet::id),
    jsonField(u"title", &Snippet::title),
    jsonField(u"trigger", &Snippet::trigger),
    jsonField(u"replacement", &Snippet::replacement),
    jsonField(u"folderID", &Snippet::folderID),
    jsonField(u"createdAt", &Snippet::createdAt),
    jsonField(u"modifiedAt", &Snippet::modifiedAt),
    jsonFieldWithDefault(u"isRegexTrigger", &Snippet::isRegexTrigger),
};

}  // namespace

Snippet Snippet::create(QString title, QString trigger, QString replacement, const Clock& clock,
                        std::optional<QUuid> folderID) {
  return {.id = QUuid::createUuid(),
          .title = std::move(title),
          .trigger = std::move(trigger),
          .replacement = std::move(replacement),
          .folderID = folderID,
          .createdAt = clock.now(),
          .modifiedAt = clock.now()};
}

JsonResult<Snippet> Snippet::fromJson(const QJsonValue& value) {
  return recordFromJson<Snippet>(value, snippetFields);
}

QJsonObject Snippet::toJson() const {
  return recordToJson(*this, snippetFields);
}

size_t qHash(const Snippet& snippet, size_t seed) noexcept {
  return recordHash(snippet, snippetFields, seed);
}

}  // namespace zarvy
