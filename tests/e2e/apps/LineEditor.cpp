#include "e2e/apps/LineEditor.h"

#include <utility>

namespace zarvy::e2e {

namespace {

constexpr char32_t replacementCharacter = 0xFFFD;

void appendUtf16(std::u16string& text, char32_t character) {
  if (character < 0x10000) {
    text += static_cast<char16_t>(character);
    return;
  }
  text += static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
  text += static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FF));
}

std::u16string toUtf16(std::u32string_view characters) {
  std::u16string text;
  for (const char32_t character : characters) appendUtf16(text, character);
  return text;
}

}  // namespace

void LineEditor::take(std::string_view bytes) {
  for (const char byte : bytes) takeByte(static_cast<unsigned char>(byte));
}

void LineEditor::clear() {
  m_text.clear();
  m_caret = 0;
  m_echo = "\x1b[2J\x1b[H";
}

std::string LineEditor::takeEcho() {
  return std::exchange(m_echo, {});
}

std::u16string LineEditor::text() const {
  return toUtf16(m_text);
}

std::size_t LineEditor::caret() const {
  return toUtf16(std::u32string_view(m_text).substr(0, m_caret)).size();
}

void LineEditor::takeByte(unsigned char byte) {
  if (takeEscapeByte(byte)) return;
  if (m_missing > 0 && (byte & 0xC0U) == 0x80U) {
    m_partial = (m_partial << 6) | (byte & 0x3FU);
    if (--m_missing == 0) takeCharacter(m_partial);
    return;
  }
  if (m_missing > 0) takeCharacter(replacementCharacter);
  m_missing = byte >= 0xF0 ? 3 : byte >= 0xE0 ? 2 : byte >= 0xC0 ? 1 : 0;
  m_partial = m_missing == 3 ? byte & 0x07U : m_missing == 2 ? byte & 0x0FU : byte & 0x1FU;
  if (m_missing == 0) takeCharacter(byte >= 0x80 ? replacementCharacter : char32_t{byte});
}

// ESC [ D or ESC O D, and the same with C; what is no arrow goes into the text as it came.
bool LineEditor::takeEscapeByte(unsigned char byte) {
  if (m_escape.empty() && byte != 0x1B) return false;
  m_escape += static_cast<char>(byte);
  if (m_escape.size() == 1) return true;
  if (m_escape.size() == 2 && (byte == '[' || byte == 'O')) return true;
  if (m_escape.size() == 3 && byte == 'D') {
    m_caret -= m_caret > 0 ? 1U : 0U;
    m_echo += "\b";
  } else if (m_escape.size() == 3 && byte == 'C') {
    m_caret += m_caret < m_text.size() ? 1U : 0U;
    m_echo += "\x1b[C";
  } else {
    for (const char part : m_escape) insert(static_cast<unsigned char>(part));
  }
  m_escape.clear();
  return true;
}

void LineEditor::takeCharacter(char32_t character) {
  if (character == 0x7F) {
    if (m_caret == 0) return;
    m_text.erase(--m_caret, 1);
    m_echo += "\b \b";
    return;
  }
  insert(character == U'\r' ? U'\n' : character);
}

void LineEditor::insert(char32_t character) {
  m_text.insert(m_caret++, 1, character);
  if (character == U'\n') {
    m_echo += "\r\n";
  } else if (character >= 0x20 && character < 0x7F) {
    m_echo += static_cast<char>(character);
  } else {
    m_echo += "\xC2\xB7";  // a middle dot for all the rest: nobody here knows how wide it is
  }
}

}  // namespace zarvy::e2e
