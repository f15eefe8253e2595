// Somebody who goes on typing while the adapters type, on a real X server: every character of both
// arrives, in its order and in its case. The two have no character in common, but share keys.

#include <atomic>
#include <random>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "platform/KeyEventPoster.h"
#include "platform/Workspace.h"
#include "platform/x11/KeyboardDesk.h"
#include "support/QtPrinters.h"

namespace zarvy::x11 {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

// What the program types and what the person types: the keys of one are those of the other.
struct Row {
  std::string name;
  std::string layouts;
  QString injected;  // is repeated
  QString persons;   // characters to choose from
  e2e::Body body = e2e::Body::serverKeyboard;
};

QString onlyOf(const QString& text, const QString& characters) {
  QString found;
  for (const QChar character : text) {
    if (characters.contains(character)) found += character;
  }
  return found;
}

QString without(const QString& text, const QString& characters) {
  QString found;
  for (const QChar character : text) {
    if (!characters.contains(character)) found += character;
  }
  return found;
}

class TypingOn : public testing::TestWithParam<Row> {};

TEST_P(TypingOn, LosesAndChangesNothing) {
  const Row& row = GetParam();
  KeyboardDesk desk({.layouts = row.layouts});
  desk.letAdaptersCatchUp(row.body);
  QString injected;
  while (injected.size() < 2000) injected += row.injected;

  std::atomic<bool> isDone = false;
  QString typed;
  std::thread person([&] {
    const e2e::XConnection connection(desk.server().display());
    e2e::Person hands(connection);
    std::minstd_rand random(1);
    while (!isDone) {
      QString some;
      for (int i = 0; i < 8; ++i)
        some += row.persons[static_cast<int>(random() % 1000) % row.persons.size()];
      hands.type(some, {.body = row.body, .interval = 14ms, .lateRelease = 3ms});
      typed += some;
    }
    connection.synchronise();
  });
  {
    const auto typing = desk.session().keyEventPoster().beginTyping(injected);
    for (qsizetype at = 0; at < injected.size(); at += 20) {
      EXPECT_TRUE(typing->pressText(QStringView(injected).mid(at, 20)));
      std::this_thread::sleep_for(1ms);  // as the pauses of an injection
    }
  }
  isDone = true;
  person.join();
  desk.letAdaptersCatchUp(row.body);

  const QString arrived = desk.witness().text();
  EXPECT_EQ(without(arrived, row.persons), injected);
  EXPECT_EQ(onlyOf(arrived, row.persons), typed);
  EXPECT_GT(typed.size(), 8) << "the person has typed meanwhile";
  EXPECT_EQ(desk.keyboard().heldKeys, "");
}

INSTANTIATE_TEST_SUITE_P(
    As, TypingOn,
    testing::Values(Row{"LettersWhereCapitalsAreInjected", "us", u"THE QUICK BROWN FOX; "_s,
                        u"thequickbrownfx"_s},
                    Row{"CapitalsWhereLettersAreInjected", "us", u"the quick brown fox; "_s,
                        u"THEQUICKBROWNFX"_s},
                    Row{"BothWhereBothAreInjected", "us", u"The Quick brown Fox! (jumps) "_s,
                        u"dDaAlL10"_s},
                    Row{"OnAnotherLayout", "de", u"Größe: {[@€]} ~ µ "_s, u"yYxXqQ19"_s},
                    Row{"WhereSpareKeysAreTyped", "us", u"жук Жук äöü ÄÖÜ "_s, u"abcABC12"_s},
                    Row{"OnTheKeyboardForFakedKeys", "us", u"The Quick brown Fox! (jumps) "_s,
                        u"dDaAlL10"_s, e2e::Body::xtest}),
    [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace zarvy::x11
