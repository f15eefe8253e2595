// A person goes on typing while the adapters type, on a real X server: every character of both
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
  desk.letAdaptersCatchUp(e2e::Body::serverKeyboard);
  QString injected;
  while (injected.size() < 4000) injected += row.injected;

  std::atomic<bool> isDone = false;
  QString typed;
  std::thread person([&] {
    const e2e::XConnection connection(desk.server().display());
    e2e::Person hands(connection);
    std::mt19937 random(1);
    QString text;
    while (text.size() < 12) {
      text += row.persons[static_cast<qsizetype>(random()) % row.persons.size()];
    }
    const auto isEnough = [&](qsizetype) { return isDone.load(); };
    typed = text.left(hands.typeFluently(text, {.interval = 60ms}, random, isEnough));
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
  desk.letAdaptersCatchUp(e2e::Body::serverKeyboard);

  const QString arrived = desk.witness().text();
  EXPECT_EQ(without(arrived, row.persons), injected);
  EXPECT_EQ(onlyOf(arrived, row.persons), typed);
  EXPECT_GT(typed.size(), 3) << "the person has typed meanwhile";
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
                    Row{"WhereScratchKeysAreTyped", "us", u"жук Жук äöü ÄÖÜ "_s, u"abcABC12"_s}),
    [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace zarvy::x11
