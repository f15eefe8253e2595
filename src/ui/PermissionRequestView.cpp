#include "ui/PermissionRequestView.h"

#include <utility>

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/expansion/ExpansionService.h"
#include "ui/controls/Divider.h"
#include "ui/controls/SymbolLabel.h"
#include "ui/controls/SymbolView.h"
#include "ui/controls/WrappedLabel.h"
#include "ui/style/ToneKeeper.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

constexpr int windowWidth = 400;
constexpr int padding = 32;
constexpr int spacing = 24;
constexpr int innerSpacing = 12;
constexpr int symbolExtent = 64;

QLabel* makeText(const QString& text, QWidget* parent) {
  auto* const label = inTone(new WrappedLabel(text, parent), {TextColor::secondary});
  label->setAlignment(Qt::AlignHCenter);
  return label;
}

SymbolLabel* makeChecked(const QString& text, const Tone& tone, QWidget* parent) {
  return new SymbolLabel(Symbol::checkmarkCircleFill, meaning::success, text, tone, parent);
}

QVBoxLayout* makeColumn(QWidget* parent, int gap) {
  auto* const column = new QVBoxLayout(parent);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(gap);
  return column;
}

}  // namespace

PermissionRequestView::PermissionRequestView(ExpansionService& expansion,
                                             std::function<void()> getStarted)
    : m_expansion(expansion),
      m_getStarted(std::move(getStarted)),
      m_granted(makeGranted()),
      m_missing(makeMissing()) {
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(padding, padding, padding, padding);
  column->setSpacing(spacing);
  addExplanation(*column);
  column->addWidget(m_granted);
  column->addWidget(m_missing);
  connect(&expansion, &ExpansionService::hasAccessibilityPermissionChanged, this,
          &PermissionRequestView::showWhatHolds);
  showWhatHolds();
}

void PermissionRequestView::addExplanation(QVBoxLayout& column) {
  column.addWidget(new SymbolView(Symbol::keyboard, symbolExtent, this, SystemColor::blue), 0,
                   Qt::AlignHCenter);
  auto* const title = inTone(new QLabel(u"Accessibility Permission Required"_s, this),
                             {TextColor::primary, lettering::title});
  column.addWidget(title, 0, Qt::AlignHCenter);
  column.addWidget(
      makeText(u"Zarvy needs accessibility permission to detect when you type trigger words and "
               "expand them into snippets."_s,
               this));
  auto* const points = new QWidget(this);
  auto* const list = makeColumn(points, innerSpacing);
  for (const QString& point :
       {u"Monitor keyboard input to detect triggers"_s,
        u"Replace trigger text with expanded snippets"_s, u"Works in any application"_s}) {
    auto* const label = makeChecked(point, {TextColor::secondary, lettering::subheadline}, points);
    label->setWordWrap(true);
    list->addWidget(label);
  }
  column.addWidget(points);
  column.addWidget(new Divider(this));
}

QWidget* PermissionRequestView::makeGranted() {
  auto* const part = new QWidget(this);
  auto* const column = makeColumn(part, spacing);
  column->addWidget(
      makeChecked(u"Permission Granted"_s, {meaning::success, lettering::headline}, part), 0,
      Qt::AlignHCenter);
  auto* const getStarted = new QPushButton(u"Get Started"_s, part);
  getStarted->setDefault(true);
  connect(getStarted, &QPushButton::clicked, this, [this] {
    const auto next = m_getStarted;  // closing may delete this window
    window()->close();
    next();
  });
  column->addWidget(getStarted, 0, Qt::AlignCenter);
  return part;
}

// Where the permission cannot be asked for, the words say what is to be done instead.
QWidget* PermissionRequestView::makeMissing() {
  auto* const part = new QWidget(this);
  auto* const column = makeColumn(part, innerSpacing);
  auto* const request = new QPushButton(u"Request Permission"_s, part);
  connect(request, &QPushButton::clicked, &m_expansion,
          &ExpansionService::requestAccessibilityPermission);
  auto* const check = new QPushButton(u"Check Permission"_s, part);
  connect(check, &QPushButton::clicked, this, &PermissionRequestView::check);
  auto* const caption =
      makeText(u"Click \"Request Permission\", then enable Zarvy in the list that opens."_s, part);
  m_reason = makeText({}, part);
  m_remedy = makeText({}, part);
  column->addWidget(request, 0, Qt::AlignCenter);
  column->addWidget(check, 0, Qt::AlignCenter);
  column->addWidget(caption);
  column->addWidget(m_reason);
  column->addWidget(m_remedy);
  const bool canAsk = m_expansion.permission().canBeAskedFor();
  (canAsk ? request : check)->setDefault(true);
  request->setVisible(canAsk);
  caption->setVisible(canAsk);
  m_remedy->setVisible(!canAsk);
  return part;
}

void PermissionRequestView::check() {
  m_expansion.refreshAccessibilityPermission();
  showWhatHolds();
}

void PermissionRequestView::showWhatHolds() {
  m_reason->setText(m_expansion.permission().reasonForMissing());
  m_remedy->setText(m_expansion.permission().remedy());
  m_granted->setVisible(m_expansion.hasAccessibilityPermission());
  m_missing->setVisible(!m_expansion.hasAccessibilityPermission());
  layout()->invalidate();
  setFixedSize(sizeHint());
}

QSize PermissionRequestView::sizeHint() const {
  return {windowWidth, layout()->totalHeightForWidth(windowWidth)};
}

}  // namespace zarvy
