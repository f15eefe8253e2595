#include <QCoreApplication>

#include <gmock/gmock.h>

// Qt's D-Bus wants an application object; nothing of it runs an event loop.
int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
