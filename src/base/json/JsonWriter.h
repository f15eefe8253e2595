#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QStringEncoder>
#include <QStringView>

namespace zarvy {

// Writes one document in the form that JsonText.h tells: either a whole value, or an array element
// by element, which spares a long document the tree of its whole content.
class JsonWriter {
 public:
  void writeValue(const QJsonValue& value) { writeValue(value, 0); }

  void beginArray() { m_text += '['; }
  void addElement(const QJsonValue& element);
  void endArray();

  // What was written.
  [[nodiscard]] QByteArray take();

 private:
  void writeValue(const QJsonValue& value, qsizetype level);
  void writeArray(const QJsonArray& array, qsizetype level);
  void writeObject(const QJsonObject& object, qsizetype level);
  void beginMember(bool isFirst, qsizetype level);
  void close(char bracket, bool isEmpty, qsizetype level);
  void writeNumber(const QJsonValue& value);
  void writeString(QStringView string);
  void writePlain(QStringView string);

  QByteArray m_text;
  bool m_isFirstElement = true;
  QStringEncoder m_utf8{QStringEncoder::Utf8, QStringEncoder::Flag::Stateless};
};

}  // namespace zarvy
