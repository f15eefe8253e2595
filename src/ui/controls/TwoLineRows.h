#pragma once

#include <optional>

#include <QPalette>
#include <QStyledItemDelegate>

#include "ui/controls/FolderLabel.h"
#include "ui/style/Fonts.h"

namespace zarvy {

// What a row of two lines shows.
struct TwoLineRow {
  QString title;
  QString detail;                                   // below it
  std::optional<SystemColor> dot = std::nullopt;    // in front of both
  std::optional<FolderLabel> label = std::nullopt;  // at the end
};

// Draws the rows of a list, of two lines each. All rows are of one height.
class TwoLineRows : public QStyledItemDelegate {
  Q_OBJECT

 public:
  struct Look {
    TextStyle title = lettering::body;
    TextStyle detail = lettering::trigger;
    QPalette::ColorRole ground = QPalette::Window;  // what the list is on
  };

  explicit TwoLineRows(QObject* parent = nullptr) : TwoLineRows(Look(), parent) {}
  TwoLineRows(const Look& look, QObject* parent) : QStyledItemDelegate(parent), m_look(look) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                               const QModelIndex& index) const override;

 protected:
  [[nodiscard]] virtual TwoLineRow rowAt(const QModelIndex& index) const = 0;

 private:
  const Look m_look;
};

}  // namespace zarvy
