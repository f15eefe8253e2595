#pragma once

#include <optional>
#include <vector>

#include <QList>
#include <QUuid>
#include <QWidget>

#include "core/placeholders/FillInField.h"

class QVBoxLayout;

namespace zarvy {

class FieldRow;

// The rows of a form, one under the other, on a card with lines between them.
class FieldList final : public QWidget {
  Q_OBJECT

 public:
  FieldList(const QList<FillInField>& fields, QWidget* parent);

  // Puts the keyboard where the field of this id is edited.
  void takeFocus(const QUuid& id);
  [[nodiscard]] std::optional<QUuid> focusedFieldID() const;

 Q_SIGNALS:
  void changed(qsizetype index, const zarvy::FillInField& field);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void alignNames();

  std::vector<FieldRow*> m_rows;  // in the order of the fields
};

}  // namespace zarvy
