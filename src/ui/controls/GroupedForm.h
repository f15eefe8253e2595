#pragma once

#include <QWidget>

class QVBoxLayout;

namespace zarvy {

class FormSection;

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
