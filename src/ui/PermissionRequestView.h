#pragma once

#include <functional>

#include <QWidget>

class QLabel;
class QVBoxLayout;

namespace zarvy {

class ExpansionService;

// Leads the user to the permission without which nothing expands. Looks whether it is there when it
// opens and when it is told to, not by itself.
class PermissionRequestView final : public QWidget {
  Q_OBJECT

 public:
  // `getStarted` is called once this window has closed. `expansion` outlives it.
  PermissionRequestView(ExpansionService& expansion, std::function<void()> getStarted);

  // Of a width of its own, and as high as its words take.
  [[nodiscard]] QSize sizeHint() const override;

 private:
  void addExplanation(QVBoxLayout& column);
  [[nodiscard]] QWidget* makeGranted();
  [[nodiscard]] QWidget* makeMissing();
  void check();
  void showWhatHolds();

  ExpansionService& m_expansion;
  const std::function<void()> m_getStarted;
  QLabel* m_reason = nullptr;  // those are of m_missing
  QLabel* m_remedy = nullptr;
  QWidget* m_granted;
  QWidget* m_missing;
};

}  // namespace zarvy
