#include <random>

#include <gtest/gtest.h>

#include "base/ChunkedList.h"

namespace zarvy {
namespace {

using List = ChunkedList<int>;

QList<int> numbers(int count) {
  QList<int> all;
  for (int n = 0; n < count; ++n) all.append(n);
  return all;
}

TEST(ChunkedList, HoldsWhatAQListHolds) {
  for (const int count : {0, 1, 511, 512, 513, 1024, 3000}) {
    SCOPED_TRACE(count);
    const List list(numbers(count));
    EXPECT_EQ(list.size(), count);
    EXPECT_EQ(list.isEmpty(), count == 0);
    EXPECT_EQ(list.toList(), numbers(count));
    EXPECT_EQ(QList<int>(list.begin(), list.end()), numbers(count));
    for (const int position : {0, 511, 512, count - 1}) {
      if (position >= 0 && position < count) {
        EXPECT_EQ(list.at(position), position);
        EXPECT_EQ(*list.iteratorAt(position), position);
      }
    }
    EXPECT_EQ(list.iteratorAt(count), list.end());
  }
}

TEST(ChunkedList, KeepsACopyAsItWas) {
  List list(numbers(2000));
  const List copy = list;
  EXPECT_TRUE(copy.isSharedWith(list));
  list.replace(700, -1);
  list.append(-2);
  list.remove(0, 3);
  EXPECT_FALSE(copy.isSharedWith(list));
  EXPECT_EQ(copy.toList(), numbers(2000));
}

TEST(ChunkedList, SharesTheChunksThatDidNotChange) {
  List list(numbers(2000));
  const List copy = list;
  list.replace(700, -1);
  EXPECT_EQ(&list.at(100), &copy.at(100));
  EXPECT_EQ(&list.at(1900), &copy.at(1900));
  EXPECT_NE(&list.at(701), &copy.at(701));
}

TEST(ChunkedList, ComparesRecordsWhateverTheirChunks) {
  List list(numbers(2000));
  list.remove(0, 1);
  const QList<int> plain = numbers(2000).sliced(1);
  EXPECT_EQ(list, List(plain));
  list.replace(5, 0);
  EXPECT_NE(list, List(plain));
  EXPECT_NE(List(numbers(5)), List(numbers(6)));
}

TEST(ChunkedList, AgreesWithAQListThroughRandomChanges) {
  std::mt19937 random(20261122);
  const auto below = [&random](qsizetype end) {
    return std::uniform_int_distribution<qsizetype>(0, end - 1)(random);
  };
  QList<int> plain = numbers(1500);
  List list(plain);
  for (int step = 0; step < 3000; ++step) {
    switch (plain.isEmpty() ? 0 : below(4)) {
      case 0:
      case 1:
        plain.append(step);
        list.append(step);
        break;
      case 2: {
        const qsizetype position = below(plain.size());
        plain.replace(position, -step);
        list.replace(position, -step);
        break;
      }
      default: {
        const qsizetype first = below(plain.size());
        const qsizetype most = below(100) == 0 ? 700 : 3;
        const qsizetype count = 1 + below(std::min(most, plain.size() - first));
        plain.remove(first, count);
        list.remove(first, count);
      }
    }
    ASSERT_EQ(list.size(), plain.size());
    if (step % 50 == 0) {
      ASSERT_EQ(list.toList(), plain);
    }
  }
  EXPECT_EQ(list.toList(), plain);
}

}  // namespace
}  // namespace zarvy
