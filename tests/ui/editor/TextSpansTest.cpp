#include <random>

#include <gtest/gtest.h>

#include "ui/editor/TextSpans.h"

namespace zarvy {
namespace {

constexpr SpanLook red{SystemColor::red};
constexpr SpanLook boldBlue{.ink = SystemColor::blue, .isBold = true};
constexpr SpanLook onGreen{SystemColor::green, SystemColor::green};

using Spans = std::vector<TextSpan>;

TEST(TextSpans, AreWithoutOverlaps) {
  EXPECT_EQ(withoutOverlaps({}), Spans());
  EXPECT_EQ(withoutOverlaps({{{3, 0}, red}}), Spans());
  EXPECT_EQ(withoutOverlaps({{{5, 2}, red}, {{1, 2}, onGreen}}),
            (Spans{{{1, 2}, onGreen}, {{5, 2}, red}}));
  EXPECT_EQ(withoutOverlaps({{{1, 2}, red}, {{3, 2}, red}}), (Spans{{{1, 4}, red}}));
}

TEST(TextSpans, AreOverwrittenByLaterOnes) {
  EXPECT_EQ(withoutOverlaps({{{0, 6}, red}, {{2, 2}, onGreen}}),
            (Spans{{{0, 2}, red}, {{2, 2}, onGreen}, {{4, 2}, red}}));
  EXPECT_EQ(
      withoutOverlaps({{{2, 2}, onGreen}, {{0, 6}, red}}),
      (Spans{{{0, 2}, red}, {{2, 2}, {SystemColor::red, SystemColor::green}}, {{4, 2}, red}}));
}

TEST(TextSpans, StayBoldUnderLaterOnes) {
  EXPECT_EQ(withoutOverlaps({{{0, 3}, boldBlue}, {{2, 2}, onGreen}}),
            (Spans{{{0, 2}, boldBlue},
                   {{2, 1}, {SystemColor::green, SystemColor::green, true}},
                   {{3, 1}, onGreen}}));
}

// One unit after the other, as the rule reads.
std::vector<SpanLook> painted(const Spans& spans, std::size_t length) {
  std::vector<SpanLook> units(length);
  for (const TextSpan& span : spans) {
    for (qsizetype place = span.range.start; place < span.range.end(); ++place) {
      SpanLook& unit = units[static_cast<std::size_t>(place)];
      unit.ink = span.look.ink;
      if (span.look.ground) unit.ground = span.look.ground;
      unit.isBold = unit.isBold || span.look.isBold;
    }
  }
  return units;
}

TEST(TextSpans, LookTheSameWithoutOverlaps) {
  constexpr int length = 20;
  std::mt19937 random(20261123);
  const auto number = [&random](int greatest) {
    return std::uniform_int_distribution<int>(0, greatest)(random);
  };
  const SpanLook looks[] = {red, boldBlue, onGreen, {TextColor::secondary}};
  for (int round = 0; round < 5000; ++round) {
    Spans spans;
    for (int count = number(6); count > 0; --count) {
      const int start = number(length);
      spans.push_back({{start, number(length - start)}, looks[number(3)]});
    }
    const Spans result = withoutOverlaps(spans);
    ASSERT_EQ(painted(result, length), painted(spans, length));
    for (std::size_t index = 1; index < result.size(); ++index) {
      ASSERT_LE(result[index - 1].range.end(), result[index].range.start);
    }
  }
}

}  // namespace
}  // namespace zarvy
