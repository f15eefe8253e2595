#pragma once

#include <QString>

namespace zarvy {

// Full Unicode case mapping, the same in every language: a letter may become several, and the
// result may be longer than the text. Lone surrogates stay as they are. Any thread.

[[nodiscard]] QString upperCased(const QString& text);
[[nodiscard]] QString lowerCased(const QString& text);

// For comparing without regard to case: two texts that differ in case alone have the same. Turkish
// and Azeri (`isTurkic`) know four letters I, of which the others take two for one.
[[nodiscard]] QString caseFolded(const QString& text, bool isTurkic);

// Each word, delimited by white space, with its first letter as a capital and the rest in lower
// case. What stands before the first letter, such as a quotation mark or a digit, does not count.
// A digraph that has a form of its own for the beginning of a word takes that.
[[nodiscard]] QString capitalized(const QString& text);

}  // namespace zarvy
