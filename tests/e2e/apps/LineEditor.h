#pragma once

#include <string>
#include <string_view>

namespace zarvy::e2e {

// What a line editor makes of the bytes that a terminal sends: UTF-8 text goes in at the caret, DEL
// takes away the character before it, the arrows left and right move it, carriage return is a line
// feed. Other control characters stay in the text, so that nothing unexpected goes unseen.
class LineEditor {
 public:
  void take(std::string_view bytes);
  void clear();

  // What a terminal has to be sent so that it shows the latest change, roughly.
  [[nodiscard]] std::string takeEcho();

  [[nodiscard]] std::u16string text() const;
  [[nodiscard]] std::size_t caret() const;  // in UTF-16 units

 private:
  void takeByte(unsigned char byte);
  void takeCharacter(char32_t character);
  void insert(char32_t character);
  [[nodiscard]] bool takeEscapeByte(unsigned char byte);

  std::u32string m_text;
  std::size_t m_caret = 0;  // in characters
  std::string m_escape;     // the bytes of an unfinished escape sequence
  char32_t m_partial = 0;   // the character of an unfinished UTF-8 sequence
  int m_missing = 0;        // how many bytes of it have yet to come
  std::string m_echo;
};

}  // namespace zarvy::e2e
