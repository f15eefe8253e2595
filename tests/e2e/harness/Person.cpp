#include "e2e/harness/Person.h"

#include <algorithm>
#include <stdexcept>
#include <thread>

#include <QList>

#include <xcb/xinput.h>
#include <xcb/xtest.h>

#include "e2e/harness/InputDevices.h"

namespace zarvy::e2e {

namespace {

KeyStroke strokeOrThrow(const std::optional<KeyStroke>& stroke, const QString& what) {
  if (!stroke) throw std::runtime_error("no key of this layout types " + what.toStdString());
  return *stroke;
}

xcb_keycode_t keyOf(const PhysicalKeyboard& keyboard, xkb_keysym_t symbol) {
  return strokeOrThrow(keyboard.strokeForSymbol(symbol), QString::number(symbol, 16)).key;
}

}  // namespace

Person::Person(const XConnection& connection)
    : m_connection(connection),
      m_serverKeyboard(static_cast<std::uint8_t>(serverKeyboardId(connection))) {
  const auto* extension = xcb_get_extension_data(connection.get(), &xcb_input_id);
  m_inputFirstEvent = extension->first_event;
}

Person::~Person() {
  releaseAll();
}

PhysicalKeyboard Person::keyboard(Body body) const {
  return body == Body::serverKeyboard ? PhysicalKeyboard(m_connection, m_serverKeyboard)
                                      : PhysicalKeyboard(m_connection);
}

void Person::type(const QString& text, const TypingStyle& style) {
  const PhysicalKeyboard keyboard = this->keyboard(style.body);
  const auto characters = text.toUcs4();
  auto next = std::chrono::steady_clock::now();
  for (qsizetype index = 0; index < characters.size(); ++index) {
    const bool last = index + 1 == characters.size();
    const char32_t character = characters[index];
    const auto stroke =
        strokeOrThrow(keyboard.strokeFor(character), QString::fromUcs4(&character, 1));
    std::this_thread::sleep_until(next);
    holdModifiers(keyboard, stroke, style.body);
    queueKey(stroke.key, true, style.body);
    if (last && style.heldFromThen)
      queueKey(keyOf(keyboard, *style.heldFromThen), true, style.body);
    xcb_flush(m_connection.get());
    if (last && style.keepLastKeyDown) return;
    std::this_thread::sleep_until(next + style.interval / 2);
    sendKey(stroke.key, false, style.body);
    next += style.interval;
  }
  std::this_thread::sleep_for(style.lateRelease);
  holdModifiers(keyboard, {}, style.body);
}

qsizetype Person::typeFluently(const QString& text, const KeyRhythm& rhythm, std::mt19937& random,
                               const std::function<bool(qsizetype)>& isEnough) {
  const PhysicalKeyboard keyboard = this->keyboard(Body::serverKeyboard);
  std::vector<KeyStroke> strokes;
  for (const char32_t character : text.toUcs4()) {
    strokes.push_back(strokeOrThrow(keyboard.strokeFor(character), QString(QChar(character))));
  }
  const auto moves = movesFor(strokes, keyboard.shiftKey(), rhythm, random);
  const auto start = std::chrono::steady_clock::now() - moves.front().at;
  qsizetype typed = 0;
  for (const KeyMove& move : moves) {
    const bool types = move.down && !move.isModifier;
    if (types && isEnough(typed)) break;
    std::this_thread::sleep_until(start + move.at);
    sendKey(move.key, move.down, Body::serverKeyboard);
    if (types) ++typed;
  }
  releaseAll();
  return typed;
}

void Person::tap(xkb_keysym_t symbol, const TypingStyle& style) {
  const PhysicalKeyboard keyboard = this->keyboard(style.body);
  const auto stroke = strokeOrThrow(keyboard.strokeForSymbol(symbol), QString::number(symbol, 16));
  holdModifiers(keyboard, stroke, style.body);
  sendKey(stroke.key, true, style.body);
  std::this_thread::sleep_for(style.interval / 2);
  sendKey(stroke.key, false, style.body);
  holdModifiers(keyboard, {}, style.body);
  std::this_thread::sleep_for(style.interval / 2);
}

void Person::press(xkb_keysym_t symbol, Body body) {
  sendKey(keyOf(keyboard(body), symbol), true, body);
}

void Person::release(xkb_keysym_t symbol, Body body) {
  sendKey(keyOf(keyboard(body), symbol), false, body);
}

void Person::releaseAll() {
  while (!m_held.empty()) sendKey(m_held.back().key, false, m_held.back().body);
}

bool Person::canType(const QString& text) const {
  const PhysicalKeyboard keyboard(m_connection);
  const auto characters = text.toUcs4();
  return std::all_of(characters.begin(), characters.end(),
                     [&](char32_t character) { return keyboard.strokeFor(character).has_value(); });
}

void Person::holdModifiers(const PhysicalKeyboard& keyboard, const KeyStroke& stroke, Body body) {
  const auto hold = [&](xcb_keycode_t key, bool wanted) {
    const bool held = std::count(m_held.begin(), m_held.end(), HeldKey{key, body}) > 0;
    if (key != 0 && held != wanted) sendKey(key, wanted, body);
  };
  hold(keyboard.shiftKey(), stroke.shift);
  hold(keyboard.thirdLevelKey(), stroke.thirdLevel);
}

void Person::queueKey(xcb_keycode_t key, bool down, Body body) {
  if (body == Body::xtest) {
    xcb_test_fake_input(m_connection.get(), down ? XCB_KEY_PRESS : XCB_KEY_RELEASE, key,
                        XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
  } else {
    const int kind = down ? XCB_INPUT_DEVICE_KEY_PRESS : XCB_INPUT_DEVICE_KEY_RELEASE;
    xcb_test_fake_input(m_connection.get(), static_cast<std::uint8_t>(m_inputFirstEvent + kind),
                        key, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, m_serverKeyboard);
  }
  std::erase(m_held, HeldKey{key, body});
  if (down) m_held.push_back({key, body});
}

void Person::sendKey(xcb_keycode_t key, bool down, Body body) {
  queueKey(key, down, body);
  xcb_flush(m_connection.get());
}

}  // namespace zarvy::e2e
