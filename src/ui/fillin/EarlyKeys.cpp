#include "ui/fillin/EarlyKeys.h"

#include <iterator>
#include <utility>

#include <QCoreApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QPointer>
#include <QWidget>

#include "base/text/Graphemes.h"

namespace zarvy {
namespace {

bool isForTheFirstField(const QKeyEvent& key) {
  constexpr auto chord = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
  // A keyboard level beyond Shift may come with Alt or both, and then it brings a character.
  const bool isTyped = !key.text().isEmpty() && key.text().front().isPrint();
  return key.key() != Qt::Key_Escape && (isTyped || !(key.modifiers() & chord));
}

bool isReturn(const QEvent& event) {
  if (event.type() != QEvent::KeyPress) return false;
  const auto& key = static_cast<const QKeyEvent&>(event);
  const bool isPlain = !(key.modifiers() & ~Qt::KeypadModifier);
  return isPlain && (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter);
}

// Asked as the toolkit does ahead of a shortcut.
bool wantsForItself(QWidget& input, const QKeyEvent& key) {
  QKeyEvent question(QEvent::ShortcutOverride, key.key(), key.modifiers(), key.text());
  question.ignore();
  QCoreApplication::sendEvent(&input, &question);
  return question.isAccepted();
}

}  // namespace

bool EarlyKeys::keeps(QEvent& event) {
  if (!m_isKeeping) return false;
  switch (event.type()) {
    case QEvent::ShortcutOverride:
      if (!isForTheFirstField(static_cast<const QKeyEvent&>(event))) return false;
      break;
    case QEvent::KeyPress:
      if (!isForTheFirstField(static_cast<const QKeyEvent&>(event))) return false;
      m_events.emplace_back(event.clone());
      break;
    case QEvent::InputMethod:
      if (static_cast<const QInputMethodEvent&>(event).commitString().isEmpty()) return false;
      m_events.emplace_back(event.clone());
      break;
    default:
      return false;
  }
  event.accept();
  return true;
}

void EarlyKeys::putAhead(QStringView text) {
  std::vector<std::unique_ptr<QEvent>> events;
  for (const QStringView character : graphemes(text)) {
    events.push_back(std::make_unique<QKeyEvent>(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier,
                                                 character.toString()));
  }
  m_events.insert(m_events.begin(), std::make_move_iterator(events.begin()),
                  std::make_move_iterator(events.end()));
}

void EarlyKeys::handOn(QWidget& form, const std::function<void()>& onReturn) {
  m_isKeeping = false;
  const auto events = std::exchange(m_events, {});
  const QPointer<QWidget> alive(&form);
  for (const auto& event : events) {
    QWidget* const input = alive ? form.focusWidget() : nullptr;
    if (input == nullptr) return;
    if (isReturn(*event) && !wantsForItself(*input, static_cast<const QKeyEvent&>(*event))) {
      return onReturn();
    }
    QCoreApplication::sendEvent(input, event.get());
  }
}

}  // namespace zarvy
