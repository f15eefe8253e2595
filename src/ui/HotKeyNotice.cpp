#include "ui/HotKeyNotice.h"

#include <memory>
#include <utility>

#include <QHBoxLayout>
#include <QLabel>
#include <QLayoutItem>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/expansion/ExpansionService.h"
#include "ui/HotKeyText.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

QString wordsFor(const TakenHotKey& taken) {
  const QString reason = u"%1 belongs to another program and does not open quick search. "_s.arg(
      hotKeyText(taken.key));
  return reason + (taken.free.isEmpty() ? u"Choose another key in the file settings.json."_s
                                        : u"Use another key for it:"_s);
}

// A button that has been pressed outlives the press.
void removeAll(QLayout& layout) {
  while (const auto item = std::unique_ptr<QLayoutItem>(layout.takeAt(0))) {
    if (!item->widget()) continue;
    item->widget()->hide();
    item->widget()->deleteLater();
  }
}

}  // namespace

HotKeyNotice::HotKeyNotice(const ExpansionService& expansion,
                           std::function<void(const HotKey&)> choose, QWidget* parent)
    : QFrame(parent),
      m_expansion(expansion),
      m_choose(std::move(choose)),
      m_text(new QLabel(this)),
      m_offers(new QHBoxLayout) {
  setFrameShape(QFrame::StyledPanel);
  m_text->setWordWrap(true);
  m_text->setTextFormat(Qt::PlainText);
  auto* const column = new QVBoxLayout(this);
  column->addWidget(m_text);
  column->addLayout(m_offers);
  connect(&expansion, &ExpansionService::takenHotKeyChanged, this, &HotKeyNotice::showWhatHolds);
  showWhatHolds();
}

void HotKeyNotice::showWhatHolds() {
  const auto& taken = m_expansion.takenHotKey();
  setVisible(taken.has_value());
  removeAll(*m_offers);
  if (!taken) return;
  m_text->setText(wordsFor(*taken));
  for (const HotKey& key : taken->free) {
    auto* const offer = new QPushButton(hotKeyText(key), this);
    connect(offer, &QPushButton::clicked, this, [this, key] { m_choose(key); });
    m_offers->addWidget(offer);
  }
  m_offers->addStretch();
}

}  // namespace zarvy
