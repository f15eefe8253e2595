#pragma once

#include <functional>
#include <memory>
#include <optional>

#include <QString>

#include "base/LineOutput.h"
#include "base/Scheduler.h"
#include "base/TaskQueue.h"
#include "core/RollingBuffer.h"
#include "core/injection/TypedSince.h"
#include "platform/AccessibilityPermission.h"
#include "platform/KeyEventSource.h"
#include "platform/ModifierFlags.h"

namespace zarvy {

// Hears what the user types in other applications, keeps the last characters of it and offers them
// to its listener each time a character comes in; recognises the quick-search hot key. What it
// keeps is an estimate of the text before the caret, made from key presses alone: whatever could
// have moved the caret or ended a word empties it.
//
// Belongs to the main thread: made, used and ended there. Only the work on the buffer runs on the
// queue. What is still queued when the monitor ends does nothing; the ports must outlive the work
// that is queued on them.
class KeyboardMonitor {
 public:
  static constexpr qsizetype maxBufferLength = 50;  // user-perceived characters

  KeyboardMonitor(KeyEventSource& source, const AccessibilityPermission& permission,
                  Scheduler& scheduler, SerialQueue& processingQueue, LineOutput& output);
  ~KeyboardMonitor();
  KeyboardMonitor(const KeyboardMonitor&) = delete;
  KeyboardMonitor& operator=(const KeyboardMonitor&) = delete;

  // Called on the main thread with a copy of the buffer, once for each character that entered it.
  // A copy that was queued before the buffer was emptied may still arrive afterwards.
  std::function<void(const QString& buffer)> onPotentialTrigger;

  // While onPotentialTrigger runs: what is typed behind that copy. It grows for as long as the
  // caller keeps it.
  [[nodiscard]] std::shared_ptr<TypedSince> typedSinceOffer() const { return m_typedSinceOffer; }

  // Called on the main thread when the hot key was pressed.
  std::function<void()> onQuickSearchTriggered;

  // The same for a press in a window of this program, which other keys are not heard in.
  std::function<void()> onQuickSearchTriggeredHere;

  quint16 quickSearchKeyCode = 44;                   // a virtual key code
  quint64 quickSearchModifiers = modifier::command;  // exactly these, Caps Lock apart

  // Begins to listen; does nothing while listening already. Without the permission it prints a
  // line and does not listen: the one who gets the permission calls again.
  void start();

  // Ends listening, empties the buffer and forgets the callbacks: set them again before the next
  // start().
  void stop();

  // Whether key presses are being heard.
  [[nodiscard]] bool isMonitoring() const { return m_globalMonitor.has_value(); }

  // A copy of the buffer.
  [[nodiscard]] QString buffer() const { return m_typed->buffer.text(); }
  void clearBuffer() { m_typed->buffer.clear(); }

 private:
  struct Life {};
  struct Typed {
    RollingBuffer buffer{maxBufferLength};
    TypedSinceNow since;  // on the queue
  };
  using OfferCopy = std::function<void(QString, std::shared_ptr<TypedSince>)>;

  void handleEvent(const KeyEvent& event);
  void handleOwnEvent(const KeyEvent& event);
  void announceHotKey(std::function<void()> KeyboardMonitor::*callback);
  void removeMonitor();
  [[nodiscard]] bool isQuickSearchHotKey(const KeyEvent& event) const;
  [[nodiscard]] OfferCopy offerOnMainThread();
  void queue(std::function<void(Typed&)> work);
  static void processKey(Typed& typed, quint16 keyCode, const std::optional<QString>& characters,
                         const OfferCopy& offer);
  [[nodiscard]] static bool handleSpecialKey(Typed& typed, quint16 keyCode);
  static void forget(Typed& typed);

  KeyEventSource& m_source;
  const AccessibilityPermission& m_permission;
  Scheduler& m_scheduler;
  SerialQueue& m_processingQueue;
  LineOutput& m_output;
  std::optional<KeyEventSource::Token> m_globalMonitor;  // present exactly while listening
  std::optional<KeyEventSource::Token> m_localMonitor;
  std::shared_ptr<Typed> m_typed;  // queued work holds it weakly
  std::shared_ptr<TypedSince> m_typedSinceOffer;
  std::shared_ptr<Life> m_life;  // main-thread tasks hold it weakly to learn that this is gone
};

}  // namespace zarvy
