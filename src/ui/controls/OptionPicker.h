#pragma once

#include <QComboBox>
#include <QStringList>

namespace zarvy {

// A choice among texts. Shows none of them while the value is none of them.
class OptionPicker final : public QComboBox {
  Q_OBJECT

 public:
  OptionPicker(const QStringList& options, const QString& value, QWidget* parent);

  bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
  void picked(const QString& option);

 protected:
  void wheelEvent(QWheelEvent* event) override;
};

}  // namespace zarvy
