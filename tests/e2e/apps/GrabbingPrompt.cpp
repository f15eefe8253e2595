// A window with one field that takes the keyboard for itself as soon as it has it; with --unmanaged
// as soon as it is shown, and the window manager is kept out. That the keyboard is taken and each
// change of the field is a line on standard output; Return ends the program.

#include <cstdio>

#include <QApplication>
#include <QEvent>
#include <QLineEdit>
#include <QWindow>

using namespace Qt::Literals::StringLiterals;

namespace {

void take(QLineEdit& field) {
  field.grabKeyboard();
  std::puts("taken");
  std::fflush(stdout);
}

// Takes the keyboard once the window is to be seen: nobody gives it the focus.
class TakingWhenShown : public QObject {
 public:
  explicit TakingWhenShown(QLineEdit& field) : m_field(field) {}

 protected:
  bool eventFilter(QObject* window, QEvent* event) override {
    if (event->type() == QEvent::Expose && m_field.windowHandle()->isExposed()) {
      window->removeEventFilter(this);
      take(m_field);
    }
    return false;
  }

 private:
  QLineEdit& m_field;
};

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QLineEdit field;
  TakingWhenShown taking(field);
  field.setWindowTitle(u"Prompt"_s);
  QObject::connect(&field, &QLineEdit::textChanged, &field, [](const QString& text) {
    std::printf("prompt %s\n", text.toUtf8().constData());
    std::fflush(stdout);
  });
  QObject::connect(&field, &QLineEdit::returnPressed, &field, &QWidget::close);
  if (QApplication::arguments().contains(u"--unmanaged"_s)) {
    field.setWindowFlag(Qt::X11BypassWindowManagerHint);
    field.winId();  // has the window made
    field.windowHandle()->installEventFilter(&taking);
  } else {
    QObject::connect(&application, &QGuiApplication::focusWindowChanged, &field,
                     [&field](const QWindow* window) {
                       if (window != nullptr) take(field);
                     });
  }
  field.show();
  return QApplication::exec();
}
