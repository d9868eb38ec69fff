// Replays a script of JSON message lines against a fresh model and describes
// every step as one JSON line. Performs no effect and does no I/O itself.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velmar::Headless {

/// Takes one output line (without line ending). The text is only valid
/// during the call.
using Sink = std::function<void(std::string_view)>;

/// Gives `emit` the output lines in order, each as soon as it is made: a Step
/// or Failure per input line that is not blank or a "#" comment, then the
/// Final model. Nothing of the input or the output is kept beyond its step.
void run(std::span<const std::string_view> lines, const Sink& emit);

/// The same output lines, collected.
std::vector<std::string> run(const std::vector<std::string>& lines);

inline constexpr std::string_view encodeFailed = R"({"error":"encode failed"})";

}  // namespace velmar::Headless
