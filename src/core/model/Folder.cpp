#include "core/model/Folder.h"

#include <algorithm>

#include "base/json/JsonRecord.h"
#include "core/model/Snippet.h"

namespace zarvy {

static void readMember(JsonObjectReader& reader, QStringView key, FolderColor& color) {
  const auto known = folderColorFromRawText(reader.string(key));
  if (!known) reader.fail(key, QStringLiteral("is not one of the eight colours"));
  color = known.value_or(FolderColor::blue);
}

static QJsonValue jsonValue(FolderColor color) {
  return rawText(color);
}

namespace {

constexpr std::tuple folderFields{
    jsonField(u"id", &Folder::id),
    jsonField(u"name", &Folder::name),
    jsonField(u"color", &Folder::color),
    jsonField(u"sortOrder", &Folder::sortOrder),
};

}  // namespace

JsonResult<Folder> Folder::fromJson(const QJsonValue& value) {
  return recordFromJson<Folder>(value, folderFields);
}

QJsonObject Folder::toJson() const {
  return recordToJson(*this, folderFields);
}

size_t qHash(const Folder& folder, size_t seed) noexcept {
  return recordHash(folder, folderFields, seed);
}

FolderColor folderColorOf(const Snippet& snippet, const QList<Folder>& folders) {
  const auto found = std::find_if(folders.begin(), folders.end(), [&](const Folder& folder) {
    return folder.id == snippet.folderID;
  });
  return found == folders.end() ? FolderColor::gray : found->color;
}

}  // namespace zarvy
