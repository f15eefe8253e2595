#include <gtest/gtest.h>

#include "base/text/Wipe.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

// Not a literal, which is shared with the program.
QString ownText(QStringView text) {
  return text.toString();
}

TEST(Wipe, LeavesNothingOfTheUnitsInTheirPlace) {
  QString text = ownText(u"secret");
  const QChar* place = text.constData();
  wipe(text);
  EXPECT_EQ(text.constData(), place);
  EXPECT_EQ(text, QString(6, QChar(0)));
}

TEST(Wipe, BeginsWhereItIsTold) {
  QString text = ownText(u"secret");
  wipe(text, 4);
  EXPECT_EQ(text, u"secr"_s + QString(2, QChar(0)));
  wipe(text, 6);
  EXPECT_EQ(text, u"secr"_s + QString(2, QChar(0)));
}

TEST(Wipe, LeavesASharedTextToTheOthers) {
  QString text = ownText(u"shared");
  const QString other = text;
  wipe(text);
  EXPECT_EQ(other, u"shared"_s);
  QString none;
  wipe(none);
  EXPECT_EQ(none, QString());
}

}  // namespace
}  // namespace zarvy
