#pragma once

#include <functional>
#include <memory>

#include <QObject>

#include "app/expansion/QuickSearchWindow.h"
#include "base/Scheduler.h"
#include "ui/window/Panel.h"

class QWindow;

namespace zarvy {

class FloatingPanel;
class Workspace;

// What quick search works with. All of it outlives the controller and its panel.
struct QuickSearchServices {
  Scheduler& scheduler;
  Workspace& workspace;

  // A compositor runs, so that a window may let through what is behind it. Asked each time that
  // the panel opens.
  std::function<bool()> hasCompositor = [] { return false; };

  // The panel is there for a moment: taskbars and pagers have no entry for it. Called with its
  // native window before this comes to the screen.
  std::function<void(quint64 nativeWindow)> keepOutOfTaskbar = [](quint64) {};
};

// Opens quick search in a panel above the other windows, which goes as soon as the user turns to
// another application. The end of the controller takes an open panel away.
class QuickSearchWindowController final : public QObject, public QuickSearchWindow {
  Q_OBJECT

 public:
  explicit QuickSearchWindowController(QuickSearchServices services);
  ~QuickSearchWindowController() override;
  QuickSearchWindowController(const QuickSearchWindowController&) = delete;
  QuickSearchWindowController& operator=(const QuickSearchWindowController&) = delete;

  [[nodiscard]] bool isVisible() const override;
  void hide() override;
  void show(const SnippetList& snippets, const QList<Folder>& folders, OnSelect onSelect) override;

 private:
  [[nodiscard]] OnSelect wrapped(const OnSelect& onSelect);
  [[nodiscard]] std::function<void()> onDismiss();
  void followKeyboard(const QWindow* window);
  void followActivity(Qt::ApplicationState state);
  void hideWhereUserHasLeft();

  const QuickSearchServices m_services;
  PanelPtr<FloatingPanel> m_panel;
  std::shared_ptr<const WindowDelegate> m_windowDelegate;  // the panel does not keep it alive
  TaskHandle m_secondRequest;                              // for the keyboard
  TaskHandle m_absence;                                    // looks which window has the keyboard
  bool m_hasHadKeyboard = false;                           // the panel that is open
  quint64 m_opening = 0;                                   // counts the panels
};

}  // namespace zarvy
