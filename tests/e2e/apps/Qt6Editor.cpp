// A window with a QPlainTextEdit that tells its text and caret over a local socket at each change.

#include <QApplication>
#include <QLocalSocket>
#include <QPlainTextEdit>
#include <QTextCursor>

#include "e2e/apps/StateReport.h"

using namespace Qt::Literals::StringLiterals;

namespace {

void report(const QPlainTextEdit& editor, int clearCount, QLocalSocket& socket) {
  const QString text = editor.toPlainText();
  const auto caret = static_cast<std::size_t>(editor.textCursor().position());
  socket.write(QByteArray::fromStdString(zarvy::e2e::stateReport(
      clearCount,
      {reinterpret_cast<const char16_t*>(text.utf16()), static_cast<std::size_t>(text.size())},
      caret)));
  socket.flush();
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QLocalSocket socket;
  socket.connectToServer(qEnvironmentVariable("ZARVY_E2E_CHANNEL"));
  if (!socket.waitForConnected()) return 1;

  QPlainTextEdit editor;
  editor.setWindowTitle(u"Editor"_s);
  editor.resize(800, 600);
  int clearCount = 0;
  const auto tell = [&] { report(editor, clearCount, socket); };
  QObject::connect(&editor, &QPlainTextEdit::textChanged, &editor, tell);
  QObject::connect(&editor, &QPlainTextEdit::cursorPositionChanged, &editor, tell);
  QObject::connect(&socket, &QLocalSocket::readyRead, &editor, [&] {
    clearCount += static_cast<int>(socket.readAll().count('\n'));
    editor.clear();
    tell();
  });
  editor.show();
  tell();
  return QApplication::exec();
}
