#include <gtest/gtest.h>

#include "core/injection/TypedSince.h"
#include "support/OwnMemory.h"
#include "support/QtPrinters.h"

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;

class TypedSinceTest : public testing::Test {
 protected:
  void type(const QString& text) {
    for (const QChar character : text) m_now.append(QStringView(&character, 1));
  }

  TypedSinceNow m_now;
};

TEST_F(TypedSinceTest, HoldsWhatWasTypedBehindItsBeginning) {
  type(u"a"_s);
  const auto first = m_now.begin();
  type(u"b "_s);
  const auto second = m_now.begin();
  type(u"c"_s);
  EXPECT_EQ(first->text().all, u"b c"_s);
  EXPECT_EQ(second->text().all, u"c"_s);
  m_now.removeLast();
  m_now.removeLast();
  EXPECT_EQ(first->text().all, u"b"_s);
}

TEST_F(TypedSinceTest, KnowsNothingOnceTheCaretHasMoved) {
  const auto typed = m_now.begin();
  type(u"ab"_s);
  m_now.lose();
  type(u"c"_s);
  EXPECT_EQ(typed->text().all, u""_s);
}

TEST_F(TypedSinceTest, KnowsNothingOnceMoreWasDeletedThanTyped) {
  const auto typed = m_now.begin();
  type(u"a"_s);
  m_now.removeLast();
  m_now.removeLast();
  type(u"b"_s);
  EXPECT_EQ(typed->text().all, u""_s);
}

TEST_F(TypedSinceTest, KeepsWhatStandsWhereTheKeyboardWentElsewhere) {
  const auto typed = m_now.begin();
  type(u"ab"_s);
  m_now.end();
  type(u"c"_s);
  m_now.removeLast();
  m_now.lose();
  EXPECT_EQ(typed->text().all, u"ab"_s);
}

TEST_F(TypedSinceTest, LeavesToAFormWhatItHasTaken) {
  const auto typed = m_now.begin();
  type(u"ab"_s);
  EXPECT_EQ(typed->takeForForm(), u"ab"_s);
  type(u"c"_s);
  EXPECT_EQ(typed->text().all, u"abc"_s);
  EXPECT_EQ(typed->text().rest, u"c"_s);
  m_now.removeLast();
  m_now.removeLast();
  type(u"d"_s);
  EXPECT_EQ(typed->text().all, u"ad"_s);
  EXPECT_EQ(typed->text().rest, u"d"_s);
}

TEST_F(TypedSinceTest, IsForgottenWithItsLastHolder) {
  auto typed = m_now.begin();
  const std::weak_ptr watched = typed;
  type(u"a"_s);
  typed.reset();
  EXPECT_TRUE(watched.expired());
  type(u"b"_s);
}

TEST_F(TypedSinceTest, LeavesNothingInMemoryOfWhatItHeld) {
  constexpr std::size_t length = 24;
  // Without the beginning, in whose place something else may be written at once.
  constexpr std::size_t part = 12;
  const auto ending = [](std::size_t index) { return secretUnit(index + length - part); };
  const OwnMemory memory;
  auto typed = m_now.begin();
  for (std::size_t index = 0; index < length; ++index) {
    const char16_t unit = secretUnit(index);
    m_now.append(QStringView(&unit, 1));
  }
  ASSERT_TRUE(memory.holds(part, ending)) << "the search finds nothing at all";
  typed.reset();
  EXPECT_FALSE(memory.holds(part, ending));
}

}  // namespace
}  // namespace zarvy
