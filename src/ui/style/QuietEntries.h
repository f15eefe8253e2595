#pragma once

#include <QObject>

class QMenu;

namespace zarvy {

// Keeps those entries of a menu that only tell something as legible as a text that steps back,
// whatever the desktop's palette says of what is disabled. Belongs to the menu.
class QuietEntries final : public QObject {
  Q_OBJECT

 public:
  explicit QuietEntries(QMenu& menu);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void apply();

  QMenu& m_menu;
  bool m_isApplying = false;
};

}  // namespace zarvy
