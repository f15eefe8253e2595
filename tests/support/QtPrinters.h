#pragma once

#include <ostream>

#include <QString>
#include <QStringList>
#include <QUuid>

// How GoogleTest shows Qt's values in a failure. Qt's types live in the global namespace, so these
// do too.

inline void PrintTo(const QString& text, std::ostream* stream) {
  *stream << '"';
  for (const QChar unit : text) {
    if (unit.unicode() >= 0x20 && unit.unicode() < 0x7F) {
      *stream << unit.toLatin1();
    } else {
      *stream << "\\u" << QString::number(unit.unicode(), 16).toStdString() << ' ';
    }
  }
  *stream << '"';
}

inline void PrintTo(const QStringList& texts, std::ostream* stream) {
  *stream << "{ ";
  for (const QString& text : texts) {
    PrintTo(text, stream);
    *stream << ' ';
  }
  *stream << '}';
}

inline void PrintTo(const QByteArray& bytes, std::ostream* stream) {
  *stream << '"' << bytes.toStdString() << '"';
}

inline void PrintTo(const QUuid& uuid, std::ostream* stream) {
  *stream << uuid.toString().toStdString();
}
