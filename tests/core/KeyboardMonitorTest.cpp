#include <vector>

#include <gtest/gtest.h>

#include "core/KeyboardMonitor.h"
#include "fakes/FakeKeyEventSource.h"
#include "fakes/FakePermission.h"
#include "fakes/ManualQueue.h"
#include "fakes/ManualScheduler.h"
#include "fakes/RecordingLineOutput.h"
#include "platform/SyntheticEvent.h"
#include "platform/VirtualKey.h"
#include "support/OwnMemory.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

using namespace modifier;

constexpr quint64 numericPad = 0x200000;
constexpr quint64 function = 0x800000;

const QString startedLine = u"KeyboardMonitor: Started (NSEvent global monitoring)"_s;
const QString stoppedLine = u"KeyboardMonitor: Stopped"_s;
const QString noPermissionLine = u"KeyboardMonitor: No accessibility permission"_s;

KeyEvent typed(const QString& characters, quint64 flags = 0, quint16 keyCode = 0) {
  return {keyCode, flags, characters, 0.0};
}

KeyEvent pressed(quint16 keyCode, quint64 flags = 0,
                 std::optional<QString> characters = std::nullopt) {
  return {keyCode, flags, std::move(characters), 0.0};
}

KeyEvent synthetic(const QString& characters, double x = syntheticEventMarkerX) {
  return {0, 0, characters, x};
}

std::vector<KeyEvent> typedOneByOne(const QString& text) {
  std::vector<KeyEvent> events;
  for (const QChar character : text) events.push_back(typed(QString(character)));
  return events;
}

std::vector<KeyEvent> operator+(std::vector<KeyEvent> events, const std::vector<KeyEvent>& more) {
  events.insert(events.end(), more.begin(), more.end());
  return events;
}

class KeyboardMonitorTest : public testing::Test {
 protected:
  void listen(KeyboardMonitor& monitor) {
    monitor.onPotentialTrigger = [this](const QString& buffer) { m_offers.append(buffer); };
    monitor.onQuickSearchTriggered = [this] { ++m_quickSearches; };
  }

  void runQueues() {
    m_queue.drain();
    m_scheduler.runPending();
  }

  FakeKeyEventSource m_source;
  FakePermission m_permission;
  ManualScheduler m_scheduler;
  ManualSerialQueue m_queue;
  RecordingLineOutput m_output;
  QStringList m_offers;
  int m_quickSearches = 0;
  KeyboardMonitor m_monitor{m_source, m_permission, m_scheduler, m_queue, m_output};
};

struct Row {
  const char* name;
  std::vector<KeyEvent> events;
  QStringList offers;
  QString buffer;
  int quickSearches = 0;
  quint16 hotKeyCode = virtualkey::space;
  quint64 hotKeyModifiers = option;
};

const QString family = u"\U0001F468\u200D\U0001F469\u200D\U0001F467"_s;
const QString fifty(50, u'x');

std::vector<Row> typingRows() {
  return {
      {"a trigger is offered letter by letter, a space is not",
       typedOneByOne(u";sig b"_s),
       {u";"_s, u";s"_s, u";si"_s, u";sig"_s, u"b"_s},
       u"b"_s},
      {"a line feed ends a word", typedOneByOne(u"a\nb"_s), {u"a"_s, u"b"_s}, u"b"_s},
      {"a tab ends a word", typedOneByOne(u"a\tb"_s), {u"a"_s, u"b"_s}, u"b"_s},
      {"a carriage return does not", {typed(u"a"_s), typed(u"\r"_s)}, {u"a"_s, u"a\r"_s}, u"a\r"_s},
      {"a pair of carriage return and line feed is one other character",
       {typed(u"a"_s), typed(u"\r\n"_s)},
       {u"a"_s, u"a\r\n"_s},
       u"a\r\n"_s},
      {"a wide space does not end a word",
       {typed(u"a"_s), typed(u"\u00A0"_s)},
       {u"a"_s, u"a\u00A0"_s},
       u"a\u00A0"_s},
      {"several characters in one event are offered one by one",
       {typed(u"ab c"_s)},
       {u"a"_s, u"ab"_s, u"c"_s},
       u"c"_s},
      {"an empty event does nothing", {typed(u"a"_s), typed(u""_s)}, {u"a"_s}, u"a"_s},
      {"an event without characters does nothing", {typed(u"a"_s), pressed(105)}, {u"a"_s}, u"a"_s},
      {"a combining mark joins the last character",
       {typed(u"e"_s), typed(u"\u0301"_s)},
       {u"e"_s, u"e\u0301"_s},
       u"e\u0301"_s},
      {"a character of many units is offered once", {typed(family)}, {family}, family},
      {"Shift types capitals", {typed(u"A"_s, shift)}, {u"A"_s}, u"A"_s},
      {"Option types the plain letter", {typed(u"a"_s, option)}, {u"a"_s}, u"a"_s},
      {"Caps Lock is no shortcut", {typed(u"a"_s, capsLock)}, {u"a"_s}, u"a"_s},
      {"private characters of function keys enter",
       {pressed(122, function, u"\uF704"_s)},
       {u"\uF704"_s},
       u"\uF704"_s},
      {"the keypad's Enter is an ordinary key",
       {typed(u"a"_s), pressed(76, 0, u"\u0003"_s)},
       {u"a"_s, u"a\u0003"_s},
       u"a\u0003"_s},
      {"forward delete is an ordinary key",
       {typed(u"a"_s), pressed(117, 0, u"\uF728"_s)},
       {u"a"_s, u"a\uF728"_s},
       u"a\uF728"_s},
      {"lone surrogates and NUL enter",
       {typed(QString(QChar(0xD83D))), typed(QString(QChar(0)))},
       {QString(QChar(0xD83D)), QString(QChar(0xD83D)) + QChar(0)},
       QString(QChar(0xD83D)) + QChar(0)},
  };
}

std::vector<Row> specialKeyRows() {
  std::vector<Row> rows{
      {"Delete takes the last character and offers nothing",
       {typed(u"a"_s), typed(u"b"_s), pressed(51), typed(u"c"_s)},
       {u"a"_s, u"ab"_s, u"ac"_s},
       u"ac"_s},
      {"Delete takes a character of many units",
       {typed(u"a"_s), typed(family), pressed(51)},
       {u"a"_s, u"a"_s + family},
       u"a"_s},
      {"Delete on an empty buffer does nothing", {pressed(51), pressed(51)}, {}, u""_s},
      {"Delete cannot complete a trigger",
       typedOneByOne(u";tyx"_s) + std::vector{pressed(51)},
       {u";"_s, u";t"_s, u";ty"_s, u";tyx"_s},
       u";ty"_s},
      {"characters that come with a special key are not offered",
       {typed(u"a"_s), pressed(51, 0, u"\u007F"_s), pressed(36, 0, u"z"_s)},
       {u"a"_s},
       u""_s},
      {"Shift and Option do not change a special key",
       {typed(u"a"_s), pressed(123, shift), typed(u"b"_s), pressed(51, option)},
       {u"a"_s, u"b"_s},
       u""_s},
      {"special keys are not seen with Command or Control",
       {typed(u"a"_s), pressed(51, command), pressed(36, control), pressed(53, command | shift),
        pressed(123, control | option)},
       {u"a"_s},
       u"a"_s},
  };
  for (const int keyCode : {36, 48, 53, 123, 124, 125, 126}) {
    rows.push_back({"a key that moves the caret empties the buffer",
                    {typed(u"a"_s), pressed(static_cast<quint16>(keyCode)), typed(u"b"_s)},
                    {u"a"_s, u"b"_s},
                    u"b"_s});
  }
  for (const int keyCode : {0, 35, 37, 47, 49, 50, 52, 54, 122, 127}) {
    rows.push_back({"any other key leaves the buffer",
                    {typed(u"a"_s), pressed(static_cast<quint16>(keyCode))},
                    {u"a"_s},
                    u"a"_s});
  }
  return rows;
}

std::vector<Row> shortcutRows() {
  return {
      {"Command and Control shortcuts change nothing",
       {typed(u"a"_s), typed(u"v"_s, command, 9), typed(u"a"_s, control), typed(u"b"_s)},
       {u"a"_s, u"ab"_s},
       u"ab"_s},
      {"neither do they with other modifiers",
       {typed(u"a"_s), typed(u"V"_s, command | shift), typed(u"x"_s, control | option | capsLock)},
       {u"a"_s},
       u"a"_s},
      {"own events change nothing",
       {typed(u"a"_s), synthetic(u"b"_s), synthetic(u"b"_s, -27469.0009),
        synthetic(u"b"_s, -27468.9991)},
       {u"a"_s},
       u"a"_s},
      {"events near the mark are not own ones",
       {synthetic(u"a"_s, -27469.002), synthetic(u"b"_s, -27468.998), synthetic(u"c"_s, 27469.0)},
       {u"a"_s, u"ab"_s, u"abc"_s},
       u"abc"_s},
  };
}

std::vector<Row> hotKeyRows() {
  const auto press = [](quint64 flags, quint16 keyCode = virtualkey::space) {
    return std::vector{typed(u"a"_s), typed(u" "_s, flags, keyCode)};
  };
  return {
      {"the hot key leaves the buffer", press(option), {u"a"_s}, u"a"_s, 1},
      {"the hot key works with Caps Lock on", press(option | capsLock), {u"a"_s}, u"a"_s, 1},
      {"the lower bits do not count", press(option | 0x120), {u"a"_s}, u"a"_s, 1},
      {"with Shift it is another key", press(option | shift), {u"a"_s}, u""_s, 0},
      {"with Command it is another key", press(option | command), {u"a"_s}, u"a"_s, 0},
      {"without its modifier it is another key", press(0), {u"a"_s}, u""_s, 0},
      {"another key code is another key", press(option, 50), {u"a"_s}, u""_s, 0},
      {"a hot key with Command works", press(command, 44), {u"a"_s}, u"a"_s, 1, 44, command},
      {"the function bit counts", press(function, 122), {u"a"_s}, u""_s, 0, 122, 0},
      {"the function bit can be asked for",
       press(function, 122),
       {u"a"_s},
       u"a"_s,
       1,
       122,
       function},
      {"the keypad's bit counts", press(option | numericPad, 82), {u"a"_s}, u""_s, 0, 82, option},
      {"the keypad's bit can be asked for",
       press(option | numericPad, 82),
       {u"a"_s},
       u"a"_s,
       1,
       82,
       option | numericPad},
      {"bits above the mask do not count", press(option | 0x100000000), {u"a"_s}, u"a"_s, 1},
      {"a mask that asks for Caps Lock never fits",
       press(option | capsLock),
       {u"a"_s},
       u""_s,
       0,
       49,
       option | capsLock},
      {"an own event is no hot key",
       {{virtualkey::space, option, u" "_s, syntheticEventMarkerX}},
       {},
       u""_s,
       0},
      {"a special key can be the hot key",
       {typed(u"a"_s), pressed(36, option)},
       {u"a"_s},
       u"a"_s,
       1,
       36,
       option},
  };
}

TEST_F(KeyboardMonitorTest, OffersWhatTheTablesSay) {
  for (const auto& rows : {typingRows(), specialKeyRows(), shortcutRows(), hotKeyRows()}) {
    for (const Row& row : rows) {
      SCOPED_TRACE(row.name);
      m_offers.clear();
      m_quickSearches = 0;
      KeyboardMonitor monitor(m_source, m_permission, m_scheduler, m_queue, m_output);
      listen(monitor);
      monitor.quickSearchKeyCode = row.hotKeyCode;
      monitor.quickSearchModifiers = row.hotKeyModifiers;
      monitor.start();
      for (const KeyEvent& event : row.events) m_source.send(event);
      runQueues();
      EXPECT_EQ(m_offers, row.offers);
      EXPECT_EQ(monitor.buffer(), row.buffer);
      EXPECT_EQ(m_quickSearches, row.quickSearches);
    }
  }
}

TEST_F(KeyboardMonitorTest, KeepsTheLastFiftyCharacters) {
  listen(m_monitor);
  m_monitor.start();
  QString typedText;
  for (int index = 0; index < 60; ++index) {
    typedText.append(QChar(u'A' + index % 26));
    m_source.type(typedText.last(1));
    runQueues();
    EXPECT_EQ(m_monitor.buffer(), typedText.last(qMin<qsizetype>(50, typedText.size())));
    EXPECT_EQ(m_offers.last(), m_monitor.buffer());
  }
  EXPECT_EQ(m_offers.size(), 60);
}

TEST_F(KeyboardMonitorTest, BeginsWithTheHotKeyOfTheUnsetSettings) {
  EXPECT_EQ(m_monitor.quickSearchKeyCode, 44);
  EXPECT_EQ(m_monitor.quickSearchModifiers, command);
  EXPECT_EQ(m_monitor.buffer(), QString());
  EXPECT_FALSE(m_monitor.isMonitoring());
}

TEST_F(KeyboardMonitorTest, StartsOnce) {
  m_monitor.start();
  EXPECT_TRUE(m_monitor.isMonitoring());
  m_monitor.start();
  EXPECT_EQ(m_source.addCount(), 1);
  EXPECT_EQ(m_output.lines(), QStringList{startedLine});
}

TEST_F(KeyboardMonitorTest, DoesNotStartWithoutThePermission) {
  m_permission.setTrusted(false);
  m_monitor.start();
  EXPECT_FALSE(m_monitor.isMonitoring());
  EXPECT_EQ(m_source.addCount(), 0);
  EXPECT_EQ(m_output.takeLines(), QStringList{noPermissionLine});
  m_permission.setTrusted(true);
  m_monitor.start();
  EXPECT_TRUE(m_monitor.isMonitoring());
  EXPECT_EQ(m_output.lines(), QStringList{startedLine});
}

TEST_F(KeyboardMonitorTest, SaysThatItStartedAlsoWithoutAToken) {
  m_source.setCanHear(false);
  m_monitor.start();
  EXPECT_FALSE(m_monitor.isMonitoring());
  EXPECT_EQ(m_output.takeLines(), QStringList{startedLine});
  m_source.setCanHear(true);
  m_monitor.start();
  EXPECT_TRUE(m_monitor.isMonitoring());
}

TEST_F(KeyboardMonitorTest, ForgetsEverythingWhenStopped) {
  listen(m_monitor);
  m_monitor.start();
  m_source.type(u"a"_s);
  runQueues();
  EXPECT_EQ(m_output.takeLines(), QStringList{startedLine});
  m_monitor.stop();
  EXPECT_FALSE(m_monitor.isMonitoring());
  EXPECT_EQ(m_source.handlerCount(), 0U);
  EXPECT_EQ(m_source.localHandlerCount(), 0U);
  EXPECT_EQ(m_monitor.buffer(), QString());
  EXPECT_EQ(m_monitor.onPotentialTrigger, nullptr);
  EXPECT_EQ(m_monitor.onQuickSearchTriggered, nullptr);
  EXPECT_EQ(m_output.takeLines(), QStringList{stoppedLine});
  m_monitor.stop();
  EXPECT_EQ(m_output.takeLines(), QStringList{stoppedLine});
}

TEST_F(KeyboardMonitorTest, DropsTheOffersThatWaitWhenStopped) {
  listen(m_monitor);
  m_monitor.start();
  m_source.type(u"a"_s);
  m_source.press(virtualkey::space, option);
  m_queue.drain();
  m_monitor.stop();
  m_scheduler.runPending();
  EXPECT_EQ(m_offers, QStringList());
  EXPECT_EQ(m_quickSearches, 0);
}

TEST_F(KeyboardMonitorTest, StillOffersACopyThatWasQueuedBeforeTheBufferWasEmptied) {
  listen(m_monitor);
  m_monitor.start();
  m_source.type(u"a"_s);
  m_source.type(u"b"_s);
  m_queue.drain();
  m_monitor.clearBuffer();
  m_scheduler.runPending();
  EXPECT_EQ(m_offers, (QStringList{u"a"_s, u"ab"_s}));
  m_source.type(u"c"_s);
  runQueues();
  EXPECT_EQ(m_offers.last(), u"c"_s);
}

TEST_F(KeyboardMonitorTest, WorksOnTheQueueAndOffersOnTheMainThreadOnly) {
  listen(m_monitor);
  m_monitor.quickSearchKeyCode = virtualkey::space;
  m_monitor.start();
  m_source.type(u"a"_s);
  EXPECT_EQ(m_queue.pendingCount(), 1U);
  EXPECT_EQ(m_monitor.buffer(), QString());
  m_queue.drain();
  EXPECT_EQ(m_monitor.buffer(), u"a"_s);
  EXPECT_EQ(m_offers, QStringList());
  m_scheduler.runPending();
  EXPECT_EQ(m_offers, QStringList{u"a"_s});
  m_source.press(virtualkey::space, command);
  EXPECT_EQ(m_queue.pendingCount(), 0U);
  EXPECT_EQ(m_quickSearches, 0);
  m_scheduler.runPending();
  EXPECT_EQ(m_quickSearches, 1);
}

class TypedSinceOffers : public KeyboardMonitorTest {
 protected:
  // What is heard to be typed behind the offer of ";s", before the offer is looked at.
  [[nodiscard]] QString typedBehind(const std::vector<KeyEvent>& events) {
    std::shared_ptr<TypedSince> kept;
    m_monitor.onPotentialTrigger = [&](const QString& buffer) {
      if (buffer == u";s"_s) kept = m_monitor.typedSinceOffer();
    };
    m_monitor.start();
    for (const KeyEvent& event : typedOneByOne(u";s"_s)) m_source.send(event);
    for (const KeyEvent& event : events) m_source.send(event);
    runQueues();
    EXPECT_EQ(m_monitor.typedSinceOffer(), nullptr) << "outside of the callback";
    return kept ? kept->text().all : u"none"_s;
  }
};

TEST_F(TypedSinceOffers, FollowTheLettersBehindACopy) {
  EXPECT_EQ(typedBehind(typedOneByOne(u"a b"_s)), u"a b"_s);
}

TEST_F(TypedSinceOffers, FollowBackspaces) {
  EXPECT_EQ(typedBehind({typed(u"a"_s), typed(u"b"_s), pressed(virtualkey::deleteBackward)}),
            u"a"_s);
}

TEST_F(TypedSinceOffers, EndWithEscape) {
  EXPECT_EQ(typedBehind({typed(u"a"_s), pressed(virtualkey::escape), typed(u"b"_s)}), u"a"_s);
}

TEST_F(TypedSinceOffers, EndWhenTheSourceAsksToForget) {
  std::shared_ptr<TypedSince> kept;
  m_monitor.onPotentialTrigger = [&](const QString&) { kept = m_monitor.typedSinceOffer(); };
  m_monitor.start();
  m_source.type(u"s"_s);
  runQueues();
  m_monitor.onPotentialTrigger = nullptr;
  m_source.type(u"a"_s);
  m_source.forget();
  m_source.type(u"b"_s);
  runQueues();
  EXPECT_EQ(kept->text().all, u"a"_s);
  EXPECT_EQ(m_monitor.buffer(), u"b"_s);
}

TEST_F(KeyboardMonitorTest, DoesNotTakeForgettingForAKey) {
  listen(m_monitor);
  m_monitor.quickSearchKeyCode = virtualkey::escape;
  m_monitor.quickSearchModifiers = 0;
  m_monitor.start();
  m_source.type(u"a"_s);
  m_source.forget();
  runQueues();
  EXPECT_EQ(m_monitor.buffer(), u""_s);
  EXPECT_EQ(m_quickSearches, 0);
}

TEST_F(TypedSinceOffers, DoNotSeeTheProgramsOwnKeys) {
  EXPECT_EQ(typedBehind({typed(u"a"_s), synthetic(u"b"_s)}), u"a"_s);
}

TEST_F(TypedSinceOffers, GoOnAtModifierKeys) {
  EXPECT_EQ(typedBehind({typed(u"a"_s), pressed(0, shift), pressed(0, control)}), u"a"_s);
}

TEST_F(TypedSinceOffers, AreLostWhereTheCaretMayHaveMoved) {
  for (const quint16 key : {virtualkey::returnKey, virtualkey::tab, virtualkey::leftArrow,
                            virtualkey::rightArrow, virtualkey::downArrow, virtualkey::upArrow}) {
    EXPECT_EQ(typedBehind({typed(u"a"_s), pressed(key)}), u""_s) << key;
    m_monitor.stop();
  }
  EXPECT_EQ(typedBehind({typed(u"a"_s), typed(u"v"_s, control)}), u""_s);
  m_monitor.stop();
  EXPECT_EQ(typedBehind({typed(u"a"_s), typed(u"\uF728"_s)}), u""_s);
  m_monitor.stop();
  EXPECT_EQ(typedBehind({typed(u"a"_s), typed(u"\n"_s)}), u""_s);
}

TEST_F(KeyboardMonitorTest, HearsKeysAlsoWithoutListeners) {
  m_monitor.quickSearchKeyCode = virtualkey::space;
  m_monitor.start();
  m_source.type(u"a"_s);
  m_source.press(virtualkey::space, command);
  runQueues();
  EXPECT_EQ(m_monitor.buffer(), u"a"_s);
}

TEST_F(KeyboardMonitorTest, MayBeStoppedByItsOwnCallback) {
  m_monitor.onPotentialTrigger = [this](const QString& buffer) {
    m_monitor.stop();
    m_offers.append(buffer);
  };
  m_monitor.start();
  m_source.type(u"a"_s);
  m_source.type(u"b"_s);
  runQueues();
  EXPECT_EQ(m_offers, QStringList{u"a"_s});
  EXPECT_FALSE(m_monitor.isMonitoring());
}

TEST_F(KeyboardMonitorTest, MayEndInItsOwnCallback) {
  auto monitor =
      std::make_unique<KeyboardMonitor>(m_source, m_permission, m_scheduler, m_queue, m_output);
  monitor->onPotentialTrigger = [&](const QString& buffer) {
    monitor.reset();
    m_offers.append(buffer);
  };
  monitor->start();
  m_source.type(u"a"_s);
  m_source.type(u"b"_s);
  runQueues();
  EXPECT_EQ(m_offers, QStringList{u"a"_s});
}

TEST_F(KeyboardMonitorTest, DoesNothingOnceItIsGone) {
  auto monitor =
      std::make_unique<KeyboardMonitor>(m_source, m_permission, m_scheduler, m_queue, m_output);
  listen(*monitor);
  monitor->quickSearchKeyCode = virtualkey::space;
  monitor->start();
  m_source.type(u"a"_s);
  m_queue.drain();                                // an offer waits on the main thread
  m_source.press(virtualkey::space, command);     // and the hot key
  m_source.type(u"b"_s);                          // and a key on the queue
  const auto lateHandlers = m_source.handlers();  // and one that is being delivered
  const auto lateForgetters = m_source.forgetters();
  monitor.reset();
  EXPECT_EQ(m_source.handlerCount(), 0U);
  for (const auto& [token, handler] : lateHandlers) handler(typed(u"c"_s));
  for (const auto& [token, onForget] : lateForgetters) onForget();
  runQueues();
  EXPECT_EQ(m_offers, QStringList());
  EXPECT_EQ(m_quickSearches, 0);
}

// Letters in an order that nothing else has, each with marks: the copies that were dropped are then
// larger than what the search itself makes and drops, and stay in memory as they were.
constexpr std::size_t unitsOfCharacter = 4;

char16_t markedSecretUnit(std::size_t index) {
  const std::size_t letter = index / unitsOfCharacter;
  if (index % unitsOfCharacter != 0) return u'\u0301';
  return static_cast<char16_t>(u'a' + (letter * 5 + letter * letter * 7 + 11) % 26);
}

QString secretCharacter(std::size_t number) {
  QString character;
  for (std::size_t index = 0; index < unitsOfCharacter; ++index) {
    character += QChar(markedSecretUnit(number * unitsOfCharacter + index));
  }
  return character;
}

TEST_F(KeyboardMonitorTest, LeavesNothingInMemoryOfWhatWasTypedBeforeEscape) {
  // A part from the middle: where a copy was dropped its beginning is soon something else.
  constexpr std::size_t part = 40;
  const auto middle = [](std::size_t index) { return markedSecretUnit(index + 20); };
  const OwnMemory memory;
  m_monitor.start();
  for (std::size_t number = 0; number < 40; ++number) {
    m_source.type(secretCharacter(number));
    runQueues();
  }
  ASSERT_TRUE(memory.holds(part, middle)) << "the search finds nothing at all";
  m_source.press(virtualkey::escape);
  runQueues();
  EXPECT_FALSE(memory.holds(part, middle));
}

}  // namespace
}  // namespace zarvy
