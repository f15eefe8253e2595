#include <gtest/gtest.h>

#include "base/text/CanonicalGraphemes.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

struct Pair {
  QString first;
  QString second;
  bool isEquivalent;
};

const Pair pairs[] = {
    {u"a"_s, u"a"_s, true},
    {u"a"_s, u"A"_s, false},
    {u"\u00E9"_s, u"e\u0301"_s, true},
    {u"\u00E9"_s, u"e"_s, false},
    {u"\u00E9"_s, u"e\u0300"_s, false},
    {u"\u1EAD"_s, u"a\u0323\u0302"_s, true},
    {u"a\u0302\u0323"_s, u"a\u0323\u0302"_s, true},   // marks of different classes: order is free
    {u"a\u0300\u0301"_s, u"a\u0301\u0300"_s, false},  // of the same class: it is not
    {u"\u212B"_s, u"\u00C5"_s, true},
    {u"\u2126"_s, u"\u03A9"_s, true},
    {u"\uAC01"_s, u"\u1100\u1161\u11A8"_s, true},
    {u"\uFB01"_s, u"fi"_s, false},  // compatible, not equivalent
    {u"\u00B5"_s, u"\u03BC"_s, false},
    {QString(QChar(0xD83D)), QString(QChar(0xD83D)), true},
    {QString(QChar(0xD83D)), QString(QChar(0xD83E)), false},
    {u"\U0001F600"_s, u"\U0001F600"_s, true},
};

TEST(CanonicalGraphemes, NumberEquivalentCharactersAlike) {
  for (const Pair& pair : pairs) {
    CanonicalGraphemes numbers;
    const auto first = numbers.add(pair.first);
    EXPECT_EQ(numbers.add(pair.second) == first, pair.isEquivalent);
    EXPECT_EQ(canonicalDecomposition(pair.first) == canonicalDecomposition(pair.second),
              pair.isEquivalent);
  }
}

TEST(CanonicalGraphemes, FindWhatWasAddedInEitherForm) {
  for (const Pair& pair : pairs) {
    CanonicalGraphemes numbers;
    const auto first = numbers.add(pair.first);
    EXPECT_EQ(numbers.find(pair.second) == std::optional(first), pair.isEquivalent);
  }
}

TEST(CanonicalGraphemes, DoNotFindASequenceThatWasNeverAdded) {
  CanonicalGraphemes numbers;
  EXPECT_EQ(numbers.find(u"e\u0301"), std::nullopt);
  static_cast<void>(numbers.add(u"e\u0301"));
  EXPECT_NE(numbers.find(u"\u00E9"), std::nullopt);
  EXPECT_EQ(numbers.find(u"e\u0302"), std::nullopt);
}

}  // namespace
}  // namespace zarvy
