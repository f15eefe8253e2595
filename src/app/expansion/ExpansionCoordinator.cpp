#include "app/expansion/ExpansionCoordinator.h"

#include <QPointer>

#include "app/library/AssignIfChanged.h"
#include "app/library/Library.h"
#include "base/text/Graphemes.h"
#include "core/CursorMarker.h"
#include "core/model/Folder.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

constexpr qsizetype printedLength = 50;  // user-perceived characters

// The window of the form has that long to close.
constexpr std::chrono::milliseconds delayAfterForm{100};

// The application that was in front has that long to come back.
constexpr std::chrono::milliseconds delayAfterQuickSearch{300};

}  // namespace

ExpansionCoordinator::ExpansionCoordinator(const Library& library,
                                           const CoordinatorServices& services)
    : m_library(library), m_services(services) {}

void ExpansionCoordinator::handlePotentialTrigger(const QString& buffer) {
  const auto match = m_services.engine.findMatch(buffer);
  if (!match) return;
  m_services.monitor.clearBuffer();
  followTyping();
  const qsizetype matchLength = graphemeCount(match->matchedString);
  setPendingMatchLength(matchLength);
  const auto expanded = m_services.engine.processSnippet(match->snippet, match->captures);
  const auto typedSince = std::exchange(m_typedSince, nullptr);
  if (!expanded) return;
  const QString beginning = firstGraphemes(expanded->text, printedLength).toString();
  m_services.output.print(u"EXPANDING to: '"_s + beginning + u"...'"_s);
  type({match->snippet, {}, std::nullopt, matchLength, typedSince}, *expanded);
}

// What is typed behind this trigger. Of an earlier one that is being expanded still, this trigger
// is a part of what was typed behind it, and two hands cannot put it right.
void ExpansionCoordinator::followTyping() {
  if (const auto last = m_lastTypedSince.lock()) last->lose();
  m_typedSince = m_services.monitor.typedSinceOffer();
  m_lastTypedSince = m_typedSince;
}

// The application is asked for now: the form is about to take its place in front. One that was
// called back to the front may still be on its way there.
void ExpansionCoordinator::handleNeedsFillIn(const Snippet& snippet,
                                             const QList<FillInField>& fields) {
  const auto target =
      m_calledBackApp ? m_calledBackApp : m_services.workspace.frontmostApplication();
  m_services.scheduler.post(
      [weak = QPointer(this), snippet, fields, target, typedSince = m_typedSince] {
        if (weak) weak->openForm({snippet, fields, target, weak->m_pendingMatchLength, typedSince});
      });
}

void ExpansionCoordinator::openForm(const PendingExpansion& pending) {
  m_services.fillInWindow
      .close();  // of an earlier one, whose end must not take this one for its own
  setPending(pending);
  const QPointer weak(this);
  m_services.fillInWindow.show(
      pending.snippet, folderColorOf(pending.snippet, m_library.folders()),
      [typedSince = pending.typedSince] {
        return typedSince ? typedSince->takeForForm() : QString();
      },
      [weak](const QMap<QString, QString>& values) {
        if (weak) weak->submitFillIn(values);
      },
      [weak] {
        if (weak) weak->cancelFillIn();
      });
}

void ExpansionCoordinator::submitFillIn(const QMap<QString, QString>& values) {
  if (!m_pendingExpansion) return;
  const PendingExpansion pending = *m_pendingExpansion;
  const ExpandedText expanded =
      resolveCursorMarker(m_services.engine.applyFillInValues(pending.snippet, values));
  setPending(std::nullopt);
  typeLater(delayAfterForm, pending, expanded);
}

void ExpansionCoordinator::cancelFillIn() {
  setPending(std::nullopt);
  m_services.fillInWindow.close();
}

void ExpansionCoordinator::toggleQuickSearch() {
  const auto target = m_services.workspace.frontmostApplication();
  QuickSearchWindow& window = m_services.quickSearchWindow;
  if (window.isVisible()) return window.hide();
  window.show(m_library.snippets(), m_library.folders(),
              [weak = QPointer(this), target](const Snippet& snippet) {
                if (weak) weak->expandFromQuickSearch(snippet, target);
              });
}

void ExpansionCoordinator::hideQuickSearch() {
  if (m_services.quickSearchWindow.isVisible()) m_services.quickSearchWindow.hide();
}

void ExpansionCoordinator::expandFromQuickSearch(
    const Snippet& snippet, const std::optional<RunningApplication>& targetApp) {
  setPendingMatchLength(0);
  if (targetApp) m_services.workspace.activate(*targetApp);
  m_calledBackApp = targetApp;
  const auto expanded = m_services.engine.processSnippet(snippet, {});
  m_calledBackApp.reset();
  if (!expanded) return;
  typeLater(delayAfterQuickSearch, {snippet, {}, targetApp, 0, nullptr}, *expanded);
}

void ExpansionCoordinator::typeLater(std::chrono::milliseconds delay,
                                     const PendingExpansion& expansion,
                                     const ExpandedText& expanded) {
  m_services.scheduler.postAfter(delay, [weak = QPointer(this), expansion, expanded] {
    if (weak) weak->type(expansion, expanded);
  });
}

// Counted at once: there is no news of whether the text arrives.
void ExpansionCoordinator::type(const PendingExpansion& expansion, const ExpandedText& expanded) {
  m_services.injector.inject(expanded.text, expansion.matchLength, expansion.targetApp,
                             expanded.cursorOffset, expansion.typedSince);
  m_services.stats.recordExpansion(expansion.snippet, graphemeCount(expanded.text));
}

// The form's two properties change together; listeners hear of it when both have.
void ExpansionCoordinator::setPending(const std::optional<PendingExpansion>& pending) {
  const bool expansionChanged = assignIfChanged(m_pendingExpansion, pending);
  const bool showingChanged = assignIfChanged(m_showingFillInForm, pending.has_value());
  if (expansionChanged) Q_EMIT pendingExpansionChanged();
  if (showingChanged) Q_EMIT showingFillInFormChanged();
}

void ExpansionCoordinator::setPendingMatchLength(qsizetype length) {
  if (assignIfChanged(m_pendingMatchLength, length)) Q_EMIT pendingMatchLengthChanged();
}

}  // namespace zarvy
