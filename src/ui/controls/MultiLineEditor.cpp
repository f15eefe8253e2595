#include "ui/controls/MultiLineEditor.h"

#include <QTextDocument>

namespace zarvy {

MultiLineEditor::MultiLineEditor(const QString& value, QWidget* parent) : QPlainTextEdit(parent) {
  setPlainText(value);
  setTabChangesFocus(true);
  setFrameShape(QFrame::NoFrame);
  viewport()->setAutoFillBackground(false);
  setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  connect(this, &QPlainTextEdit::textChanged, this, &MultiLineEditor::edited);
}

// toPlainText() would take a space that does not break for a plain one.
QString MultiLineEditor::value() const {
  QString text = document()->toRawText();
  text.replace(QChar::ParagraphSeparator, u'\n');
  text.replace(QChar::LineSeparator, u'\n');
  return text;
}

void MultiLineEditor::selectAllFromTheEnd() {
  QTextCursor selection = textCursor();
  selection.movePosition(QTextCursor::End);
  selection.movePosition(QTextCursor::Start, QTextCursor::KeepAnchor);
  setTextCursor(selection);
}

}  // namespace zarvy
