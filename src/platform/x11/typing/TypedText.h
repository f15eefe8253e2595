#pragma once

#include <optional>
#include <vector>

#include <QString>

namespace zarvy::x11 {

// How UTF-16 text becomes key presses. The units of several calls are one text: a surrogate pair
// may be cut between them. One thread.
class TypedText {
 public:
  // A key stands for a control character that keyboards have a key for.
  struct Piece {
    char32_t character = 0;
    std::optional<quint16> virtualKey;

    bool operator==(const Piece&) const = default;
  };

  // The pieces that `run` completes. Control characters without a key are left out; a surrogate
  // without its other half becomes U+FFFD, as text fields show it.
  [[nodiscard]] std::vector<Piece> feed(QStringView run);

  // What is still waiting for its other half when the text has ended, or a key comes in between. A
  // carriage return ahead of the Return key is the other half of one line break, and left out.
  [[nodiscard]] std::vector<Piece> finish(bool returnKeyFollows = false);

 private:
  void add(char32_t character, std::vector<Piece>& pieces);

  std::optional<char16_t> m_highSurrogate;
  bool m_hasCarriageReturn = false;
};

// The characters that typing `text` takes, keys left out.
[[nodiscard]] std::vector<char32_t> charactersToType(QStringView text);

}  // namespace zarvy::x11
