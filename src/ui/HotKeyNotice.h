#pragma once

#include <functional>

#include <QFrame>

#include "platform/HotKeys.h"

class QHBoxLayout;
class QLabel;

namespace zarvy {

class ExpansionService;

// Says that the key of quick search is another program's, and offers those that are free. Is there
// only as long as that is so.
class HotKeyNotice final : public QFrame {
  Q_OBJECT

 public:
  // `choose` makes another key the one of quick search. `expansion` outlives this object.
  HotKeyNotice(const ExpansionService& expansion, std::function<void(const HotKey&)> choose,
               QWidget* parent = nullptr);

 private:
  void showWhatHolds();

  const ExpansionService& m_expansion;
  const std::function<void(const HotKey&)> m_choose;
  QLabel* m_text;
  QHBoxLayout* m_offers;
};

}  // namespace zarvy
