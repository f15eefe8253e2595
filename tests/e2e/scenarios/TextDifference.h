#pragma once

#include <string>

#include <QString>

namespace zarvy::e2e {

// How many characters have to be put in, taken out or exchanged to make `right` of `left`.
// Characters are code points.
[[nodiscard]] qsizetype editDistance(const QString& left, const QString& right);

// One line that shows where `actual` first departs from `expected`, with the code points there;
// empty where the two are equal.
[[nodiscard]] std::string firstDifference(const QString& expected, const QString& actual);

}  // namespace zarvy::e2e
