#include <gtest/gtest.h>

#include "base/text/CaseInsensitiveSearch.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

struct Row {
  QString wanted;
  QString text;
  bool isIn;
  QByteArray locale = "en_US";
};

TEST(CaseInsensitiveSearch, FindsATextWhateverItsCaseAndComposition) {
  const QList<Row> rows{
      {u"sig"_s, u"My SIGnature"_s, true},
      {u"SIG"_s, u";sig"_s, true},
      {u"sig"_s, u"s ig"_s, false},
      {u""_s, u"any"_s, true},
      {u""_s, u""_s, true},
      {u"a"_s, u""_s, false},
      {u"ÄRGER"_s, u"kein ärger"_s, true},
      {u"STRASSE"_s, u"Hauptstraße"_s, true},
      {u"straße"_s, u"HAUPTSTRASSE"_s, true},
      {u"\u00e9"_s, u"cafe\u0301"_s, true},
      {u"E\u0301"_s, u"caf\u00e9"_s, true},
      {u"e"_s, u"caf\u00e9"_s, false},
      {u"e"_s, u"caf\u00e9 noire"_s, true},
      {u"ΣΟΦΟΣ"_s, u"σοφος"_s, true},
      {u"😀"_s, u"a 😀 b"_s, true},
      {u"\\.*"_s, u"a\\.*b"_s, true},
  };
  for (const Row& row : rows) {
    const CaseInsensitiveSearch search(row.wanted, row.locale);
    EXPECT_EQ(search.isIn(row.text), row.isIn)
        << row.wanted.toStdString() << " in " << row.text.toStdString();
    EXPECT_EQ(search.isInFolded(CaseInsensitiveSearch::folded(row.text, row.locale)), row.isIn);
  }
}

TEST(CaseInsensitiveSearch, KnowsTheFourLettersIOfTurkish) {
  const QList<Row> rows{
      {u"izmir"_s, u"İZMİR"_s, true, "tr_TR"},  {u"izmir"_s, u"I\u0307ZMI\u0307R"_s, true, "az"},
      {u"izmir"_s, u"IZMIR"_s, false, "tr_TR"}, {u"ılık"_s, u"ILIK"_s, true, "tr"},
      {u"ilik"_s, u"ILIK"_s, true, "en_US"},    {u"ilik"_s, u"ILIK"_s, true, "trv_TW"},
  };
  for (const Row& row : rows) {
    const CaseInsensitiveSearch search(row.wanted, row.locale);
    EXPECT_EQ(search.isIn(row.text), row.isIn)
        << row.wanted.toStdString() << " in " << row.text.toStdString();
    EXPECT_EQ(search.isInFolded(CaseInsensitiveSearch::folded(row.text, row.locale)), row.isIn);
  }
}

}  // namespace
}  // namespace zarvy
