// The "--headless" entry: standard input in, the driver's lines out.
#pragma once

namespace velmar::HeadlessEntry {

/// Reads the whole script from standard input, then replays it and prints each
/// output line as it is made. Returns the exit status (always 0).
int run();

}  // namespace velmar::HeadlessEntry
