#pragma once

#include <QGroupBox>
#include <QString>
#include <QWidget>

class QVBoxLayout;

namespace zarvy {

// Rows of a form that belong together, under a title.
class FormSection final : public QGroupBox {
  Q_OBJECT

 public:
  FormSection(const QString& title, QWidget* parent);

  // Takes `row` over, which is as wide as the section.
  void addRow(QWidget& row);

  // `label` at the left, with `caption` below it where there is one, and `control`, which they
  // name and describe for a screen reader, at the right. Takes `control` over.
  void addRow(const QString& label, QWidget& control, const QString& caption = {});

 private:
  QVBoxLayout* m_column;
};

// Settings and the like: sections one under the other.
class GroupedForm final : public QWidget {
  Q_OBJECT

 public:
  explicit GroupedForm(QWidget* parent = nullptr);

  FormSection& addSection(const QString& title);

 private:
  QVBoxLayout* m_column;
};

}  // namespace zarvy
