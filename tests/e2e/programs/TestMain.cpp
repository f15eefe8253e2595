#include <QCoreApplication>

#include <gmock/gmock.h>

// Qt's D-Bus wants an application object; nothing of it runs an event loop.
int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  testing::InitGoogleMock(&argc, argv);
  const int result = RUN_ALL_TESTS();
  // A filter that fits nothing must not pass for success.
  return testing::UnitTest::GetInstance()->test_to_run_count() == 0 ? 2 : result;
}
