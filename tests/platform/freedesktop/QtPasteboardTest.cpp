#include <QClipboard>
#include <QGuiApplication>
#include <QImage>

#include <gtest/gtest.h>

#include "platform/freedesktop/QtPasteboard.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

// On Qt's platform without a display, which has a clipboard of its own.
class QtPasteboardTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    static int count = 1;
    static char name[] = "freedesktop_test";
    static char* arguments[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    s_application = std::make_unique<QGuiApplication>(count, arguments);
  }
  static void TearDownTestSuite() { s_application.reset(); }

  static inline std::unique_ptr<QGuiApplication> s_application;
};

TEST_F(QtPasteboardTest, GivesTheTextAsItIs) {
  for (const QString& text : {u"plain"_s, u" two\r\nlines\t"_s, u"\u05D0 \U0001F600 e\u0301"_s}) {
    QGuiApplication::clipboard()->setText(text);
    EXPECT_EQ(QtPasteboard().text(), text);
  }
}

TEST_F(QtPasteboardTest, GivesNothingWhereThereIsNoText) {
  QGuiApplication::clipboard()->clear();
  EXPECT_EQ(QtPasteboard().text(), QString());
  QGuiApplication::clipboard()->setImage(QImage(2, 2, QImage::Format_RGB32));
  EXPECT_EQ(QtPasteboard().text(), QString());
}

}  // namespace
}  // namespace zarvy
