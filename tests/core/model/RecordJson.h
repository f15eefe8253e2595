#pragma once

#include <string>

#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <gtest/gtest.h>

#include "base/json/JsonText.h"
#include "support/QtPrinters.h"

namespace zarvy {

// How a record's decoder takes each key: `complete` is an object that decodes. Every row of a
// table changes one key of it.
struct KeyCase {
  QString key;
  QJsonValue value;  // Undefined takes the key out
  bool isAccepted;
};

template <typename Record>
void expectDecoding(const QJsonObject& complete, const KeyCase& keyCase) {
  QJsonObject object = complete;
  if (keyCase.value.isUndefined()) {
    object.remove(keyCase.key);
  } else {
    object.insert(keyCase.key, keyCase.value);
  }
  SCOPED_TRACE(writeJson(object).toStdString());
  const JsonResult<Record> result = Record::fromJson(object);
  EXPECT_EQ(result.hasValue(), keyCase.isAccepted);
  if (!result) {
    EXPECT_TRUE(result.error().description().contains(u'"' + keyCase.key + u'"'));
  }
}

}  // namespace zarvy
