#include <gtest/gtest.h>

#include "fuzz/Corpus.h"
#include "fuzz/ProtocolTargets.h"

namespace zarvy::fuzz {
namespace {

TEST(ProtocolCorpus, OfGrabProtocolPasses) {
  EXPECT_GE(replay("grabProtocol", grabProtocol), 5);
}

TEST(ProtocolCorpus, OfScriptWirePasses) {
  EXPECT_GE(replay("scriptWire", scriptWire), 5);
}

TEST(ProtocolCorpus, OfScriptReplyPasses) {
  EXPECT_GE(replay("scriptReply", scriptReply), 5);
}

TEST(ProtocolCorpus, OfInputMethodsPasses) {
  EXPECT_GE(replay("inputMethods", inputMethods), 5);
}

TEST(ProtocolCorpus, OfFieldSecrecyPasses) {
  EXPECT_GE(replay("fieldSecrecy", fieldSecrecy), 5);
}

}  // namespace
}  // namespace zarvy::fuzz
