#include <algorithm>
#include <array>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/x11/typing/ScratchKeyPool.h"

namespace zarvy::x11 {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

constexpr std::array<uint8_t, 2> twoKeys{8, 93};

ScratchKeyPool poolOfFour() {
  ScratchKeyPool pool;
  pool.reset(twoKeys, 2);
  return pool;
}

void fitAndApply(ScratchKeyPool& pool, std::u32string_view wanted) {
  pool.apply(pool.fit({wanted.data(), wanted.size()}));
}

bool holds(const ScratchKeyPool& pool, char32_t character) {
  return pool.find(character).has_value();
}

TEST(ScratchKeyPool, HasASlotForEachLevelOfEachKey) {
  EXPECT_EQ(poolOfFour().capacity(), 4U);
  EXPECT_EQ(ScratchKeyPool().capacity(), 0U);
}

TEST(ScratchKeyPool, ChangesNothingForCharactersItHas) {
  ScratchKeyPool pool = poolOfFour();
  fitAndApply(pool, U"äöü");
  EXPECT_THAT(pool.fit(std::array{U'ü', U'ä'}).changes, IsEmpty());
}

TEST(ScratchKeyPool, CountsARepeatedCharacterOnce) {
  EXPECT_THAT(poolOfFour().fit(std::array{U'ä', U'ä', U'ö', U'ä'}).changes, SizeIs(2));
}

TEST(ScratchKeyPool, ThrowsOutWhatWasUsedLongestAgo) {
  ScratchKeyPool pool = poolOfFour();
  fitAndApply(pool, U"abcd");
  pool.markUsed(U'a');
  fitAndApply(pool, U"e");
  EXPECT_TRUE(holds(pool, U'a'));
  EXPECT_FALSE(holds(pool, U'b'));
  EXPECT_TRUE(holds(pool, U'e'));
}

TEST(ScratchKeyPool, KeepsWantedCharactersHoweverOld) {
  ScratchKeyPool pool = poolOfFour();
  fitAndApply(pool, U"abcd");
  fitAndApply(pool, U"aefg");
  EXPECT_TRUE(holds(pool, U'a'));
  EXPECT_FALSE(holds(pool, U'b'));
}

TEST(ScratchKeyPool, TakesTheFirstOnesWhereNotAllFit) {
  ScratchKeyPool pool = poolOfFour();
  fitAndApply(pool, U"abcdef");
  EXPECT_TRUE(holds(pool, U'a'));
  EXPECT_TRUE(holds(pool, U'd'));
  EXPECT_FALSE(holds(pool, U'e'));
}

TEST(ScratchKeyPool, SaysWhenASlotMayStillBeUnread) {
  ScratchKeyPool pool = poolOfFour();
  fitAndApply(pool, U"abcd");
  EXPECT_FALSE(pool.fit(std::array{U'e'}).replacesUnread);
  for (const char32_t character : std::u32string(U"abcd")) pool.markUsed(character);
  EXPECT_TRUE(pool.fit(std::array{U'e'}).replacesUnread);
  pool.markAllRead();
  EXPECT_FALSE(pool.fit(std::array{U'e'}).replacesUnread);
}

TEST(ScratchKeyPool, PlansNothingWithoutScratchKeys) {
  ScratchKeyPool pool;
  EXPECT_THAT(pool.fit(std::array{U'a'}).changes, IsEmpty());
}

// The rules once more, written as plainly as possible.
class NaivePool {
 public:
  explicit NaivePool(std::size_t capacity) : m_capacity(capacity) {}

  void use(char32_t character) {
    if (m_age.contains(character)) m_age[character] = ++m_time;
  }

  void fit(const std::vector<char32_t>& wanted) {
    std::set<char32_t> kept;
    std::vector<char32_t> added;
    for (const char32_t character : wanted) {
      if (kept.size() < m_capacity && kept.insert(character).second && !m_age.contains(character)) {
        added.push_back(character);
      }
    }
    for (const char32_t character : added) {
      if (m_age.size() == m_capacity) dropOldestOutside(kept);
      m_age[character] = ++m_time;
    }
  }

  [[nodiscard]] std::set<char32_t> characters() const {
    std::set<char32_t> all;
    for (const auto& [character, age] : m_age) all.insert(character);
    return all;
  }

 private:
  void dropOldestOutside(const std::set<char32_t>& kept) {
    auto oldest = m_age.end();
    for (auto entry = m_age.begin(); entry != m_age.end(); ++entry) {
      if (kept.contains(entry->first)) continue;
      if (oldest == m_age.end() || entry->second < oldest->second) oldest = entry;
    }
    m_age.erase(oldest);
  }

  std::size_t m_capacity;
  std::map<char32_t, int> m_age;
  int m_time = 0;
};

TEST(ScratchKeyPool, HoldsWhatAPlainCacheWouldHoldAfterAnySequence) {
  std::mt19937 random(20261121);
  for (int round = 0; round < 300; ++round) {
    ScratchKeyPool pool = poolOfFour();
    NaivePool naive(pool.capacity());
    for (int step = 0; step < 40; ++step) {
      if (random() % 2 == 0) {
        const char32_t character = U'a' + random() % 8;
        pool.markUsed(character);
        naive.use(character);
      } else {
        std::vector<char32_t> wanted;
        for (std::size_t i = random() % 7; i > 0; --i) wanted.push_back(U'a' + random() % 8);
        pool.apply(pool.fit(wanted));
        naive.fit(wanted);
      }
      std::set<char32_t> held;
      for (const auto& slot : pool.slots()) {
        if (slot.character == 0) continue;
        held.insert(slot.character);
        const auto found = pool.find(slot.character);
        ASSERT_TRUE(found);
        ASSERT_EQ(found->keycode, slot.keycode);
        ASSERT_EQ(found->level, slot.level);
      }
      ASSERT_EQ(held, naive.characters()) << "round " << round << ", step " << step;
    }
  }
}

}  // namespace
}  // namespace zarvy::x11
