// zarvy_e2e_lying_application <address of the accessibility bus>: a program without a window that
// says twenty times that a plain field of its own has the keyboard, prints "told", and answers what
// it is asked to that effect.

#include <cstdio>

#include <QCoreApplication>
#include <QTimer>

#include "platform/freedesktop/accessibility/FakeApplication.h"

using namespace Qt::Literals::StringLiterals;

int main(int argc, char* argv[]) {
  const QCoreApplication application(argc, argv);
  constexpr uint entry = 79;
  const QString field = u"/plain"_s;
  zarvy::FakeApplication liar(QString::fromLocal8Bit(argv[argc - 1]));
  liar.setRole(field, entry);
  liar.setFocused(field);
  liar.setActive(true);
  int count = 0;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, [&] {
    liar.tellActivatedWindow();
    liar.tellFocus(field, true);
    constexpr int enough = 20;
    if (++count < enough) return;
    timer.stop();
    std::puts("told");
    std::fflush(stdout);
  });
  timer.start(std::chrono::milliseconds(20));
  return QCoreApplication::exec();
}
