// Layouts that change under the program's hands, and characters that take more than one key.

#include "e2e/behaviour/BehaviourTest.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString foreignText = u"Ωmega, Жук, שלום, ไทย, 漢字, ﬁ, ½ — zy ZY @ {}[] \\|~"_s;
const QString otherText = u"ԱԲԳ აბგ ÆØÅ æøå ĄĆĘ ąćę ΑΒΓ αβγ"_s;

class LayoutChanges : public BehaviourTest, public testing::WithParamInterface<TargetKind> {};

TEST_P(LayoutChanges, areFollowedWhileTheProgramRuns) {
  start(GetParam(), {{u";zy"_s, foreignText}, {u";qa"_s, otherText}, {u";яф"_s, foreignText}});
  for (const char* layout : {"us", "de", "fr", "jp", "us"}) {
    SCOPED_TRACE(layout);
    stage().changeLayout({.layouts = layout});
    target().clear();
    person().type(u";zy"_s);
    expectText(foreignText);
    person().type(u" ;qa"_s);
    expectText(foreignText + u" "_s + otherText);
    person().type(u" "_s);
  }
  stage().changeLayout({.layouts = "ru,us"});
  target().clear();
  person().type(u";яф"_s);
  expectText(foreignText);
  lockGroup(stage().connection(), 1);
  person().type(u" ;zy"_s);
  expectText(foreignText + u" "_s + foreignText);
  expectExpansions(12);
  expectNothingHeld();
}

INSTANTIATE_TEST_SUITE_P(Into, LayoutChanges,
                         testing::Values(TargetKind::xterm, TargetKind::qt6, TargetKind::mousepad),
                         [](const auto& instance) { return nameOf(instance.param); });

class ComposedCharacters : public BehaviourTest, public testing::WithParamInterface<TargetKind> {};

TEST_P(ComposedCharacters, completeATriggerThroughADeadKey) {
  stage().changeLayout({.layouts = "de"});
  start(GetParam(), {{u";é"_s, u"accent"_s}});
  person().type(u";"_s);
  person().tap(XKB_KEY_dead_acute);
  person().type(u"e"_s);
  expectText(u"accent"_s);
  person().type(u"x"_s);
  expectText(u"accentx"_s);
  expectExpansions(1);
}

TEST_P(ComposedCharacters, completeATriggerThroughACompositionKey) {
  stage().changeLayout({.layouts = "us", .options = "compose:menu"});
  start(GetParam(), {{u";ñ"_s, u"tilde"_s}});
  person().type(u";"_s);
  person().tap(XKB_KEY_Multi_key);
  person().type(u"~n"_s);
  expectText(u"tilde"_s);
  person().type(u"x"_s);
  expectText(u"tildex"_s);
  expectExpansions(1);
}

TEST_P(ComposedCharacters, completeATriggerThroughTheThirdLevel) {
  stage().changeLayout({.layouts = "de"});
  start(GetParam(), {{u";@"_s, u"someone@example.org {x}"_s}});
  person().type(u";@"_s, {.lateRelease = std::chrono::milliseconds(20)});
  expectText(u"someone@example.org {x}"_s);
  expectNothingHeld();
}

INSTANTIATE_TEST_SUITE_P(Into, ComposedCharacters,
                         testing::Values(TargetKind::xterm, TargetKind::qt6),
                         [](const auto& instance) { return nameOf(instance.param); });

}  // namespace
}  // namespace zarvy::e2e
