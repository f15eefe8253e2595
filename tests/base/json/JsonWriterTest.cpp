#include <QJsonArray>
#include <QJsonObject>

#include <gtest/gtest.h>

#include "base/json/JsonText.h"
#include "base/json/JsonWriter.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

TEST(JsonWriter, WritesAnArrayByElementsAsItWritesTheWhole) {
  const QJsonArray arrays[] = {
      {},
      {u"a/b"_s},
      {1, QJsonArray(), QJsonObject(), QJsonValue::Null},
      {QJsonObject{{u"b"_s, QJsonArray{1, 2}}, {u"a"_s, true}}, QJsonArray{QJsonArray{0.5}}}};
  for (const QJsonArray& array : arrays) {
    JsonWriter writer;
    writer.beginArray();
    for (const QJsonValue element : array) writer.addElement(element);
    writer.endArray();
    EXPECT_EQ(writer.take(), writeJson(array));
  }
}

}  // namespace
}  // namespace zarvy
