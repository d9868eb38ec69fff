// Replays a script of JSON message lines against a fresh model and describes
// every step as one JSON line. Performs no effect and does no I/O itself.
#pragma once

#include <string>
#include <vector>

namespace velmar::Headless {

/// The output lines (without line endings): a Step or Failure per input line
/// that is not blank or a "#" comment, then the Final model.
std::vector<std::string> run(const std::vector<std::string>& lines);

inline constexpr std::string_view encodeFailed = R"({"error":"encode failed"})";

}  // namespace velmar::Headless
