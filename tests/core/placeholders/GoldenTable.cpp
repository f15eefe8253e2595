#include "core/placeholders/GoldenTable.h"

#include <stdexcept>

#include <QFile>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

QString unescaped(QStringView text) {
  QString result;
  for (qsizetype position = 0; position < text.size(); ++position) {
    if (text[position] != u'\\' || position + 1 == text.size()) {
      result += text[position];
      continue;
    }
    const QChar kind = text[++position];
    if (kind == u'u' && text.sliced(position).startsWith(u"u{")) {
      const qsizetype end = text.indexOf(u'}', position);
      const char32_t codePoint = text.sliced(position + 2, end - position - 2).toUInt(nullptr, 16);
      // One at a time, so that the number of a surrogate gives a lone one.
      if (codePoint > 0xFFFF) {
        result += QChar(QChar::highSurrogate(codePoint));
        result += QChar(QChar::lowSurrogate(codePoint));
      } else {
        result += QChar(static_cast<char16_t>(codePoint));
      }
      position = end;
    } else if (kind == u'n') {
      result += u'\n';
    } else if (kind == u'r') {
      result += u'\r';
    } else if (kind == u't') {
      result += u'\t';
    } else {
      result += kind;
    }
  }
  return result;
}

// Blanks around a cell do not count, those inside its marks do.
QString cellText(QStringView cell) {
  QStringView text = cell.trimmed();
  if (text.size() >= 2 && text.startsWith(u'`') && text.endsWith(u'`')) {
    text = text.sliced(1).chopped(1);
  }
  return unescaped(text);
}

QStringList cellsOf(const QString& line) {
  QStringList cells;
  qsizetype start = 1;
  for (qsizetype position = 1; position < line.size(); ++position) {
    if (line[position] == u'\\') {
      ++position;
    } else if (line[position] == u'|') {
      cells.append(cellText(QStringView(line).sliced(start, position - start)));
      start = position + 1;
    }
  }
  return cells;
}

// "the variable `City` with `Paris`" gives the words "the variable with", then City and Paris.
QStringList givenOf(const QString& line) {
  const QStringList parts = line.split(u'`');
  QStringList words;
  QStringList values;
  for (qsizetype index = 0; index < parts.size(); ++index) {
    const bool isValue = index % 2 == 1;
    if (isValue) {
      values.append(unescaped(parts.at(index)));
    } else if (!parts.at(index).trimmed().isEmpty()) {
      words.append(parts.at(index).trimmed());
    }
  }
  return QStringList{words.join(u' ')} + values;
}

class Reader {
 public:
  explicit Reader(const QString& path) : m_file(QFileInfo(path).fileName()) {}

  void read(const QString& line) {
    ++m_number;
    if (line.startsWith(u"## ")) {
      m_sections.push_back({line.sliced(3), {}, {}});
    } else if (line.startsWith(u"Given ") && !m_sections.empty()) {
      m_sections.back().givens.append(givenOf(line.sliced(6)));
    } else if (line.startsWith(u'|')) {
      readTableLine(line);
      return;
    }
    m_headings.clear();
  }

  std::vector<GoldenSection> take() { return std::move(m_sections); }

 private:
  void readTableLine(const QString& line) {
    const QStringList cells = cellsOf(line);
    if (m_headings.isEmpty()) {
      m_headings = cells;
      return;
    }
    if (line.startsWith(u"|---")) return;
    GoldenRow row{m_file.toStdString() + ':' + std::to_string(m_number), {}};
    if (cells.size() != m_headings.size() || m_sections.empty()) {
      throw std::runtime_error(row.place + ": not as many cells as headings");
    }
    for (qsizetype column = 0; column < cells.size(); ++column) {
      row.cells.insert(m_headings.at(column), cells.at(column));
    }
    m_sections.back().rows.push_back(std::move(row));
  }

  QString m_file;
  int m_number = 0;
  QStringList m_headings;
  std::vector<GoldenSection> m_sections;
};

}  // namespace

std::vector<GoldenSection> readGoldenTables(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
    throw std::runtime_error("cannot read " + path.toStdString());
  Reader reader(path);
  for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n')) reader.read(line);
  return reader.take();
}

}  // namespace zarvy
