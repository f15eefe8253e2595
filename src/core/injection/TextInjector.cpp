#include "core/injection/TextInjector.h"

#include <algorithm>
#include <utility>

#include "base/text/Graphemes.h"
#include "base/text/Wipe.h"

namespace zarvy {

namespace {

// No person types a letter within the two milliseconds of a backspace so many times in a row.
constexpr int mostRoundsOfDeletion = 8;

// A second. An application that has not come by then does not come.
constexpr int mostPausesForActivation = 20;

// UTF-16 units. So much is typed before the user presses the next key. Behind a longer text, or one
// that waits for the user, what was typed ahead of it would come after what is typed meanwhile.
constexpr qsizetype longestTextAheadOfTyped = 60;

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
                          std::optional<qsizetype> cursorOffset,
                          std::shared_ptr<const TypedSince> typedSince) {
  const auto target = targetApp ? targetApp : m_workspace.frontmostApplication();
  if (!target) return;
  // Two absent identifiers are equal: a target that cannot be told from this program is refused.
  if (target->bundleIdentifier == m_workspace.ownBundleIdentifier()) return;

  m_workers.post([weak = weak_from_this(), target = *target, text, backspaceCount, cursorOffset,
                  typedSince = std::move(typedSince)] {
    auto self = weak.lock();
    if (!self) return;
    const bool takesKeys = self->takesKeys(target);
    if (takesKeys) self->type({text, backspaceCount, cursorOffset}, typedSince.get());
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

// False where it is gone, or does not come: what is in front then is none of the user's choice. On
// a busy machine it comes later than it should, and keys that are typed before are lost.
bool TextInjector::bringToFront(const RunningApplication& target) {
  if (m_isCutShort || m_workspace.isActive(target)) return true;
  if (!m_workspace.activate(target)) return false;
  m_sleeper.sleepFor(injection::activationSettleTime);
  for (int pause = 0; pause < mostPausesForActivation; ++pause) {
    if (m_isCutShort || m_workspace.isActive(target)) return true;
    m_sleeper.sleepFor(injection::activationSettleTime);
  }
  return false;
}

void TextInjector::type(const Work& work, const TypedSince* typedSince) {
  if (m_isCutShort) return;
  const std::unique_ptr<TypingSession> session = m_poster.beginTyping(work.text);
  run(planDeletion(work.backspaceCount), *session);
  QString typedAhead = typedSince != nullptr ? deleteTyped(*typedSince, *session) : QString();
  const bool goesBehind = work.text.size() <= longestTextAheadOfTyped && !session->mustWait();
  if (!goesBehind) typeAgain(typedAhead, *session);
  typeText(work.text, *session);
  if (!m_isCutShort) run(planCaret(work.text, work.cursorOffset), *session);
  if (goesBehind) typeAgain(typedAhead, *session);
  wipe(typedAhead);
}

void TextInjector::typeAgain(const QString& text, TypingSession& session) {
  for (QStringView rest = text; !rest.isEmpty() && !m_isCutShort;) {
    qsizetype length = std::min(rest.size(), injection::maxChunkSize);
    if (length < rest.size() && rest[length - 1].isHighSurrogate()) --length;
    session.pressTextAgain(rest.first(length));
    rest = rest.sliced(length);
    m_sleeper.sleepFor(injection::charDelay);
  }
}

void TextInjector::typeText(QStringView text, TypingSession& session) {
  while (!text.isEmpty() && !m_isCutShort) {
    const qsizetype length = lengthOfPiece(text);
    run(planText(text.first(length)), session);
    text = text.sliced(length);
  }
}

// Each letter that comes ahead of a backspace is deleted in place of one before it, so the deleting
// goes on until nothing more has come. Gives what is to be typed again.
QString TextInjector::deleteTyped(const TypedSince& typedSince, TypingSession& session) {
  QString toTypeAgain;
  qsizetype deleted = 0;
  for (int round = 0; round < mostRoundsOfDeletion && !m_isCutShort; ++round) {
    TypedSince::Text typed = typedSince.text();
    const qsizetype count = graphemeCount(typed.all);
    wipe(typed.all);
    if (count > deleted) toTypeAgain.swap(typed.rest);
    wipe(typed.rest);
    if (count <= deleted) break;
    run(planBackspaces(count - deleted), session);
    deleted = count;
  }
  return toTypeAgain;
}

void TextInjector::run(const InjectionActions& actions, TypingSession& session) {
  const ActionPerformer perform(session, m_sleeper);
  for (const InjectionAction& action : actions) {
    if (m_isCutShort) return;
    std::visit(perform, action);
  }
}

}  // namespace zarvy
