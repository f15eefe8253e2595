#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include "ui/window/Panel.h"

namespace zarvy {
namespace {

// Counts the moves instead of asking a window manager for them.
class CountingPanel final : public Panel {
 public:
  CountingPanel() {
    auto* const column = new QVBoxLayout(this);
    column->addWidget(&m_text);
    column->addWidget(&m_button);
    resize(300, 200);
  }

  QLabel& text() { return m_text; }
  QPushButton& button() { return m_button; }
  [[nodiscard]] int moves() const { return m_moves; }

 protected:
  bool startMove() override {
    ++m_moves;
    return true;
  }

 private:
  QLabel m_text{QStringLiteral("text"), this};
  QPushButton m_button{QStringLiteral("button"), this};
  int m_moves = 0;
};

class PanelMoves : public testing::Test {
 protected:
  PanelMoves() {
    m_panel.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&m_panel));
  }

  // The pointer goes `distance` to the right from the middle of `from` with `button` held down.
  void drag(QWidget& from, int distance, Qt::MouseButton button = Qt::LeftButton) {
    const QPointF start(from.rect().center());
    const auto send = [&](QEvent::Type type, const QPointF& place, Qt::MouseButton changed,
                          Qt::MouseButtons held) {
      QMouseEvent event(type, place, from.mapToGlobal(place), changed, held, Qt::NoModifier);
      QApplication::sendEvent(&from, &event);
    };
    send(QEvent::MouseButtonPress, start, button, button);
    EXPECT_EQ(m_panel.moves(), 0) << "not at the press";
    send(QEvent::MouseMove, start + QPointF(distance, 0), Qt::NoButton, button);
    send(QEvent::MouseMove, start + QPointF(distance, 0), Qt::NoButton, button);
    send(QEvent::MouseButtonRelease, start + QPointF(distance, 0), button, Qt::NoButton);
    send(QEvent::MouseMove, start + QPointF(200, 0), Qt::NoButton, Qt::NoButton);
  }

  CountingPanel m_panel;
  const int m_far = QApplication::startDragDistance();
};

TEST_F(PanelMoves, BeginOnceThePointerHasGoneAWay) {
  drag(m_panel, m_far);
  EXPECT_EQ(m_panel.moves(), 1);
}

TEST_F(PanelMoves, BeginOnATextToo) {
  drag(m_panel.text(), m_far);
  EXPECT_EQ(m_panel.moves(), 1);
}

TEST_F(PanelMoves, DoNotBeginAtAClick) {
  drag(m_panel, 0);
  drag(m_panel, m_far - 1);
  EXPECT_EQ(m_panel.moves(), 0);
}

TEST_F(PanelMoves, DoNotBeginWithAnotherButton) {
  drag(m_panel, m_far, Qt::RightButton);
  EXPECT_EQ(m_panel.moves(), 0);
}

TEST_F(PanelMoves, DoNotBeginOnAButton) {
  drag(m_panel.button(), m_far);
  m_panel.button().setEnabled(false);
  drag(m_panel.button(), m_far);
  EXPECT_EQ(m_panel.moves(), 0);
}

}  // namespace
}  // namespace zarvy
