// The harness proved by itself: what a person types on a real keyboard reaches real applications,
// and is read back exactly, before any program types along.

#include <memory>

#include <gtest/gtest.h>

#include "e2e/harness/Stage.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto deadline = std::chrono::seconds(10);

struct LayoutSample {
  std::string layout;
  QString text;
};

const std::vector<LayoutSample>& layoutSamples() {
  static const std::vector<LayoutSample> samples = {
      {"us", u"The quick (brown) fox; jumps? {Over} [it] @ 90%!"_s},
      {"de", u"Zwölf Boxkämpfer jagen; über @ {den} [Sylter] ~Deich~ ß€?"_s},
      {"fr", u"Voix d'un soir; qu'au {port} [près] @ çà 9?"_s},
      {"ru,us", u"Съешь же ещё; этих мягких (булок) №1?"_s},
      {"jp", u"The quick (brown) fox; jumps? {Over} [it] @ \\90%!"_s},
  };
  return samples;
}

class APersonTypes : public testing::TestWithParam<TargetKind> {};

TEST_P(APersonTypes, andTheApplicationHoldsExactlyThatOnEachLayoutAndThroughEitherDevice) {
  Stage stage({.layouts = "us"});
  TargetApplication& target = stage.startTarget(GetParam());
  for (const LayoutSample& sample : layoutSamples()) {
    stage.changeLayout({.layouts = sample.layout});
    for (const Body body : {Body::xtest, Body::serverKeyboard}) {
      const QString& text = sample.text;
      stage.person().type(text, {.body = body});
      EXPECT_TRUE(target.waitForState({text, text.size()}, deadline))
          << sample.layout << ": " << target.state().text.toStdString();
      target.clear();
    }
  }
  EXPECT_EQ(keyboardState(stage.connection()).heldKeys, "");
}

INSTANTIATE_TEST_SUITE_P(Into, APersonTypes, testing::ValuesIn(allTargetKinds()),
                         [](const auto& instance) { return nameOf(instance.param); });

}  // namespace
}  // namespace zarvy::e2e
