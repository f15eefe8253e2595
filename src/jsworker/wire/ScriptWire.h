#pragma once

#include <cstdint>

// What crosses the socket between the program and its script worker. Both run on one machine and
// come from one build, so integers are in the machine's own order. A text is a row of UTF-16 units,
// any units, without an end mark; its length in units stands in the header before it.
namespace zarvy::scriptwire {

// Changes with anything below, so that a program that was replaced on disk while it runs does not
// talk past the new worker.
inline constexpr std::uint32_t version = 2;

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
  char zoneName[64];  // of the machine's time zone, as the tz database names it; ends with a NUL
};

// What a message from the worker to a request is, ahead of the message.
enum class Message : std::uint32_t {
  clockQuestion,  // any number of them while the script runs, each answered before the next
  reply,          // the last one
};

// The worker cannot read the system's time zones, nor learn that the machine has another one.
struct ClockQuestion {
  std::int64_t instant;  // in seconds from 1970 on
};

// Beyond it on either side no script has dates.
inline constexpr std::int64_t furthestInstant = 9'000'000'000'000;

// To the worker. What the clocks are ahead of UTC at that instant, in seconds.
struct ClockAnswer {
  std::int64_t from;   // the answer holds from here on ...
  std::int64_t until;  // ... and up to here, exclusively
  std::int32_t offset;
  std::int32_t saving;  // how much of it is daylight saving time
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
