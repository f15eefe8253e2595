#pragma once

#include <QString>

namespace zarvy::e2e {

// 300 different characters of twelve scripts, with emoji sequences and combining marks among them.
[[nodiscard]] QString textOfTwelveScripts();

// 2,000 characters of ordinary prose, code and figures that an American keyboard has.
[[nodiscard]] QString longPlainText();

// So many characters of that prose.
[[nodiscard]] QString plainText(qsizetype length);

// 2,000 characters that use 60 different ones which few layouts have.
[[nodiscard]] QString longForeignText();

// 1,000 characters, in words, that use 240 different ones in turn.
[[nodiscard]] QString textOfTwoHundredAndForty();

}  // namespace zarvy::e2e
