#pragma once

#include <cstdint>

// What crosses the socket between the program and its script worker. Both run on one machine and
// come from one build, so integers are in the machine's own order. A text is a row of UTF-16 units,
// any units, without an end mark; its length in units stands in the header before it.
namespace zarvy::scriptwire {

// Changes with anything below, so that a program that was replaced on disk while it runs does not
// talk past the new worker.
inline constexpr std::uint32_t version = 1;

// The descriptor under which the worker finds its end of the socket.
inline constexpr int workerSocket = 3;

// In UTF-16 units. Neither side sends a longer text, and neither believes in one. Half of what one
// expansion may become: a single result does not use that up.
inline constexpr std::uint32_t longestText = 8 * 1024 * 1024;

// From the worker, once: it takes requests from now on.
struct Ready {
  std::uint32_t version;
};

// To the worker, followed by the expression. The next one follows the reply.
struct Request {
  std::uint32_t expressionLength;
};

enum class Outcome : std::uint32_t {
  nothing,        // undefined, null, or the script threw
  text,           // the value has a text
  noText,         // there is a value, and turning it into a text failed
  textIsTooLong,  // the value has a text that must not cross
};

// From the worker, followed by the text and then by the description of the exception.
struct Reply {
  Outcome outcome;
  std::uint32_t hasThrown;  // 1: the script, or the turning of its value into a text; else 0
  std::uint32_t textLength;
  std::uint32_t descriptionLength;  // 0 too where the exception has no description
};

}  // namespace zarvy::scriptwire
