#include "ui/style/OneLine.h"

#include <algorithm>

#include <QHelpEvent>
#include <QToolTip>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr qsizetype greatestLength = 600;  // in UTF-16 units

QString beginningOf(const QString& text) {
  if (text.size() <= greatestLength) return text;
  const bool cutsPair = text.at(greatestLength - 1).isHighSurrogate();
  return text.first(cutsPair ? greatestLength - 1 : greatestLength) + u'\u2026';
}

bool breaksLine(QChar unit) {
  return unit == u'\n' || unit == u'\r' || unit == QChar::LineSeparator ||
         unit == QChar::ParagraphSeparator || unit == u'\t';
}

// `text` as a tool tip that shows it as it stands, and does not cover the screen.
QString plainToolTip(const QString& text) {
  return u"<p style=\"white-space: pre-wrap\">"_s + beginningOf(text).toHtmlEscaped() + u"</p>"_s;
}

}  // namespace

QString oneLine(const QString& text) {
  QString line = beginningOf(text);
  std::replace_if(line.begin(), line.end(), breaksLine, QChar(u' '));
  return line;
}

void showWholeText(const QHelpEvent& event, QWidget& widget, const QString& text, bool isCut) {
  QToolTip::showText(event.globalPos(), isCut ? plainToolTip(text) : QString(), &widget);
}

}  // namespace zarvy
