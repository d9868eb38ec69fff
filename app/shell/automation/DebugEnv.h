// Reading the automation's environment variables: numbers of seconds, the
// points of clicks and of a drag, a key code, the JSON array of messages to
// replay, and the integers of the log lines.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Msg.h"

namespace velmar::DebugEnv {

/// A whole value that reads as a floating-point number of seconds; anything
/// else, an empty value or no value (nullptr) counts as not set. Not-a-number
/// counts as not set too, since no moment can be made of it.
std::optional<double> seconds(const char* value);

/// Milliseconds for a timer: negative delays run at once, and delays beyond a
/// timer's range are held at its end.
int timerMilliseconds(double seconds);

/// When the synthetic clicks, key and drag begin, in seconds: 5; the send
/// delay plus 1 when that is set; the click delay when that is set, whatever
/// the others say.
double startDelay(const char* clickDelay, const char* sendDelay);

/// The numbers among `value` split on `separator`: empty parts are dropped,
/// the rest trimmed of spaces and tabs, and those that do not read whole as
/// a number left out. Infinity and not-a-number are numbers here.
std::vector<double> numbers(std::string_view value, char separator);

/// VELMAR_DEBUG_CLICK: the pieces between ";" that hold exactly two numbers.
std::vector<std::pair<double, double>> clickPoints(const char* value);

/// VELMAR_DEBUG_DRAG: exactly four numbers, first point then second.
std::optional<std::array<double, 4>> dragPoints(const char* value);

/// VELMAR_DEBUG_KEY: a decimal key code from 0 to 65535.
std::optional<int> keyCode(const char* value);

/// A coordinate for the log: its integer part, held to the 64-bit range;
/// "nan", "inf" and "-inf" for what has none.
std::string logInteger(double value);

/// Every element of a JSON array decoded as a Msg, in order; absent when the
/// text is no array or any one element does not decode.
std::optional<std::vector<Msg>> decodeMessages(std::string_view json);

}  // namespace velmar::DebugEnv
