#include "ui/controls/WrappedLabel.h"

#include <cmath>

#include <QPainter>
#include <QTextLayout>
#include <QTextOption>

namespace zarvy {
namespace {

constexpr int usualWidth = 240;

// Lays the text out from the top on; the height in all.
double layOut(QTextLayout& layout, const QLabel& label, double width) {
  QString text = label.text();
  text.replace(u'\n', QChar::LineSeparator);
  layout.setText(text);
  layout.setFont(label.font());
  QTextOption option(label.alignment() & Qt::AlignHorizontal_Mask);
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout.setTextOption(option);
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
  return static_cast<int>(std::ceil(layOut(layout, *this, width)));
}

void WrappedLabel::paintEvent(QPaintEvent* /*event*/) {
  QTextLayout layout;
  layOut(layout, *this, width());
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::WindowText));
  layout.draw(&painter, {0, 0});
}

}  // namespace zarvy
