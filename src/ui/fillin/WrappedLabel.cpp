#include "ui/fillin/WrappedLabel.h"

#include <cmath>

#include <QPainter>
#include <QTextLayout>
#include <QTextOption>

namespace zarvy {
namespace {

constexpr int usualWidth = 240;

// Lays `text` out from the top on; the height in all.
double layOut(QTextLayout& layout, QString text, const QFont& font, double width) {
  text.replace(u'\n', QChar::LineSeparator);
  layout.setText(text);
  layout.setFont(font);
  layout.setTextOption([] {
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    return option;
  }());
  double height = 0;
  layout.beginLayout();
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(width);
    line.setPosition({0, height});
    height += line.height();
  }
  layout.endLayout();
  return height;
}

}  // namespace

WrappedLabel::WrappedLabel(const QString& text, QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setText(text);
  setWordWrap(true);  // which also says that the height depends on the width
}

QSize WrappedLabel::sizeHint() const {
  return {usualWidth, heightForWidth(usualWidth)};
}

QSize WrappedLabel::minimumSizeHint() const {
  return {fontMetrics().averageCharWidth(), fontMetrics().height()};
}

int WrappedLabel::heightForWidth(int width) const {
  QTextLayout layout;
  return static_cast<int>(std::ceil(layOut(layout, text(), font(), width)));
}

void WrappedLabel::paintEvent(QPaintEvent* /*event*/) {
  QTextLayout layout;
  layOut(layout, text(), font(), width());
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::WindowText));
  layout.draw(&painter, {0, 0});
}

}  // namespace zarvy
