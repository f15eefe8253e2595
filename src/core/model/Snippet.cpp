#include "core/model/Snippet.h"

#include <utility>

#include "base/json/JsonObjectReader.h"
#include "base/json/JsonScalars.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

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
  JsonObjectReader reader(value);
  Snippet snippet;
  snippet.id = reader.uuid(u"id");
  snippet.title = reader.string(u"title");
  snippet.trigger = reader.string(u"trigger");
  snippet.replacement = reader.string(u"replacement");
  snippet.folderID = reader.optionalUuid(u"folderID");
  snippet.createdAt = reader.instant(u"createdAt");
  snippet.modifiedAt = reader.instant(u"modifiedAt");
  snippet.isRegexTrigger = reader.boolean(u"isRegexTrigger", false);
  return reader.result(std::move(snippet));
}

QJsonObject Snippet::toJson() const {
  QJsonObject object{{u"id"_s, jsonText(id)},
                     {u"title"_s, title},
                     {u"trigger"_s, trigger},
                     {u"replacement"_s, replacement},
                     {u"createdAt"_s, jsonText(createdAt)},
                     {u"modifiedAt"_s, jsonText(modifiedAt)},
                     {u"isRegexTrigger"_s, isRegexTrigger}};
  if (folderID) object.insert(u"folderID"_s, jsonText(*folderID));
  return object;
}

size_t qHash(const Snippet& snippet, size_t seed) noexcept {
  seed = qHashMulti(seed, snippet.id, snippet.title, snippet.trigger, snippet.replacement);
  seed = snippet.folderID ? qHashMulti(seed, quint8{1}, *snippet.folderID)
                          : qHashMulti(seed, quint8{0});
  return qHashMulti(seed, snippet.createdAt, snippet.modifiedAt, snippet.isRegexTrigger);
}

}  // namespace zarvy
