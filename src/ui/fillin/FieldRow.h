#pragma once

#include <QWidget>

#include "core/placeholders/FillInField.h"

class QVBoxLayout;

namespace zarvy {

class ElidedLabel;

// One field of the form: its name, its input and what belongs to it.
class FieldRow final : public QWidget {
  Q_OBJECT

 public:
  FieldRow(const FillInField& field, QWidget* parent);

  // As the user has left it.
  [[nodiscard]] const FillInField& field() const { return m_field; }

  // Gives it the keyboard, with its text selected, so that what is typed replaces that.
  void takeFocus();
  [[nodiscard]] bool hasFocusInside() const;

  // The width that the name wants where it stands beside the input; 0 where it does not.
  [[nodiscard]] int nameWidth() const;
  void setNameWidth(int width);

 Q_SIGNALS:
  void changed();

 private:
  void addText(QVBoxLayout& column);
  void addTextArea(QVBoxLayout& column);
  void addDropdown(QVBoxLayout& column);
  void addSection(QVBoxLayout& column);
  void addBesideName(QVBoxLayout& column, QWidget& input);
  void addRemember(QVBoxLayout& column);
  void adopt(QWidget& input);
  [[nodiscard]] QWidget* makeStar();
  void setValue(const QString& value);

  FillInField m_field;
  QWidget* m_input = nullptr;
  ElidedLabel* m_nameBeside = nullptr;  // null where the name does not stand beside the input
  QWidget* m_indent = nullptr;          // keeps what is below the input in line with it
};

}  // namespace zarvy
