#pragma once

#include <functional>

#include <QWidget>

class QLabel;
class QVBoxLayout;

namespace zarvy {

class AppState;

// Leads the user to the permission without which nothing expands. Looks whether it is there when it
// opens and when it is told to, not by itself.
class PermissionRequestView final : public QWidget {
  Q_OBJECT

 public:
  // `getStarted` is called once this window has closed. `state` outlives it.
  PermissionRequestView(AppState& state, std::function<void()> getStarted);

  // Of a width of its own, and as high as its words take.
  [[nodiscard]] QSize sizeHint() const override;

 private:
  void addExplanation(QVBoxLayout& column);
  [[nodiscard]] QWidget* makeGranted();
  [[nodiscard]] QWidget* makeMissing();
  void check();
  void showWhatHolds();

  AppState& m_state;
  const std::function<void()> m_getStarted;
  QLabel* m_reason = nullptr;  // those are of m_missing
  QLabel* m_remedy = nullptr;
  QWidget* m_granted;
  QWidget* m_missing;
};

}  // namespace zarvy
