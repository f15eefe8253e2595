#include <gtest/gtest.h>

#include "core/model/FolderColor.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

struct Row {
  FolderColor color;
  QString rawText;
  TextShade textShade;
};

const Row table[] = {
    {FolderColor::red, u"red"_s, TextShade::white},
    {FolderColor::orange, u"orange"_s, TextShade::black},
    {FolderColor::yellow, u"yellow"_s, TextShade::black},
    {FolderColor::green, u"green"_s, TextShade::black},
    {FolderColor::blue, u"blue"_s, TextShade::white},
    {FolderColor::purple, u"purple"_s, TextShade::white},
    {FolderColor::pink, u"pink"_s, TextShade::black},
    {FolderColor::gray, u"gray"_s, TextShade::white},
};

TEST(FolderColor, IsOneOfEightInTheOrderOfThePickers) {
  ASSERT_EQ(allFolderColors.size(), std::size(table));
  for (std::size_t index = 0; index < allFolderColors.size(); ++index) {
    EXPECT_EQ(allFolderColors[index], table[index].color);
    EXPECT_EQ(rawText(allFolderColors[index]), table[index].rawText);
    EXPECT_EQ(folderColorFromRawText(table[index].rawText), table[index].color);
  }
}

TEST(FolderColor, IsNotReadFromAnyOtherText) {
  for (const QString& text : {u""_s, u"teal"_s, u"Red"_s, u"RED"_s, u" red"_s, u"grey"_s}) {
    EXPECT_EQ(folderColorFromRawText(text), std::nullopt);
  }
}

TEST(FolderColor, HashesAsItsRawText) {
  for (const Row& row : table) {
    EXPECT_EQ(qHash(row.color), qHash(row.rawText));
    EXPECT_EQ(qHash(row.color, 7), qHash(row.rawText, 7));
    EXPECT_EQ(std::hash<FolderColor>()(row.color), qHash(row.rawText));
  }
}

TEST(FolderColor, HasAContrastingTextColor) {
  for (const Row& row : table) EXPECT_EQ(contrastingTextColor(row.color), row.textShade);
  EXPECT_EQ(contrastingTextColor(std::nullopt), TextShade::white);
}

}  // namespace
}  // namespace zarvy
