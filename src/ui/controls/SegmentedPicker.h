#pragma once

#include <QStringList>
#include <QWidget>

class QButtonGroup;

namespace zarvy {

// A choice among few, all of which show; Tab comes to the chosen one, and the arrow keys go on from
// there.
class SegmentedPicker final : public QWidget {
  Q_OBJECT

 public:
  // `name` is what a screen reader calls it. The first of `segments` is chosen.
  SegmentedPicker(const QString& name, const QStringList& segments, QWidget* parent);

  [[nodiscard]] int currentIndex() const;
  void setCurrentIndex(int index);

 Q_SIGNALS:
  // Another one than before is chosen.
  void picked(int index);

 private:
  QButtonGroup* m_segments;
};

}  // namespace zarvy
