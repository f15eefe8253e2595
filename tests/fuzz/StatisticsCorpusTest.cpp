#include <gtest/gtest.h>

#include "fuzz/Corpus.h"
#include "fuzz/StatisticsTargets.h"

namespace zarvy::fuzz {
namespace {

TEST(StatisticsCorpus, OfPeriodStatisticsPasses) {
  EXPECT_GE(replay("periodStatistics", periodStatistics), 5);
}

}  // namespace
}  // namespace zarvy::fuzz
