// Puts its first argument on the clipboard, says "owned" and serves it until it is ended.

#include <iostream>

#include <QClipboard>
#include <QGuiApplication>

int main(int argc, char** argv) {
  const QGuiApplication application(argc, argv);
  QClipboard& clipboard = *QGuiApplication::clipboard();
  clipboard.setText(QGuiApplication::arguments().value(1), QClipboard::Clipboard);
  clipboard.setText(QStringLiteral("only selected"), QClipboard::Selection);
  if (!clipboard.ownsClipboard() || !clipboard.ownsSelection()) return 1;
  std::cout << "owned" << std::endl;
  return QGuiApplication::exec();
}
