#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "e2e/harness/PrivateXServer.h"
#include "e2e/harness/WaitUntil.h"
#include "e2e/harness/XConnection.h"
#include "platform/freedesktop/QtPasteboard.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

class OthersClipboard final : public Pasteboard {
 public:
  [[nodiscard]] QString text() const override { return u"another application's"_s; }
};

class QtPasteboardTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    static int count = 1;
    static char name[] = "freedesktop_test";
    static char* arguments[] = {name, nullptr};
    s_folder = std::make_unique<QTemporaryDir>();
    s_server = std::make_unique<e2e::PrivateXServer>(s_folder->path().toStdString());
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("DISPLAY", s_server->display().c_str());
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/dev/null");  // else one is started
    qputenv("QT_NO_XDG_DESKTOP_PORTAL", "1");  // a question to the bus that Qt 6.8 does not free
    s_application = std::make_unique<QGuiApplication>(count, arguments);
  }
  static void TearDownTestSuite() {
    s_application.reset();
    s_server.reset();
    s_folder.reset();
  }

  static inline std::unique_ptr<QTemporaryDir> s_folder;
  static inline std::unique_ptr<e2e::PrivateXServer> s_server;
  static inline std::unique_ptr<QGuiApplication> s_application;
  const OthersClipboard m_others;
  const QtPasteboard m_pasteboard{m_others};
};

TEST_F(QtPasteboardTest, GivesTheProgramsOwnTextAsItIs) {
  for (const QString& text : {u"plain"_s, u" two\r\nlines\t"_s, u"\u05D0 \U0001F600 e\u0301"_s}) {
    QGuiApplication::clipboard()->setText(text);
    EXPECT_EQ(m_pasteboard.text(), text);
  }
  QGuiApplication::clipboard()->setImage(QImage(2, 2, QImage::Format_RGB32));
  EXPECT_EQ(m_pasteboard.text(), QString());
}

TEST_F(QtPasteboardTest, GivesWhatAnotherApplicationHasCopiedSince) {
  QGuiApplication::clipboard()->setText(u"own"_s);
  // The toolkit takes what follows within the same millisecond of the server for older.
  const auto later = std::chrono::steady_clock::now() + std::chrono::milliseconds(3);
  ASSERT_TRUE(e2e::waitUntil([&] { return std::chrono::steady_clock::now() >= later; },
                             std::chrono::seconds(30), std::chrono::milliseconds(1)));
  const e2e::XConnection other(s_server->display());
  const xcb_window_t window = xcb_generate_id(other.get());
  xcb_create_window(other.get(), XCB_COPY_FROM_PARENT, window, other.root(), 0, 0, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
  xcb_set_selection_owner(other.get(), window, other.atom("CLIPBOARD"), XCB_CURRENT_TIME);
  other.synchronise();
  const auto isTheOthers = [&] {
    QCoreApplication::processEvents();
    return m_pasteboard.text() == u"another application's";
  };
  EXPECT_TRUE(e2e::waitUntil(isTheOthers, std::chrono::seconds(30), std::chrono::milliseconds(2)));
}

}  // namespace
}  // namespace zarvy
