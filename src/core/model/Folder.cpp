#include "core/model/Folder.h"

#include <utility>

#include "base/json/JsonObjectReader.h"
#include "base/json/JsonScalars.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

FolderColor readColor(JsonObjectReader& reader) {
  const auto color = folderColorFromRawText(reader.string(u"color"));
  if (!color) reader.fail(u"color", u"is not one of the eight colours"_s);
  return color.value_or(FolderColor::blue);
}

}  // namespace

JsonResult<Folder> Folder::fromJson(const QJsonValue& value) {
  JsonObjectReader reader(value);
  Folder folder;
  folder.id = reader.uuid(u"id");
  folder.name = reader.string(u"name");
  folder.color = readColor(reader);
  folder.sortOrder = reader.integer(u"sortOrder");
  return reader.result(std::move(folder));
}

QJsonObject Folder::toJson() const {
  return {{u"id"_s, jsonText(id)},
          {u"name"_s, name},
          {u"color"_s, rawText(color)},
          {u"sortOrder"_s, sortOrder}};
}

size_t qHash(const Folder& folder, size_t seed) noexcept {
  return qHashMulti(seed, folder.id, folder.name, folder.color, folder.sortOrder);
}

}  // namespace zarvy
