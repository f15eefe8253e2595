#pragma once

#include <QLineEdit>

namespace zarvy {

// What is looked for in a list: with the symbol of a search in front, and a button behind that
// empties it while it is not empty.
class SearchField final : public QLineEdit {
  Q_OBJECT

 public:
  // `prompt` stands in it while it is empty, and is its name for a screen reader.
  SearchField(const QString& prompt, QWidget* parent);
};

}  // namespace zarvy
