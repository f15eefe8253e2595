#pragma once

#include <random>
#include <vector>

#include <QString>
#include <QStringList>

namespace zarvy {

// Texts put together from given pieces, the same ones in every run.
class RandomText {
 public:
  explicit RandomText(QStringList pieces, unsigned seed = 20260121)
      : m_pieces(std::move(pieces)), m_random(seed) {}

  // Of at most `longest` pieces.
  [[nodiscard]] QString next(int longest) {
    QString text;
    for (int rest = number(longest); rest > 0; --rest) text += oneOf(m_pieces);
    return text;
  }

  [[nodiscard]] const QString& oneOf(const QStringList& texts) {
    return texts.at(number(static_cast<int>(texts.size()) - 1));
  }

  // From 0 to `greatest`.
  [[nodiscard]] int number(int greatest) {
    return std::uniform_int_distribution<int>(0, greatest)(m_random);
  }

 private:
  QStringList m_pieces;
  std::mt19937 m_random;
};

}  // namespace zarvy
