#pragma once

#include <QComboBox>
#include <QStringList>

namespace zarvy {

// A choice among texts. Shows none of them while the value is none of them.
class OptionPicker final : public QComboBox {
  Q_OBJECT

 public:
  OptionPicker(const QStringList& options, const QString& value, QWidget* parent);

 Q_SIGNALS:
  void picked(const QString& option);

 protected:
  void wheelEvent(QWheelEvent* event) override;
};

}  // namespace zarvy
