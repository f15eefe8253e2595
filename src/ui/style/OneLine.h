#pragma once

#include <QString>

class QHelpEvent;
class QWidget;

namespace zarvy {

// The beginning of `text`, on one line: more than fits a label of any width, and yet not so much
// that measuring it takes its time.
[[nodiscard]] QString oneLine(const QString& text);

// Answers where the pointer rests on `widget`: with `text` as it was typed where the widget had to
// cut it, else with nothing. Not the tool tip that Qt keeps: a screen reader would be told it as a
// description, mark-up and all.
void showWholeText(const QHelpEvent& event, QWidget& widget, const QString& text, bool isCut);

}  // namespace zarvy
