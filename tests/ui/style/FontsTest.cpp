#include <QFontDatabase>

#include <gtest/gtest.h>

#include "support/QtPrinters.h"
#include "ui/style/Fonts.h"

namespace zarvy {
namespace {

TEST(Fonts, ScaleInPointsAndInPixels) {
  QFont font;
  font.setPointSizeF(10);
  EXPECT_DOUBLE_EQ(scaledFont(font, 1.5).pointSizeF(), 15);
  font.setPixelSize(20);
  EXPECT_EQ(scaledFont(font, 0.85).pixelSize(), 17);
}

TEST(Fonts, KeepTheirSizeInTheFamilyOfFixedWidth) {
  QFont font;
  font.setPointSizeF(11.5);
  font.setWeight(QFont::Bold);
  const QFont fixed = monospaced(font);
  EXPECT_EQ(fixed.families(),
            QStringList{QFontDatabase::systemFont(QFontDatabase::FixedFont).family()});
  EXPECT_EQ(fixed.styleHint(), QFont::Monospace);
  EXPECT_DOUBLE_EQ(fixed.pointSizeF(), 11.5);
  EXPECT_EQ(fixed.weight(), QFont::Bold);
}

TEST(Fonts, TakeSizeWeightAndFamilyOfAStyle) {
  QFont font;
  font.setPixelSize(100);
  font.setWeight(QFont::Light);
  const QFont caption = styledFont(font, lettering::caption);
  EXPECT_EQ(caption.pixelSize(), 85);
  EXPECT_EQ(caption.weight(), QFont::Normal);
  EXPECT_EQ(caption.families(), font.families());
  const QFont badge = styledFont(font, lettering::badge);
  EXPECT_EQ(badge.pixelSize(), 85);
  EXPECT_EQ(badge.weight(), QFont::Medium);
  EXPECT_EQ(badge.families(), monospaced(font).families());
}

}  // namespace
}  // namespace zarvy
