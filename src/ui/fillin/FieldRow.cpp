#include "ui/fillin/FieldRow.h"

#include <limits>

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "base/text/Graphemes.h"
#include "ui/controls/ElidedCheckBox.h"
#include "ui/controls/ElidedLabel.h"
#include "ui/controls/MultiLineEditor.h"
#include "ui/controls/OptionPicker.h"
#include "ui/controls/RoundedBox.h"
#include "ui/controls/WrappedLabel.h"
#include "ui/style/ControlOutline.h"
#include "ui/style/ToneKeeper.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr int spacing = 4;
constexpr int gapBehindName = 8;
constexpr int editorHeight = 80;
constexpr int sectionPadding = 6;
constexpr qsizetype shownContentLength = 100;  // in user-perceived characters

constexpr Tone remark{TextColor::secondary, lettering::caption};
constexpr Tone mark{meaning::required, lettering::headline};

QString shownContent(const QString& content) {
  const QStringView beginning = firstGraphemes(content, shownContentLength);
  return beginning.size() < content.size() ? beginning.toString() + u"..."_s : content;
}

QHBoxLayout* makeLine(int gap) {
  auto* const line = new QHBoxLayout;
  line->setContentsMargins(0, 0, 0, 0);
  line->setSpacing(gap);
  return line;
}

}  // namespace

FieldRow::FieldRow(const FillInField& field, QWidget* parent) : QWidget(parent), m_field(field) {
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(spacing);
  switch (field.type.kind) {
    case FillInFieldType::Kind::text:
      addText(*column);
      break;
    case FillInFieldType::Kind::textarea:
      addTextArea(*column);
      break;
    case FillInFieldType::Kind::dropdown:
      addDropdown(*column);
      break;
    case FillInFieldType::Kind::optional:
      addSection(*column);
      break;
  }
}

// From the end to the beginning, which is what is to be seen of a long text.
void FieldRow::takeFocus() {
  m_input->setFocus(Qt::OtherFocusReason);
  if (auto* const line = qobject_cast<QLineEdit*>(m_input)) {
    const auto length = static_cast<int>(line->text().size());
    line->setSelection(length, -length);
  } else if (auto* const editor = qobject_cast<MultiLineEditor*>(m_input)) {
    editor->selectAllFromTheEnd();
  }
}

bool FieldRow::hasFocusInside() const {
  return m_input->hasFocus();
}

int FieldRow::nameWidth() const {
  return m_nameBeside ? m_nameBeside->sizeHint().width() : 0;
}

void FieldRow::setNameWidth(int width) {
  if (!m_nameBeside) return;
  m_nameBeside->setFixedWidth(width);
  m_indent->setFixedWidth(width + gapBehindName);
}

void FieldRow::addText(QVBoxLayout& column) {
  auto* const input = outlined(new QLineEdit(this));
  input->setMaxLength(std::numeric_limits<int>::max());
  input->setText(m_field.value);
  input->setCursorPosition(0);
  connect(input, &QLineEdit::textChanged, this, &FieldRow::setValue);
  addBesideName(column, *input);
}

void FieldRow::addDropdown(QVBoxLayout& column) {
  auto* const input = outlined(new OptionPicker(m_field.type.options, m_field.value, this));
  connect(input, &OptionPicker::picked, this, &FieldRow::setValue);
  addBesideName(column, *input);
}

void FieldRow::addTextArea(QVBoxLayout& column) {
  auto* const line = makeLine(spacing);
  auto* const name = new ElidedLabel(m_field.name, this);
  line->addWidget(name);
  if (m_field.isRequired) line->addWidget(makeStar());
  line->addStretch();
  column.addLayout(line);

  auto* const input = new MultiLineEditor(m_field.value, this);
  connect(input, &MultiLineEditor::edited, this, [this, input] { setValue(input->value()); });
  name->setBuddy(input);
  adopt(*input);
  auto* const box =
      new RoundedBox(*input, {QPalette::Base, RoundedBox::scrollBarPadding, true}, this);
  box->setFixedHeight(editorHeight);
  column.addWidget(box);
  addRemember(column);
}

void FieldRow::addSection(QVBoxLayout& column) {
  auto* const input = outlined(new ElidedCheckBox(m_field.name, this));
  input->setChecked(m_field.isChecked);
  adopt(*input);
  column.addWidget(input);

  auto* const content =
      inTone(new WrappedLabel(shownContent(m_field.type.content), this), {TextColor::secondary});
  auto* const box = new RoundedBox(*content, {QPalette::Window, sectionPadding}, this);
  box->setVisible(m_field.isChecked);
  column.addWidget(box);
  connect(input, &QCheckBox::toggled, this, [this, box](bool isChecked) {
    m_field.isChecked = isChecked;
    box->setVisible(isChecked);
    Q_EMIT changed();
  });
}

void FieldRow::addBesideName(QVBoxLayout& column, QWidget& input) {
  adopt(input);
  auto* const line = makeLine(spacing);
  m_nameBeside = new ElidedLabel(m_field.name, this);
  m_nameBeside->setBuddy(&input);  // a picker is told by its label alone, not by a name of its own
  line->addWidget(m_nameBeside);
  line->addSpacing(gapBehindName - spacing);
  line->addWidget(&input, 1);
  if (m_field.isRequired) line->addWidget(makeStar());
  column.addLayout(line);
  addRemember(column);
}

void FieldRow::addRemember(QVBoxLayout& column) {
  auto* const remember = outlined(inTone(new QCheckBox(u"Remember"_s, this), remark));
  remember->setAccessibleName(u"Remember "_s + m_field.name);
  remember->setChecked(m_field.shouldRemember);
  connect(remember, &QCheckBox::toggled, this, [this](bool isChecked) {
    m_field.shouldRemember = isChecked;
    Q_EMIT changed();
  });
  auto* const line = makeLine(0);
  m_indent = new QWidget(this);
  m_indent->setFixedWidth(0);
  line->addWidget(m_indent);
  line->addWidget(remember);
  line->addStretch();
  column.addLayout(line);
}

void FieldRow::adopt(QWidget& input) {
  m_input = &input;
  input.setAccessibleName(m_field.name);
  if (m_field.isRequired) input.setAccessibleDescription(u"Required"_s);
}

QWidget* FieldRow::makeStar() {
  return inTone(new QLabel(u"*"_s, this), mark);
}

void FieldRow::setValue(const QString& value) {
  m_field.value = value;
  Q_EMIT changed();
}

}  // namespace zarvy
