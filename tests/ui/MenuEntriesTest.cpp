#include <gtest/gtest.h>

#include "support/QtPrinters.h"
#include "ui/MenuEntries.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

// One entry a line: what stands in front of ">" is what it shows; "-" is a divider.
QStringList described(const MenuCircumstances& circumstances) {
  constexpr const char* actions[] = {"",         "setup",      "manage", "add",
                                     "settings", "statistics", "pause",  "quit"};
  QStringList lines;
  for (const MenuEntry& entry : menuEntries(circumstances)) {
    if (!entry.isVisible) continue;
    QString line =
        entry.text + u" > "_s + QString::fromLatin1(actions[static_cast<int>(entry.action)]);
    if (!entry.shortcut.isEmpty())
      line += u' ' + entry.shortcut.toString(QKeySequence::PortableText);
    if (entry.symbol) line += u" ["_s + rowOf(*entry.symbol).themeName.toString() + u']';
    lines.append(line);
    if (entry.hasDividerBehind) lines.append(u"-"_s);
  }
  return lines;
}

const QStringList windows = {
    u"Manage Snippets... > manage"_s, u"Add New Snippet... > add Ctrl+Shift+N"_s,
    u"Settings... > settings Ctrl+,"_s, u"Statistics... > statistics"_s, u"-"_s};

TEST(MenuEntries, StandInTheirOrder) {
  EXPECT_EQ(described({true, {}, 10, false}), QStringList()
                                                  << u"10 snippets > "_s << u"-"_s << windows
                                                  << u"Pause Expansion > pause Ctrl+Shift+P"_s
                                                  << u"-"_s << u"Quit Zarvy > quit Ctrl+Q"_s);
}

TEST(MenuEntries, OfferToResumeWhilePaused) {
  EXPECT_EQ(described({true, {}, 1, true}), QStringList()
                                                << u"1 snippets > "_s << u"-"_s << windows
                                                << u"Resume Expansion > pause Ctrl+Shift+P"_s
                                                << u"-"_s << u"Quit Zarvy > quit Ctrl+Q"_s);
}

TEST(MenuEntries, LeadToTheSetupAndDoNotPauseWithoutThePermission) {
  EXPECT_EQ(described({false, {}, 0, false}), QStringList()
                                                  << u"Setup Required... > setup [dialog-warning]"_s
                                                  << u"-"_s << u"0 snippets > "_s << u"-"_s
                                                  << windows << u"Quit Zarvy > quit Ctrl+Q"_s);
}

TEST(MenuEntries, LeadToAnotherKeyWhereThatOfQuickSearchIsTaken) {
  EXPECT_EQ(described({true, {}, 3, false, u"Alt+Space"_s}).first(3),
            (QStringList{u"Alt+Space Is Taken: Choose Another Key... > settings [dialog-warning]"_s,
                         u"-"_s, u"3 snippets > "_s}));
}

TEST(MenuEntries, AreEachInTheSamePlaceWhateverHolds) {
  const auto actions = [](const MenuCircumstances& circumstances) {
    QList<MenuAction> all;
    for (const MenuEntry& entry : menuEntries(circumstances)) all.append(entry.action);
    return all;
  };
  EXPECT_EQ(actions({true, {}, 10, false}), actions({false, u"a"_s, 0, true}));
}

TEST(MenuEntries, NameWhoBlocksBehindTheSetup) {
  EXPECT_EQ(described({false, u"Safe & Sound"_s, 3, false}).first(4),
            (QStringList{u"Setup Required... > setup [dialog-warning]"_s, u"-"_s,
                         u"Blocked by Safe & Sound >  [object-locked]"_s, u"-"_s}));
  EXPECT_EQ(described({true, QString(), 3, false}).first(), u"Blocked by  >  [object-locked]"_s);
}

TEST(MenuBarSymbol, ShowsTheFirstStateThatHolds) {
  struct Row {
    bool hasPermission;
    bool isBlocked;
    bool isPaused;
    MenuBarSymbol symbol;
  };
  for (const Row& row : {Row{false, false, false, MenuBarSymbol::permissionMissing},
                         Row{false, true, true, MenuBarSymbol::permissionMissing},
                         Row{true, true, false, MenuBarSymbol::blocked},
                         Row{true, true, true, MenuBarSymbol::blocked},
                         Row{true, false, false, MenuBarSymbol::listening},
                         Row{true, false, true, MenuBarSymbol::paused}}) {
    const MenuCircumstances circumstances{
        row.hasPermission, row.isBlocked ? std::optional(u"a"_s) : std::nullopt, 1, row.isPaused};
    EXPECT_EQ(menuBarSymbol(circumstances), row.symbol);
  }
}

}  // namespace
}  // namespace zarvy
