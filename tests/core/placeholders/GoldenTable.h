#pragma once

#include <string>
#include <vector>

#include <QMap>
#include <QStringList>

namespace zarvy {

// A table of a Markdown document: its rows, and the "Given" lines of its section.
struct GoldenRow {
  std::string place;             // "file.md:12"
  QMap<QString, QString> cells;  // by the heading of the column

  [[nodiscard]] QString cell(const QString& heading) const { return cells.value(heading); }
};

struct GoldenSection {
  QString title;
  QList<QStringList> givens;  // the words between the marks, and what stands between the marks
  std::vector<GoldenRow> rows;
};

// Reads the document at `path`. Throws std::runtime_error where it cannot be read, or a row has not
// as many cells as its heading.
[[nodiscard]] std::vector<GoldenSection> readGoldenTables(const QString& path);

}  // namespace zarvy
