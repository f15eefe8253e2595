#pragma once

#include <QPlainTextEdit>

namespace zarvy {

// An input of several lines, without a frame of its own. Tab leaves it, Return begins a new line.
class MultiLineEditor final : public QPlainTextEdit {
  Q_OBJECT

 public:
  MultiLineEditor(const QString& value, QWidget* parent);

  // The text with line feeds, otherwise as it was typed.
  [[nodiscard]] QString value() const;

  // With the caret at the beginning, which stays in sight.
  void selectAllFromTheEnd();

 Q_SIGNALS:
  void edited();
};

}  // namespace zarvy
