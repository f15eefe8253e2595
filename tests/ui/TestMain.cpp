#include <cstdio>
#include <memory>
#include <utility>

#include <QApplication>
#include <QMutex>
#include <QStringList>

#include <gtest/gtest.h>

namespace {

// What Qt has complained of during a test fails it.
class Complaints final : public testing::EmptyTestEventListener {
 public:
  static void note(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message) {
    std::fprintf(stderr, "%s\n", message.toLocal8Bit().constData());
    if (type == QtDebugMsg || type == QtInfoMsg || isOfNoDisplay(message)) return;
    const QMutexLocker guard(&lock());
    all().append(message);
  }

  void OnTestStart(const testing::TestInfo& /*test*/) override { take(); }

  void OnTestEnd(const testing::TestInfo& /*test*/) override {
    for (const QString& message : take()) {
      ADD_FAILURE() << "unexpected line: " << message.toStdString();
    }
  }

 private:
  // Without a display no window can be above another.
  static bool isOfNoDisplay(const QString& message) {
    return message.startsWith(QLatin1String("This plugin does not support "));
  }

  static QStringList take() {
    const QMutexLocker guard(&lock());
    return std::exchange(all(), {});
  }

  static QStringList& all() {
    static QStringList messages;
    return messages;
  }

  static QMutex& lock() {
    static QMutex mutex;
    return mutex;
  }
};

}  // namespace

// The tests of the windows want an application around them, and no display.
int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
#ifdef ZARVY_TEST_SCREENS
  qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" ZARVY_TEST_SCREENS);
#else
  qputenv("QT_QPA_PLATFORM", qEnvironmentVariableIsSet("ZARVY_TEST_DISPLAY") ? "xcb" : "offscreen");
#endif
  const QApplication application(argc, argv);
  qInstallMessageHandler(&Complaints::note);
  testing::UnitTest::GetInstance()->listeners().Append(std::make_unique<Complaints>().release());
  return RUN_ALL_TESTS();
}
