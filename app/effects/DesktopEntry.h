// Desktop entries: where installed applications are announced on a Linux
// desktop, and how the command of one is turned into a program and its
// arguments for a given address.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velmar::DesktopEntry {

/// The applications folders in search order, from the environment at call
/// time: each folder of $XDG_DATA_DIRS (else /usr/local/share:/usr/share),
/// then $XDG_DATA_HOME (else ~/.local/share), each + "/applications". The
/// system's folders come first: an application installed both there and for
/// the user alone is opened from the system's.
std::vector<std::string> applicationDirs();

struct Entry {
    std::string file;  ///< where it was found
    std::string exec;  ///< the Exec value, unescaped
    std::string icon;  ///< the Icon value: a theme icon name or a file path; may be empty
    bool operator==(const Entry&) const = default;
};

/// Reads the [Desktop Entry] group of `text`. Absent when it has no Exec or
/// says Hidden=true (an entry the user or the system has deleted).
std::optional<Entry> parse(std::string_view text, std::string file);

/// The first usable entry with one of `ids`, trying every id in a folder
/// before the next folder.
std::optional<Entry> find(std::span<const std::string> dirs, std::span<const std::string_view> ids);

/// The arguments of `exec` (quoting rules of desktop entries) with %u, %U,
/// %f and %F replaced by `url`, %% by "%", and every other field code
/// removed. When the command names no address field, `url` is appended.
/// Absent for a command that is empty or badly quoted.
std::optional<std::vector<std::string>> commandLine(std::string_view exec, std::string_view url);

/// `program` itself when it contains "/", else the first executable file of
/// that name in the folders of `searchPath` (colon-separated); else absent.
std::optional<std::string> locate(const std::string& program, std::string_view searchPath);

}  // namespace velmar::DesktopEntry
