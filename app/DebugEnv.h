// Reading the automation's environment variables: numbers of seconds and the
// JSON array of messages to replay.
#pragma once

#include <optional>
#include <string_view>
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

/// Every element of a JSON array decoded as a Msg, in order; absent when the
/// text is no array or any one element does not decode.
std::optional<std::vector<Msg>> decodeMessages(std::string_view json);

}  // namespace velmar::DebugEnv
