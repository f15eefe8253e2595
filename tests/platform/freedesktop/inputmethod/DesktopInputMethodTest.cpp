// Which keys an input method takes, on buses of their own with services that are parts of the test.

#include <algorithm>
#include <array>
#include <future>
#include <memory>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>

#include "platform/freedesktop/inputmethod/DesktopInputMethod.h"
#include "platform/freedesktop/inputmethod/FakeFcitx5.h"
#include "platform/freedesktop/inputmethod/FakeIBus.h"
#include "platform/freedesktop/inputmethod/IBus.h"
#include "support/EnvironmentVariable.h"
#include "support/QtPrinters.h"

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

const QString focused =
    u"Group [x11::0] has 2 InputContext(s)\n"
    "  IC [a] program:mousepad frontend:dbus cap:52 focus:1\n"
    "  IC [b] program:firefox frontend:dbus cap:52 focus:0\n"_s;
const QString unfocused =
    u"Group [x11::0] has 1 InputContext(s)\n"
    "  IC [a] program:mousepad frontend:dbus cap:52 focus:0\n"_s;

class InputMethodTest : public testing::Test {
 protected:
  void startFcitx(const QString& currentInputMethod, const QString& debugInfo = focused) {
    if (!m_fcitx) m_fcitx = std::make_unique<FakeFcitx5>(m_session.address());
    m_fcitx->currentInputMethod = currentInputMethod;
    m_fcitx->debugInfo = debugInfo;
  }

  void startIBus(const QString& engine) {
    m_ibus = std::make_unique<FakeIBus>();
    m_ibus->globalEngine = engine;
    m_ibusAddress = m_ibus->address();
  }

  // The services are on this thread, and answer meanwhile.
  [[nodiscard]] bool isComposing(std::chrono::milliseconds patience = 30s,
                                 std::chrono::milliseconds limit = 30s) {
    if (!m_inputMethod) {
      m_inputMethod = std::make_unique<DesktopInputMethod>(
          DesktopInputMethod::Options{.sessionAddress = m_session.address(),
                                      .ibusAddress = [this] { return m_ibusAddress; },
                                      .patience = patience,
                                      .limit = limit});
    }
    auto answer = std::async(std::launch::async, [this] { return m_inputMethod->isComposing(); });
    QTimer wakeUp;
    wakeUp.start(1ms);
    while (answer.wait_for(0s) != std::future_status::ready) {
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return answer.get();
  }

  int m_argc = 1;
  std::array<char, 6> m_name{"tests"};
  std::array<char*, 2> m_argv{m_name.data(), nullptr};
  QCoreApplication m_application{m_argc, m_argv.data()};
  BusDaemon m_session;
  std::unique_ptr<FakeFcitx5> m_fcitx;
  std::unique_ptr<FakeIBus> m_ibus;
  QString m_ibusAddress;
  std::unique_ptr<DesktopInputMethod> m_inputMethod;
};

TEST_F(InputMethodTest, DoesNotComposeWhereThereIsNone) {
  EXPECT_FALSE(isComposing());
}

TEST_F(InputMethodTest, OfFcitxComposesUnlessItIsAPlainKeyboard) {
  startFcitx(u"pinyin"_s);
  EXPECT_TRUE(isComposing());
  startFcitx(u"keyboard-us"_s);
  EXPECT_FALSE(isComposing());
  startFcitx(u"keyboard-de-nodeadkeys"_s);
  EXPECT_FALSE(isComposing());
  startFcitx(u"mozc"_s);
  EXPECT_TRUE(isComposing());
  startFcitx(u""_s);
  EXPECT_FALSE(isComposing());
}

TEST_F(InputMethodTest, OfFcitxComposesOnlyWhereAnApplicationUsesIt) {
  startFcitx(u"pinyin"_s, unfocused);
  EXPECT_FALSE(isComposing());
  startFcitx(u"pinyin"_s, u"as no version of it says"_s);
  EXPECT_TRUE(isComposing());
}

TEST_F(InputMethodTest, OfIBusComposesUnlessItIsAPlainKeyboard) {
  startIBus(u"libpinyin"_s);
  EXPECT_TRUE(isComposing());
  m_ibus->globalEngine = u"xkb:us::eng"_s;
  EXPECT_FALSE(isComposing());
  m_ibus->globalEngine = u"anthy"_s;
  EXPECT_TRUE(isComposing());
  m_ibus->globalEngine = u""_s;
  EXPECT_FALSE(isComposing());
}

TEST_F(InputMethodTest, OfIBusIsFoundAgainWhenItWasStartedAgain) {
  EXPECT_FALSE(isComposing());
  startIBus(u"libpinyin"_s);
  EXPECT_TRUE(isComposing());
  m_ibus.reset();
  EXPECT_FALSE(isComposing());
  startIBus(u"libpinyin"_s);
  EXPECT_TRUE(isComposing());
}

// It answers in the place of ibus too.
TEST_F(InputMethodTest, OfFcitxIsAskedAheadOfIBus) {
  startFcitx(u"keyboard-us"_s);
  startIBus(u"libpinyin"_s);
  EXPECT_FALSE(isComposing());
}

// Three questions in vain take far less than a call waits by itself, which is 25 s.
constexpr auto patience = 1000ms;
constexpr qint64 soon = 15'000;

// What it would make of the keys is not known, nor whether it takes any.
TEST_F(InputMethodTest, OfFcitxThatHangsComposesAndIsNotWaitedFor) {
  startFcitx(u"keyboard-us"_s);
  ASSERT_FALSE(isComposing());
  m_inputMethod.reset();
  m_fcitx->answers = false;
  QElapsedTimer timer;
  timer.start();
  for (int time = 0; time < 3; ++time) EXPECT_TRUE(isComposing(patience, 2 * patience));
  EXPECT_GE(m_fcitx->questionCount(), 2);
  m_inputMethod.reset();
  EXPECT_LT(timer.elapsed(), soon);
}

TEST_F(InputMethodTest, OfIBusThatHangsComposesAndIsNotWaitedFor) {
  startIBus(u"xkb:us::eng"_s);
  ASSERT_FALSE(isComposing(patience, 2 * patience));
  m_ibus->answers = false;
  QElapsedTimer timer;
  timer.start();
  for (int time = 0; time < 3; ++time) EXPECT_TRUE(isComposing());
  m_inputMethod.reset();
  EXPECT_LT(timer.elapsed(), soon);
}

// The kernel takes the connection, and no answer comes.
TEST_F(InputMethodTest, IsNotWaitedForWhereTheBusOfIBusHangs) {
  const QTemporaryDir folder;
  const QByteArray path = QFile::encodeName(folder.filePath(u"socket"_s));
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::copy(path.begin(), path.end(), address.sun_path);
  const int listener = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  ASSERT_EQ(::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  ASSERT_EQ(::listen(listener, 5), 0);
  m_ibusAddress = u"unix:path="_s + QFile::decodeName(path);
  QElapsedTimer timer;
  timer.start();
  for (int time = 0; time < 3; ++time) EXPECT_FALSE(isComposing(patience, 2 * patience));
  m_inputMethod.reset();
  EXPECT_LT(timer.elapsed(), soon);
  ::close(listener);
}

class IBusAddressTest : public testing::Test {
 protected:
  // As ibus names the file for this machine and a display.
  void writeAddress(const QString& displayPart, const QByteArray& content) const {
    const QString folder = m_folder.filePath(u"ibus/bus"_s);
    ASSERT_TRUE(QDir().mkpath(folder));
    QFile file(folder + u'/' + QString::fromLatin1(QDBusConnection::localMachineId()) + u'-' +
               displayPart);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }

  QTemporaryDir m_folder;
  const EnvironmentVariable m_config{"XDG_CONFIG_HOME", m_folder.path().toUtf8()};
  const EnvironmentVariable m_address{"IBUS_ADDRESS"};
  const EnvironmentVariable m_addressFile{"IBUS_ADDRESS_FILE"};
};

const QByteArray addressLines =
    "# This file is created by ibus-daemon, please do not modify it.\n"
    "# If the IBUS_ADDRESS environment variable is set, it will\n"
    "IBUS_ADDRESS=unix:abstract=/home/you/.cache/ibus/dbus-o21POlW2,guid=40bd\n"
    "IBUS_DAEMON_PID=24231\n";
const QString addressInFile = u"unix:abstract=/home/you/.cache/ibus/dbus-o21POlW2,guid=40bd"_s;

TEST_F(IBusAddressTest, IsReadFromTheFileOfTheDisplay) {
  writeAddress(u"unix-7"_s, addressLines);
  for (const QByteArray display : {":7", ":7.0", ":7.1"}) {
    const EnvironmentVariable inForce("DISPLAY", display);
    EXPECT_EQ(ibusAddress(), addressInFile) << display.toStdString();
  }
  for (const QByteArray display : {":8", "far:7", ""}) {
    const EnvironmentVariable inForce("DISPLAY", display);
    EXPECT_EQ(ibusAddress(), QString()) << display.toStdString();
  }
  writeAddress(u"far-7"_s, addressLines);
  const EnvironmentVariable inForce("DISPLAY", "far:7.0");
  EXPECT_EQ(ibusAddress(), addressInFile);
}

TEST_F(IBusAddressTest, IsTakenFromTheEnvironmentFirst) {
  writeAddress(u"unix-7"_s, addressLines);
  const EnvironmentVariable display("DISPLAY", ":7");
  const EnvironmentVariable address("IBUS_ADDRESS", "unix:path=/run/ibus");
  EXPECT_EQ(ibusAddress(), u"unix:path=/run/ibus"_s);
}

}  // namespace
}  // namespace zarvy
