#include "core/injection/TextInjector.h"

#include <utility>

namespace zarvy {

namespace {

// Performs one action of a plan.
class ActionPerformer {
 public:
  ActionPerformer(TypingSession& session, Sleeper& sleeper)
      : m_session(session), m_sleeper(sleeper) {}

  void operator()(const KeyPress& press) const { m_session.pressKey(press.keyCode); }
  void operator()(const TextRun& run) const { m_session.pressText(run.text); }
  void operator()(const Pause& pause) const { m_sleeper.sleepFor(pause.duration); }

 private:
  TypingSession& m_session;
  Sleeper& m_sleeper;
};

}  // namespace

std::shared_ptr<TextInjector> TextInjector::make(KeyEventPoster& poster, Workspace& workspace,
                                                 InputMethod& inputMethod, Sleeper& sleeper,
                                                 WorkerPool& workers, Scheduler& scheduler) {
  return std::shared_ptr<TextInjector>(
      new TextInjector(poster, workspace, inputMethod, sleeper, workers, scheduler));
}

TextInjector::TextInjector(KeyEventPoster& poster, Workspace& workspace, InputMethod& inputMethod,
                           Sleeper& sleeper, WorkerPool& workers, Scheduler& scheduler)
    : m_poster(poster),
      m_workspace(workspace),
      m_inputMethod(inputMethod),
      m_sleeper(sleeper),
      m_workers(workers),
      m_scheduler(scheduler) {}

void TextInjector::inject(const QString& text, qsizetype backspaceCount,
                          const std::optional<RunningApplication>& targetApp,
                          std::optional<qsizetype> cursorOffset) {
  const auto target = targetApp ? targetApp : m_workspace.frontmostApplication();
  if (!target) return;
  // Two absent identifiers are equal: a target that cannot be told from this program is refused.
  if (target->bundleIdentifier == m_workspace.ownBundleIdentifier()) return;

  m_workers.post([weak = weak_from_this(), target = *target, text, backspaceCount, cursorOffset] {
    auto self = weak.lock();
    if (!self) return;
    const bool takesKeys = self->takesKeys(target);
    if (takesKeys) self->type(text, backspaceCount, cursorOffset);
    // The last reference may be this one, and it is to go on the main thread.
    Scheduler& scheduler = self->m_scheduler;
    scheduler.post([self = std::move(self), takesKeys] {
      const auto callback = self->onInjectionComplete;  // it may unset itself
      if (takesKeys && callback) callback();
    });
  });
}

// The input method is asked behind the activation, for each application has a state of its own.
bool TextInjector::takesKeys(const RunningApplication& target) {
  return bringToFront(target) && (m_isCutShort || !m_inputMethod.isComposing());
}

// False where it has gone.
bool TextInjector::bringToFront(const RunningApplication& target) {
  if (m_isCutShort || m_workspace.isActive(target)) return true;
  if (!m_workspace.activate(target)) return false;
  m_sleeper.sleepFor(injection::activationSettleTime);
  return true;
}

void TextInjector::type(const QString& text, qsizetype backspaceCount,
                        std::optional<qsizetype> cursorOffset) {
  const InjectionPlan plan = planInjection(text, backspaceCount, cursorOffset);
  if (m_isCutShort) return;
  const std::unique_ptr<TypingSession> session = m_poster.beginTyping(text);
  run(plan, *session);
}

void TextInjector::run(const InjectionPlan& plan, TypingSession& session) {
  const ActionPerformer perform(session, m_sleeper);
  for (const InjectionAction& action : plan) {
    if (m_isCutShort) return;
    std::visit(perform, action);
  }
}

}  // namespace zarvy
