// What an editor of the distribution writes to disk after an expansion.

#include "e2e/behaviour/BehaviourTest.h"
#include "e2e/harness/AccessibleTarget.h"
#include "e2e/scenarios/ScenarioTexts.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

class SavedFiles : public BehaviourTest, public testing::WithParamInterface<TargetKind> {};

TEST_P(SavedFiles, holdTheTextByteForByte) {
  const QString text = textOfTwelveScripts() + u"\n\nlast line\n"_s;
  start(GetParam(), {{u";al"_s, text}});
  person().type(u";al"_s);
  expectText(text);
  auto& editor = dynamic_cast<AccessibleTarget&>(target());
  const std::string bytes = text.toStdString();
  EXPECT_EQ(editor.saveAndReadFile(person(), bytes), bytes);
}

INSTANTIATE_TEST_SUITE_P(Of, SavedFiles,
                         testing::Values(TargetKind::mousepad, TargetKind::featherpad),
                         [](const auto& instance) { return nameOf(instance.param); });

}  // namespace
}  // namespace zarvy::e2e
