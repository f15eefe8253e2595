#include <gtest/gtest.h>

#include "base/text/CaseMapping.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

TEST(CaseMapping, IsTheFullOneOfUnicode) {
  EXPECT_EQ(upperCased(u"stra\u00DFe \uFB01 \u0149"_s), u"STRASSE FI \u02BCN"_s);
  EXPECT_EQ(lowerCased(u"\u0130 \u0391\u03A3 \u0391\u03A3\u0391"_s),
            u"i\u0307 \u03B1\u03C2 \u03B1\u03C3\u03B1"_s);
  EXPECT_EQ(upperCased(u"\U00010428"_s), u"\U00010400"_s);
  EXPECT_EQ(upperCased(QString()), QString());
}

TEST(CaseMapping, IsThatOfNoLanguage) {
  // An environment whose language has its own rules for i.
  const QByteArray before = qgetenv("LC_ALL");
  qputenv("LC_ALL", "tr_TR.UTF-8");
  EXPECT_EQ(upperCased(u"i"_s), u"I"_s);
  EXPECT_EQ(lowerCased(u"I"_s), u"i"_s);
  EXPECT_EQ(capitalized(u"istanbul"_s), u"Istanbul"_s);
  if (before.isNull()) {
    qunsetenv("LC_ALL");
  } else {
    qputenv("LC_ALL", before);
  }
}

TEST(CaseMapping, LeavesLoneSurrogatesAsTheyAre) {
  const QString high(QChar(0xD83D));
  const QString low(QChar(0xDE00));
  for (const QString& text : {high, low, low + high, u"X "_s + high + u"X"_s}) {
    EXPECT_EQ(upperCased(text), text);
    EXPECT_EQ(lowerCased(text).size(), text.size());
    EXPECT_EQ(capitalized(text), text);
  }
  EXPECT_EQ(upperCased(u"x"_s + high + u"x"_s), u"X"_s + high + u"X"_s);
}

TEST(CaseMapping, CapitalisesTheFirstLetterOfEachWord) {
  struct Row {
    QString text;
    QString expected;
  };
  for (const Row& row :
       {Row{u""_s, u""_s}, Row{u" \t"_s, u" \t"_s}, Row{u"ada LOVELACE"_s, u"Ada Lovelace"_s},
        Row{u"o'neill mary-jane"_s, u"O'neill Mary-jane"_s},
        Row{u"\"quoted\" (in) 3rd 42"_s, u"\"Quoted\" (In) 3Rd 42"_s},
        Row{u"a\nb\u00A0c\u2003d\r\ne"_s, u"A\nB\u00A0C\u2003D\r\nE"_s},
        Row{u"\u01C6 \uFB01t \u00DFa"_s, u"\u01C5 Fit Ssa"_s},
        Row{u"\u05D0b e\u0301COLE"_s, u"\u05D0b E\u0301cole"_s},
        Row{u"\U00010428\U00010400 \U0001F600ab"_s, u"\U00010400\U00010428 \U0001F600Ab"_s}}) {
    EXPECT_EQ(capitalized(row.text), row.expected);
  }
}

}  // namespace
}  // namespace zarvy
