// Starting a program: the one way the application runs a child process. A
// child gets no standard input and loses its standard error; its standard
// output is optionally collected while it runs, and its end is reported once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace velmar::Subprocess {

/// What a child that ran left behind.
struct Result {
    /// Exit code, or the number of the signal that ended the child.
    std::int32_t status = 0;
    /// Standard output decoded as UTF-8 with U+FFFD repair; empty when not captured.
    std::string stdout;
    bool operator==(const Result&) const = default;
};

/// The most standard output a run collects. A child that prints more has its
/// group killed (so its status is 9) and its output cut here.
inline constexpr std::size_t maxOutput = std::size_t(32) << 20;

/// Absent exactly when the child could not be started.
using Completion = std::function<void(std::optional<Result>)>;

/// Starts `executable` (an absolute path; no search of PATH) with `arguments`
/// (no zeroth argument) and returns at once.
///
/// The child's environment is a copy of ours with only PATH replaced by `path`
/// when that is present and not empty. Each child leads a session of its own,
/// apart from any terminal, and so a process group of its own; when `timeout`
/// seconds pass before the run is answered, SIGTERM goes to that whole group,
/// once, so whatever the child started ends with it.
///
/// `completion` is called exactly once: on a worker thread after the child
/// has ended and (when `captureStdout`) its output pipe has reached end of
/// file, which a descendant holding the pipe can delay; or on the calling
/// thread, before `run` returns, with an absent Result when the child cannot
/// be started.
void run(const std::string& executable, const std::vector<std::string>& arguments,
         const std::optional<std::string>& path, bool captureStdout,
         std::optional<double> timeout, Completion completion);

/// Ends the process group of every run with a time limit that has not been
/// answered yet: SIGTERM, then SIGKILL to what remains after `grace` seconds.
/// Runs without a limit (a browser) are left alone. For quitting.
void endAll(double grace = 0.5);

/// How many runs with a time limit are still unanswered.
std::size_t liveCount();

}  // namespace velmar::Subprocess
