#pragma once

#include <optional>
#include <vector>

#include <QList>
#include <QUuid>

#include "core/placeholders/FillInField.h"
#include "ui/controls/Card.h"

namespace zarvy {

class FieldRow;

// The rows of a form.
class FieldList final : public Card {
  Q_OBJECT

 public:
  FieldList(const QList<FillInField>& fields, QWidget* parent);

  // Puts the keyboard where the field of this id is edited.
  void takeFocus(const QUuid& id);
  [[nodiscard]] std::optional<QUuid> focusedFieldID() const;

 Q_SIGNALS:
  void changed(qsizetype index, const zarvy::FillInField& field);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void alignNames();

  std::vector<FieldRow*> m_rows;  // in the order of the fields
};

}  // namespace zarvy
