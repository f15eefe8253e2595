#pragma once

#include <QPainter>
#include <QWidget>

#include "ui/style/Lines.h"
#include "ui/style/Tones.h"

namespace zarvy {

// A line between two areas that lie one above the other.
class Divider final : public QWidget {
 public:
  explicit Divider(QWidget* parent) : QWidget(parent) { setFixedHeight(1); }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    drawRule(painter, rect(), separatorColor(palette()));
  }
};

}  // namespace zarvy
