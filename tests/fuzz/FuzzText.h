#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include <QString>
#include <QStringList>

namespace zarvy::fuzz {

using Bytes = std::span<const std::uint8_t>;

// Every sequence of bytes is a text, and every text that matters has one: ASCII stands for itself,
// any other byte for one of the characters and lone surrogates that are known to be troublesome.
[[nodiscard]] QString textOf(Bytes bytes);

// The texts between the bytes 0x1E; at least one, empty ones too.
[[nodiscard]] QStringList textsOf(Bytes bytes);

// Ends the process with a line that says what is wrong.
void require(bool isRight, std::string_view what);

}  // namespace zarvy::fuzz
