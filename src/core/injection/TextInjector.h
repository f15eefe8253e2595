#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <optional>

#include <QString>

#include "base/Scheduler.h"
#include "base/Sleeper.h"
#include "base/TaskQueue.h"
#include "core/injection/InjectionPlan.h"
#include "core/injection/TypedSince.h"
#include "platform/InputMethod.h"
#include "platform/KeyEventPoster.h"
#include "platform/Workspace.h"

namespace zarvy {

// The hand that writes into other applications: backspaces that remove the typed trigger, the text,
// and left arrows to the caret's place, all as key events. Made, used and released on the main
// thread; the key events go out from a thread of `workers`, each injection from one of its own, so
// that two that overlap interleave. An injection in flight keeps its injector alive; one that has
// not begun does not.
//
// An injection cannot fail in a way that its caller sees. A key that cannot be pressed is left out
// and its pause is kept.
class TextInjector : public std::enable_shared_from_this<TextInjector> {
 public:
  // The references outlive every injection: `workers` is drained before they go.
  [[nodiscard]] static std::shared_ptr<TextInjector> make(KeyEventPoster& poster,
                                                          Workspace& workspace,
                                                          InputMethod& inputMethod,
                                                          Sleeper& sleeper, WorkerPool& workers,
                                                          Scheduler& scheduler);

  // Called on the main thread after the last key event of an injection, if it is set by then.
  // Belongs to the main thread.
  std::function<void()> onInjectionComplete;

  // Types `text` in place of the `backspaceCount` characters before the caret of `targetApp`, or of
  // the frontmost application if absent, and puts the caret `cursorOffset` characters before the
  // end of the text. Returns at once. Does nothing without a target, nor where the target is this
  // program itself or is gone: what is in front then is none of the user's choice. Nor while an
  // input method composes: it would take the keys for its own, and some of what the user typed is
  // not in the application yet. A negative `backspaceCount` ends the process. Main thread.
  //
  // What was `typedSince` the characters that are to be deleted, and reached the application ahead
  // of the backspaces, is deleted as well and typed again, but for what a form has: at the caret,
  // or ahead of a long text, so that what is typed meanwhile comes behind it.
  void inject(const QString& text, qsizetype backspaceCount,
              const std::optional<RunningApplication>& targetApp,
              std::optional<qsizetype> cursorOffset,
              std::shared_ptr<const TypedSince> typedSince = nullptr);

  // Injections end before their next action, without a half-pressed key. For the end of the
  // program, which cannot wait for a long text: none is planned ahead of what is being typed. Any
  // thread.
  void cutShort() { m_isCutShort = true; }

 private:
  TextInjector(KeyEventPoster& poster, Workspace& workspace, InputMethod& inputMethod,
               Sleeper& sleeper, WorkerPool& workers, Scheduler& scheduler);

  struct Work {
    QString text;
    qsizetype backspaceCount = 0;
    std::optional<qsizetype> cursorOffset;
  };

  [[nodiscard]] bool takesKeys(const RunningApplication& target);
  [[nodiscard]] bool bringToFront(const RunningApplication& target);
  void type(const Work& work, const TypedSince* typedSince);
  void typeText(QStringView text, TypingSession& session);
  [[nodiscard]] QString deleteTyped(const TypedSince& typedSince, TypingSession& session);
  void run(const InjectionActions& actions, TypingSession& session);
  void typeAgain(const QString& text, TypingSession& session);

  KeyEventPoster& m_poster;
  Workspace& m_workspace;
  InputMethod& m_inputMethod;
  Sleeper& m_sleeper;
  WorkerPool& m_workers;
  Scheduler& m_scheduler;
  std::atomic<bool> m_isCutShort = false;
};

}  // namespace zarvy
