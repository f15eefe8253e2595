#pragma once

#include <memory>
#include <optional>

#include <QList>
#include <QMap>
#include <QObject>
#include <QString>

#include "app/expansion/FillInWindow.h"
#include "app/expansion/QuickSearchWindow.h"
#include "base/LineOutput.h"
#include "base/Scheduler.h"
#include "core/CursorMarker.h"
#include "core/KeyboardMonitor.h"
#include "core/TextExpansionEngine.h"
#include "core/injection/TextInjector.h"
#include "core/injection/TypedSince.h"
#include "core/model/Snippet.h"
#include "core/placeholders/FillInField.h"
#include "platform/RunningApplication.h"
#include "platform/Workspace.h"
#include "stats/StatsStore.h"

namespace zarvy {

class Library;

// An expansion that waits for its form.
struct PendingExpansion {
  Snippet snippet;
  QList<FillInField> fields;
  std::optional<RunningApplication> targetApp;  // in front when the form was asked for
  qsizetype matchLength = 0;  // user-perceived characters to delete in front of the caret
  std::shared_ptr<TypedSince> typedSince;  // the trigger; none where nothing was typed

  bool operator==(const PendingExpansion&) const = default;
};

// What the roads of an expansion take. All of it outlives AppState and what AppState posts.
struct CoordinatorServices {
  KeyboardMonitor& monitor;
  TextExpansionEngine& engine;
  TextInjector& injector;
  Workspace& workspace;
  StatsStore& stats;
  FillInWindow& fillInWindow;
  QuickSearchWindow& quickSearchWindow;
  Scheduler& scheduler;
  LineOutput& output;
};

// The roads of an expansion: a typed trigger becomes text at once, or after a form; a snippet
// picked in quick search becomes text in the application that was in front. Decides nothing about
// whether expansion runs. A signal is raised only when a value has really changed. Main thread.
class ExpansionCoordinator final : public QObject {
  Q_OBJECT

 public:
  // Both outlive this object.
  ExpansionCoordinator(const Library& library, const CoordinatorServices& services);

  // Length of the latest match in user-perceived characters: what is to be deleted for it.
  [[nodiscard]] qsizetype pendingMatchLength() const { return m_pendingMatchLength; }

  // The expansion whose form is open; absent while none is.
  [[nodiscard]] const std::optional<PendingExpansion>& pendingExpansion() const {
    return m_pendingExpansion;
  }
  [[nodiscard]] bool showingFillInForm() const { return m_showingFillInForm; }

  // Expands the snippet whose trigger ends `buffer`, if there is one.
  void handlePotentialTrigger(const QString& buffer);

  // Opens the form for `fields`, once the caller has returned.
  void handleNeedsFillIn(const Snippet& snippet, const QList<FillInField>& fields);

  // Types the text of the open form, by the names of its fields, when its window has had the time
  // to close. Nothing where no form is open.
  void submitFillIn(const QMap<QString, QString>& values);

  // Closes the form; what was typed stays as it is. May be repeated.
  void cancelFillIn();

  // Opens the quick search panel for the application in front, or closes it.
  void toggleQuickSearch();

  // Closes the panel, if it is open.
  void hideQuickSearch();

  // Types what `snippet` becomes into `targetApp`.
  void expandFromQuickSearch(const Snippet& snippet,
                             const std::optional<RunningApplication>& targetApp);

 Q_SIGNALS:
  void pendingMatchLengthChanged();
  void pendingExpansionChanged();
  void showingFillInFormChanged();

 private:
  void openForm(const PendingExpansion& pending);
  void followTyping();
  void setPending(const std::optional<PendingExpansion>& pending);
  void setPendingMatchLength(qsizetype length);
  void typeLater(std::chrono::milliseconds delay, const PendingExpansion& expansion,
                 const ExpandedText& expanded);
  void type(const PendingExpansion& expansion, const ExpandedText& expanded);

  const Library& m_library;
  const CoordinatorServices m_services;
  qsizetype m_pendingMatchLength = 0;
  std::optional<PendingExpansion> m_pendingExpansion;
  bool m_showingFillInForm = false;
  std::optional<RunningApplication> m_calledBackApp;  // while a pick is being processed
  std::shared_ptr<TypedSince> m_typedSince;           // the trigger being processed
  std::weak_ptr<TypedSince> m_lastTypedSince;
};

}  // namespace zarvy
