#include "ui/fillin/StandaloneFillInForm.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

#include "base/Clock.h"
#include "base/Scheduler.h"
#include "core/TextExpansionEngine.h"
#include "core/placeholders/DateFormatters.h"
#include "storage/FieldDefaultsStore.h"
#include "ui/controls/Divider.h"
#include "ui/controls/PaneSplitter.h"
#include "ui/controls/RoundedBox.h"
#include "ui/controls/TintedButton.h"
#include "ui/controls/TriggerBadge.h"
#include "ui/fillin/FieldList.h"
#include "ui/fillin/RowsArea.h"
#include "ui/preview/PreviewText.h"
#include "ui/preview/PreviewView.h"
#include "ui/style/ControlOutline.h"
#include "ui/style/SystemColors.h"
#include "ui/style/ToneKeeper.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

using namespace std::chrono_literals;

constexpr QSize leastFormSize(350, 400);
constexpr QSize idealSize(450, 550);
constexpr int barPadding = 12;
constexpr int panePadding = 8;
constexpr int rowsPadding = 8;
constexpr int leastRowsHeight = 120;
constexpr int leastPreviewHeight = 100;
constexpr int rowsShare = 3;  // of the height, to previewShare
constexpr int previewShare = 2;
constexpr auto focusDelay = 100ms;

// Its padding is the same at all sides.
template <typename Layout>
Layout* makePadded(QWidget* area, int padding) {
  auto* const layout = new Layout(area);
  layout->setContentsMargins(padding, padding, padding, padding);
  return layout;
}

bool isBlank(const QString& text) {
  return QStringView(text).trimmed().isEmpty();
}

}  // namespace

StandaloneFillInForm::StandaloneFillInForm(Snippet snippet, FolderColor folderColor,
                                           const FillInServices& services, OnExpand onExpand,
                                           OnCancel onCancel)
    : m_snippet(std::move(snippet)),
      m_folderColor(folderColor),
      m_services(services),
      m_onExpand(std::move(onExpand)),
      m_onCancel(std::move(onCancel)) {
  setAccessibleName(u"Fill In Values"_s);  // it has the keyboard while no field has
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(makeHeader());
  column->addWidget(new Divider(this));
  column->addWidget(makePanes(), 1);
  column->addWidget(new Divider(this));
  column->addWidget(makeButtons());
  addShortcuts();
  m_previewTimer.setSingleShot(true);
  m_previewTimer.setInterval(0);
  connect(&m_previewTimer, &QTimer::timeout, this, &StandaloneFillInForm::rebuildPreview);
}

QSize StandaloneFillInForm::sizeHint() const {
  return idealSize;
}

QSize StandaloneFillInForm::minimumSizeHint() const {
  return leastFormSize;
}

QWidget* StandaloneFillInForm::makeHeader() {
  auto* const bar = new QWidget(this);
  auto* const line = makePadded<QHBoxLayout>(bar, barPadding);
  line->setSpacing(barPadding);
  auto* const texts = new QVBoxLayout;
  texts->setSpacing(2);
  texts->addWidget(
      inTone(new QLabel(u"Fill In Values"_s, bar), {TextColor::primary, lettering::heading}));
  texts->addWidget(inTone(new QLabel(u"Complete the fields below"_s, bar),
                          {TextColor::tertiary, lettering::caption}));
  line->addLayout(texts);
  line->addStretch(1);
  line->addWidget(new TriggerBadge(m_snippet, tintOf(m_folderColor), bar), 0, Qt::AlignVCenter);
  return bar;
}

QWidget* StandaloneFillInForm::makePanes() {
  auto* const splitter = new PaneSplitter(Qt::Vertical, u"Size of the preview"_s, this);
  splitter->setAutoFillBackground(true);
  splitter->setBackgroundRole(QPalette::Base);
  auto* const upper = new Pane({0, leastRowsHeight}, splitter);
  m_upperPane = makePadded<QVBoxLayout>(upper, 0);
  splitter->addWidget(upper);
  splitter->addWidget(makePreviewPane());
  setTabOrder(splitter->handle(1), m_preview);
  splitter->setStretchFactor(0, rowsShare);
  splitter->setStretchFactor(1, previewShare);
  splitter->setSizes({rowsShare * idealSize.height(), previewShare * idealSize.height()});
  return splitter;
}

QWidget* StandaloneFillInForm::makePreviewPane() {
  auto* const pane = new Pane({0, leastPreviewHeight}, this);
  auto* const column = makePadded<QVBoxLayout>(pane, panePadding);
  column->setSpacing(4);
  column->addWidget(inTone(new QLabel(u"Preview"_s, pane),
                           {TextColor::secondary, lettering::caption, QPalette::Base}));
  m_preview = new PreviewView(pane);
  column->addWidget(
      new RoundedBox(*m_preview, {QPalette::Base, RoundedBox::scrollBarPadding}, pane), 1);
  return pane;
}

QWidget* StandaloneFillInForm::makeButtons() {
  auto* const bar = new QWidget(this);
  auto* const line = makePadded<QHBoxLayout>(bar, barPadding);
  m_cancel = outlined(new QPushButton(u"Cancel"_s, bar));
  connect(m_cancel, &QPushButton::clicked, this, [this] { m_onCancel(); });
  m_expand = outlined(new TintedButton(TintedButton::Tint::prominent, u"Expand"_s, bar));
  m_expand->setDefault(true);
  connect(m_expand, &QPushButton::clicked, this, &StandaloneFillInForm::expand);
  line->addWidget(m_cancel);
  line->addStretch(1);
  line->addWidget(m_expand);
  return bar;
}

// A button that is disabled does not feel a click. An input of several lines takes Return for
// itself, and an open list of options both keys.
void StandaloneFillInForm::addShortcuts() {
  const auto add = [this](Qt::Key key, QPushButton* button) {
    auto* const shortcut = new QShortcut(QKeySequence(key), this);
    shortcut->setAutoRepeat(false);
    connect(shortcut, &QShortcut::activated, button, &QPushButton::click);
  };
  add(Qt::Key_Escape, m_cancel);
  add(Qt::Key_Return, m_expand);
  add(Qt::Key_Enter, m_expand);
}

void StandaloneFillInForm::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (!std::exchange(m_hasAppeared, true)) appear();
}

// Until the first field has the keyboard.
bool StandaloneFillInForm::event(QEvent* event) {
  return m_earlyKeys.keeps(*event) || QWidget::event(event);
}

void StandaloneFillInForm::appear() {
  m_fields = m_services.engine.parseFillInFields(m_snippet.replacement);
  m_upperPane->addWidget(makeRows());
  m_expand->setEnabled(!isIncomplete(m_fields));
  rebuildPreview();
  setFocus();  // until the first field has it
  if (m_list) {
    m_earlyKeys.begin();
    setAttribute(Qt::WA_InputMethodEnabled);
  }
  const QPointer<StandaloneFillInForm> form(this);
  m_services.scheduler.postAfter(focusDelay, [form] {
    if (auto* const shown = form.data()) shown->focusFirstField();
  });
}

// Return among the keys of before expands as it does later on.
void StandaloneFillInForm::focusFirstField() {
  if (!m_list) return;
  setAttribute(Qt::WA_InputMethodEnabled, false);
  m_list->takeFocus(m_fields.constFirst().id);
  if (const auto take = std::exchange(m_takeTypedAhead, nullptr)) m_earlyKeys.putAhead(take());
  m_earlyKeys.handOn(*this, [this] { m_expand->click(); });
}

QWidget* StandaloneFillInForm::makeRows() {
  const QString nothingToFillIn = u"No fill-in fields in this snippet"_s;
  if (m_fields.isEmpty()) {
    setAccessibleDescription(nothingToFillIn);
    auto* const none = inTone(new QLabel(nothingToFillIn, this),
                              {TextColor::secondary, lettering::body, QPalette::Base});
    none->setAlignment(Qt::AlignCenter);
    none->setWordWrap(true);
    return none;
  }
  auto* const rows = new QWidget(this);
  auto* const column = makePadded<QVBoxLayout>(rows, rowsPadding);
  m_list = new FieldList(m_fields, rows);
  connect(m_list, &FieldList::changed, this, &StandaloneFillInForm::setField);
  column->addWidget(m_list);
  column->addStretch(1);
  return new RowsArea(rows, this);
}

std::optional<QUuid> StandaloneFillInForm::focusedFieldID() const {
  return m_list ? m_list->focusedFieldID() : std::nullopt;
}

bool StandaloneFillInForm::isIncomplete(const QList<FillInField>& fields) {
  return std::any_of(fields.begin(), fields.end(), [](const FillInField& field) {
    return field.isRequired && isBlank(field.value);
  });
}

void StandaloneFillInForm::setField(qsizetype index, const FillInField& field) {
  m_fields[index] = field;
  m_expand->setEnabled(!isIncomplete(m_fields));
  m_previewTimer.start();
}

void StandaloneFillInForm::rebuildPreview() {
  const QDateTime now = m_services.clock.now();
  DateFormatters& dates = m_services.dates;
  m_preview->setRuns(
      previewRuns(m_snippet.replacement, m_fields, m_services.engine.snippets(),
                  {dates.shortDateFormatter().format(now), dates.mediumDateFormatter().format(now),
                   dates.longDateFormatter().format(now), dates.timeFormatter().format(now)}));
}

void StandaloneFillInForm::expand() {
  QMap<QString, QString> values;
  for (const FillInField& field : std::as_const(m_fields)) {
    if (field.type.kind == FillInFieldType::Kind::optional) {
      values.insert(field.name, field.isChecked ? field.type.content : QString());
      continue;
    }
    values.insert(field.name, field.value);
    if (field.shouldRemember) {
      m_services.fieldDefaults.setValue(field.name, field.value);
    } else {
      m_services.fieldDefaults.removeValue(field.name);
    }
  }
  m_onExpand(values);
}

}  // namespace zarvy
