#include "core/KeyboardMonitor.h"

#include <utility>

#include "base/text/Graphemes.h"
#include "base/text/Wipe.h"
#include "platform/SyntheticEvent.h"
#include "platform/VirtualKey.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

// Every modifier that no key position depends on, Caps Lock apart.
constexpr quint64 hotKeyMask = 0xFFFE0000;
constexpr quint64 shortcutMask = modifier::command | modifier::control;

// Typed characters that end a word.
constexpr QStringView bufferResetCharacters = u" \n\t";

// One that shows in the text, and moves the caret by one. Control characters and those of function
// keys, in the private area, may do anything.
bool isVisible(QChar character) {
  const QChar::Category category = character.category();
  return category != QChar::Other_Control && category != QChar::Other_PrivateUse;
}

}  // namespace

KeyboardMonitor::KeyboardMonitor(KeyEventSource& source, const AccessibilityPermission& permission,
                                 Scheduler& scheduler, SerialQueue& processingQueue,
                                 LineOutput& output)
    : m_source(source),
      m_permission(permission),
      m_scheduler(scheduler),
      m_processingQueue(processingQueue),
      m_output(output),
      m_typed(std::make_shared<Typed>()),
      m_life(std::make_shared<Life>()) {}

KeyboardMonitor::~KeyboardMonitor() {
  removeMonitor();
}

void KeyboardMonitor::start() {
  if (m_globalMonitor) return;
  if (!m_permission.isTrusted()) {
    m_output.print(u"KeyboardMonitor: No accessibility permission"_s);
    return;
  }
  m_globalMonitor = m_source.addGlobalMonitor(
      [this, life = std::weak_ptr(m_life)](const KeyEvent& event) {
        if (!life.expired()) handleEvent(event);
      },
      [this, life = std::weak_ptr(m_life)] {
        if (!life.expired()) queue(&KeyboardMonitor::forget);
      });
  if (!m_localMonitor)
    m_localMonitor =
        m_source.addLocalMonitor([this, life = std::weak_ptr(m_life)](const KeyEvent& event) {
          if (!life.expired()) handleOwnEvent(event);
        });
  m_output.print(u"KeyboardMonitor: Started (NSEvent global monitoring)"_s);
}

void KeyboardMonitor::stop() {
  removeMonitor();
  m_typed->buffer.clear();
  onPotentialTrigger = nullptr;
  onQuickSearchTriggered = nullptr;
  onQuickSearchTriggeredHere = nullptr;
  m_output.print(u"KeyboardMonitor: Stopped"_s);
}

void KeyboardMonitor::removeMonitor() {
  for (auto* const monitor : {&m_globalMonitor, &m_localMonitor}) {
    if (*monitor) m_source.removeMonitor(**monitor);
    monitor->reset();
  }
}

void KeyboardMonitor::handleEvent(const KeyEvent& event) {
  if (isSyntheticLocation(event.locationX)) return;
  if (isQuickSearchHotKey(event)) {
    return announceHotKey(&KeyboardMonitor::onQuickSearchTriggered);
  }
  if ((event.modifierFlags & shortcutMask) != 0) {
    if (event.charactersIgnoringModifiers) queue([](Typed& typed) { typed.since.lose(); });
    return;
  }
  queue([keyCode = event.keyCode, characters = event.charactersIgnoringModifiers,
         offer = offerOnMainThread()](Typed& typed) {
    processKey(typed, keyCode, characters, offer);
  });
}

void KeyboardMonitor::queue(std::function<void(Typed&)> work) {
  m_processingQueue.post([typed = std::weak_ptr(m_typed), work = std::move(work)] {
    if (const auto alive = typed.lock()) work(*alive);
  });
}

void KeyboardMonitor::handleOwnEvent(const KeyEvent& event) {
  if (isSyntheticLocation(event.locationX) || !isQuickSearchHotKey(event)) return;
  announceHotKey(&KeyboardMonitor::onQuickSearchTriggeredHere);
}

void KeyboardMonitor::announceHotKey(std::function<void()> KeyboardMonitor::*callback) {
  m_scheduler.post([this, callback, life = std::weak_ptr(m_life)] {
    if (life.expired()) return;
    // A copy, for the callback may stop or end this object.
    if (const auto current = this->*callback) current();
  });
}

bool KeyboardMonitor::isQuickSearchHotKey(const KeyEvent& event) const {
  return event.keyCode == quickSearchKeyCode &&
         (event.modifierFlags & hotKeyMask) == quickSearchModifiers;
}

// The result may be called on any thread, also after this object has ended: it only posts.
KeyboardMonitor::OfferCopy KeyboardMonitor::offerOnMainThread() {
  return [this, scheduler = &m_scheduler, life = std::weak_ptr(m_life)](
             QString copy, std::shared_ptr<TypedSince> since) {
    scheduler->post([this, life, copy = std::move(copy), since = std::move(since)]() mutable {
      if (const auto callback = life.expired() ? nullptr : onPotentialTrigger) {
        m_typedSinceOffer = std::move(since);
        callback(copy);
        if (!life.expired()) m_typedSinceOffer.reset();
      }
      wipe(copy);
    });
  };
}

void KeyboardMonitor::processKey(Typed& typed, quint16 keyCode,
                                 const std::optional<QString>& characters, const OfferCopy& offer) {
  if (handleSpecialKey(typed, keyCode)) return;
  if (!characters) return;
  for (const QStringView character : graphemes(*characters)) {
    if (isVisible(character.front())) {
      typed.since.append(character);
    } else {
      typed.since.lose();
    }
    if (bufferResetCharacters.contains(character)) {
      typed.buffer.clear();
    } else {
      offer(typed.buffer.append(character), typed.since.begin());
    }
  }
}

// What was typed stays where it is; what is typed from now on goes elsewhere.
void KeyboardMonitor::forget(Typed& typed) {
  typed.buffer.clear();
  typed.since.end();
}

bool KeyboardMonitor::handleSpecialKey(Typed& typed, quint16 keyCode) {
  switch (keyCode) {
    case virtualkey::deleteBackward:
      typed.buffer.removeLast();
      typed.since.removeLast();
      return true;
    case virtualkey::escape:
      forget(typed);
      return true;
    case virtualkey::returnKey:
    case virtualkey::tab:
    case virtualkey::leftArrow:
    case virtualkey::rightArrow:
    case virtualkey::downArrow:
    case virtualkey::upArrow:
      typed.buffer.clear();
      typed.since.lose();
      return true;
    default:
      return false;
  }
}

}  // namespace zarvy
