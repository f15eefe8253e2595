// A window with a password field above an ordinary one, which has the focus first. Each change of a
// field is a line on standard output: "secret" or "plain", a space, what the field holds.

#include <cstdio>

#include <QApplication>
#include <QFormLayout>
#include <QLineEdit>

using namespace Qt::Literals::StringLiterals;

namespace {

void tellChanges(const QLineEdit& field, const char* name) {
  QObject::connect(&field, &QLineEdit::textChanged, &field, [name](const QString& text) {
    std::printf("%s %s\n", name, text.toUtf8().constData());
    std::fflush(stdout);
  });
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QWidget window;
  window.setWindowTitle(u"Form"_s);
  QFormLayout layout(&window);
  QLineEdit secret;
  secret.setEchoMode(QLineEdit::Password);
  QLineEdit plain;
  layout.addRow(u"Secret"_s, &secret);
  layout.addRow(u"Plain"_s, &plain);
  tellChanges(secret, "secret");
  tellChanges(plain, "plain");
  plain.setFocus();
  window.show();
  return QApplication::exec();
}
