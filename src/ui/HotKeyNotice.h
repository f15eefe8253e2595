#pragma once

#include <QFrame>

class QHBoxLayout;
class QLabel;

namespace zarvy {

class AppState;

// Says that the key of quick search is another program's, and offers those that are free. Is there
// only as long as that is so.
class HotKeyNotice final : public QFrame {
  Q_OBJECT

 public:
  // `state` outlives this object.
  explicit HotKeyNotice(AppState& state, QWidget* parent = nullptr);

 private:
  void showWhatHolds();

  AppState& m_state;
  QLabel* m_text;
  QHBoxLayout* m_offers;
};

}  // namespace zarvy
