#include "e2e/scenarios/TextDifference.h"

#include <algorithm>
#include <limits>
#include <vector>

#include <QList>

namespace zarvy::e2e {

namespace {

using Characters = QList<uint>;

constexpr qsizetype outOfReach = std::numeric_limits<qsizetype>::max() / 2;

// The distance if it is at most `band`, computed along the diagonals within `band` only.
qsizetype distanceWithin(const Characters& left, const Characters& right, qsizetype band) {
  const auto columns = static_cast<std::size_t>(right.size() + 1);
  std::vector<qsizetype> above(columns, outOfReach);
  for (qsizetype column = 0; column <= std::min(band, right.size()); ++column) {
    above[static_cast<std::size_t>(column)] = column;
  }
  for (qsizetype row = 1; row <= left.size(); ++row) {
    std::vector<qsizetype> current(columns, outOfReach);
    const qsizetype from = std::max<qsizetype>(0, row - band);
    const qsizetype to = std::min(right.size(), row + band);
    for (qsizetype column = from; column <= to; ++column) {
      const auto at = static_cast<std::size_t>(column);
      qsizetype best = above[at] + 1;
      if (column > 0) {
        const bool same = left[row - 1] == right[column - 1];
        best = std::min({best, current[at - 1] + 1, above[at - 1] + (same ? 0 : 1)});
      }
      current[at] = best;
    }
    above = std::move(current);
  }
  return above[static_cast<std::size_t>(right.size())];
}

std::string codePoints(const Characters& characters, qsizetype from) {
  constexpr qsizetype shown = 6;
  std::string text;
  for (qsizetype at = from; at < std::min(characters.size(), from + shown); ++at) {
    text += QString::asprintf(" U+%04X", characters[at]).toStdString();
  }
  return text.empty() ? " the end" : text;
}

}  // namespace

qsizetype editDistance(const QString& left, const QString& right) {
  const Characters leftCharacters = left.toUcs4();
  const Characters rightCharacters = right.toUcs4();
  const qsizetype longest = std::max(leftCharacters.size(), rightCharacters.size());
  for (qsizetype band = 8;; band *= 4) {
    const qsizetype distance = distanceWithin(leftCharacters, rightCharacters, band);
    if (distance <= band || band >= longest) return std::min(distance, longest);
  }
}

std::string firstDifference(const QString& expected, const QString& actual) {
  if (expected == actual) return {};
  const Characters wanted = expected.toUcs4();
  const Characters held = actual.toUcs4();
  const auto [left, right] = std::mismatch(wanted.begin(), wanted.end(), held.begin(), held.end());
  const qsizetype at = left - wanted.begin();
  constexpr qsizetype context = 8;
  QString before = QString::fromUcs4(
      reinterpret_cast<const char32_t*>(wanted.data() + std::max<qsizetype>(0, at - context)),
      std::min(at, context));
  before.replace(u'\n', QChar(0x23CE));  // a report is one line: shown as a return symbol
  return "character " + std::to_string(at) + " after \"" + before.toStdString() + "\": expected" +
         codePoints(wanted, at) + ", found" + codePoints(held, at) + " (" +
         std::to_string(wanted.size()) + " characters expected, " + std::to_string(held.size()) +
         " found)";
}

}  // namespace zarvy::e2e
