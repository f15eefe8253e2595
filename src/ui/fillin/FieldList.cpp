#include "ui/fillin/FieldList.h"

#include <algorithm>

#include <QEvent>

#include "ui/fillin/FieldRow.h"

namespace zarvy {
namespace {

constexpr double greatestNameShare = 0.36;

}  // namespace

FieldList::FieldList(const QList<FillInField>& fields, QWidget* parent) : Card(parent) {
  m_rows.reserve(static_cast<std::size_t>(fields.size()));
  for (const FillInField& field : fields) {
    auto* const row = new FieldRow(field, this);
    const qsizetype index = static_cast<qsizetype>(m_rows.size());
    connect(row, &FieldRow::changed, this,
            [this, row, index] { Q_EMIT changed(index, row->field()); });
    addRow(*row);
    m_rows.push_back(row);
  }
}

void FieldList::takeFocus(const QUuid& id) {
  const auto found = std::find_if(m_rows.begin(), m_rows.end(),
                                  [&id](const FieldRow* row) { return row->field().id == id; });
  if (found != m_rows.end()) (*found)->takeFocus();
}

std::optional<QUuid> FieldList::focusedFieldID() const {
  const auto found = std::find_if(m_rows.begin(), m_rows.end(),
                                  [](const FieldRow* row) { return row->hasFocusInside(); });
  return found == m_rows.end() ? std::nullopt : std::optional((*found)->field().id);
}

void FieldList::resizeEvent(QResizeEvent* event) {
  Card::resizeEvent(event);
  alignNames();
}

void FieldList::changeEvent(QEvent* event) {
  Card::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) alignNames();
}

// The inputs stand in one column, as far left as the longest name of a usual length allows.
void FieldList::alignNames() {
  const int limit = static_cast<int>(greatestNameShare * (width() - 2 * horizontalPadding));
  int widest = 0;
  for (const FieldRow* row : m_rows) widest = std::max(widest, std::min(row->nameWidth(), limit));
  for (FieldRow* row : m_rows) row->setNameWidth(widest);
}

}  // namespace zarvy
