#pragma once

#include <optional>

#include <QString>

#include <unicode/utypes.h>

namespace zarvy {

// The text that a function of ICU writes. `write` is called with (target, capacity, status) and
// gives the length, all in UTF-16 units, as ICU's functions do; where `guess` units are too few it
// is called once more with as many as it asked for. Absent where ICU fails.
template <typename Write>
[[nodiscard]] std::optional<QString> textFromIcu(qsizetype guess, Write write) {
  QString text(guess, Qt::Uninitialized);
  UErrorCode status = U_ZERO_ERROR;
  const auto writeInto = [&] {
    status = U_ZERO_ERROR;
    return write(reinterpret_cast<char16_t*>(text.data()), static_cast<int32_t>(text.size()),
                 &status);
  };
  int32_t length = writeInto();
  if (status == U_BUFFER_OVERFLOW_ERROR) {
    text.resize(length);
    length = writeInto();
  }
  if (U_FAILURE(status)) return std::nullopt;
  text.truncate(length);
  return text;
}

}  // namespace zarvy
