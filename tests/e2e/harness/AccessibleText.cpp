#include "e2e/harness/AccessibleText.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString textInterface = u"org.a11y.atspi.Text"_s;

// The index in UTF-16 units of the code point with the index `codePoints`.
qsizetype utf16Index(const QString& text, qsizetype codePoints) {
  qsizetype index = 0;
  for (; codePoints > 0 && index < text.size(); --codePoints) {
    index += text.at(index).isHighSurrogate() ? 2 : 1;
  }
  return index;
}

}  // namespace

bool AccessibleText::find(qint64 processIdentifier) {
  const auto application = m_tree.applicationOf(processIdentifier);
  if (!application) return false;
  const auto text = m_tree.find(*application, [this](const AccessibleTree::Object& object) {
    const AccessibleTree::Look look = m_tree.lookAt(object);
    return look.is(AccessibleTree::editable) && look.is(AccessibleTree::focused);
  });
  if (text) m_text = *text;
  return text.has_value();
}

EditorState AccessibleText::state(PositionUnit unit) const {
  const QString text = m_tree.ask(m_text, textInterface, u"GetText"_s, {0, -1}).toString();
  const int caret = m_tree.property(m_text, textInterface, u"CaretOffset"_s).toInt();
  return {.text = text, .caret = unit == PositionUnit::utf16 ? caret : utf16Index(text, caret)};
}

void AccessibleText::setText(const QString& text) const {
  static_cast<void>(
      m_tree.ask(m_text, u"org.a11y.atspi.EditableText"_s, u"SetTextContents"_s, {text}));
}

}  // namespace zarvy::e2e
