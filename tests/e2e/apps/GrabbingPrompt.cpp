// A window with one field that takes the keyboard for itself as soon as it has it. Each change of
// the field is a line on standard output; Return ends the program.

#include <cstdio>

#include <QApplication>
#include <QLineEdit>
#include <QWindow>

using namespace Qt::Literals::StringLiterals;

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QLineEdit field;
  field.setWindowTitle(u"Prompt"_s);
  QObject::connect(&field, &QLineEdit::textChanged, &field, [](const QString& text) {
    std::printf("prompt %s\n", text.toUtf8().constData());
    std::fflush(stdout);
  });
  QObject::connect(&field, &QLineEdit::returnPressed, &field, &QWidget::close);
  QObject::connect(&application, &QGuiApplication::focusWindowChanged, &field,
                   [&field](const QWindow* window) {
                     if (window != nullptr) field.grabKeyboard();
                   });
  field.show();
  return QApplication::exec();
}
