#include <limits>

#include <gtest/gtest.h>

#include "base/CheckedArithmetic.h"

namespace zarvy {
namespace {

constexpr qint64 most = std::numeric_limits<qint64>::max();
constexpr qint64 least = std::numeric_limits<qint64>::min();

TEST(CheckedArithmetic, IsExactUpToTheEdges) {
  EXPECT_EQ(checkedSum(2, 3, "too far"), 5);
  EXPECT_EQ(checkedSum(most - 1, 1, "too far"), most);
  EXPECT_EQ(checkedSum(least + 1, -1, "too far"), least);
  EXPECT_EQ(checkedSum(most, least, "too far"), -1);
  EXPECT_EQ(checkedDifference(2, 3, "too far"), -1);
  EXPECT_EQ(checkedDifference(least + 1, 1, "too far"), least);
  EXPECT_EQ(checkedDifference(most, most, "too far"), 0);
}

TEST(CheckedArithmeticDeathTest, EndsTheProcessWithTheLineBeyondThem) {
  EXPECT_EXIT((void)checkedSum(most, 1, "too far"), testing::KilledBySignal(SIGABRT),
              "^too far\n$");
  EXPECT_EXIT((void)checkedSum(least, -1, "too far"), testing::KilledBySignal(SIGABRT),
              "^too far\n$");
  EXPECT_EXIT((void)checkedDifference(least, 1, "too far"), testing::KilledBySignal(SIGABRT),
              "^too far\n$");
  EXPECT_EXIT((void)checkedDifference(0, least, "too far"), testing::KilledBySignal(SIGABRT),
              "^too far\n$");
}

}  // namespace
}  // namespace zarvy
