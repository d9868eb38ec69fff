// The desktop side of the effects: opening an address in a browser, the
// clipboard, and finding which known browsers are installed or running.
#pragma once

#include <functional>
#include <set>
#include <span>
#include <string>

#include "Records.h"

namespace velmar::Links {

/// An absolute http or https address with a host: the only kind we open.
bool isWebAddress(const std::string& url);

/// Opens `url` with the system's default handler when `app` is empty, else
/// with the named browser: its desktop entry when one is installed, else its
/// executable from PATH. Main thread; returns at once. `failed` is called
/// (from any thread, at most once) when the address cannot be opened: not a
/// web address (isWebAddress), refused by the default handler, or no program
/// started.
void openURL(const std::string& url, const std::string& app, std::function<void()> failed);

/// Replaces the clipboard's contents with `text`. Main thread; does nothing
/// when the application has no GUI.
void copyToClipboard(const std::string& text);

/// The file names of the executables of the processes under `procRoot`:
/// the last part of <pid>/exe, or <pid>/comm when that link cannot be read.
std::set<std::string> runningExecutables(const std::string& procRoot = "/proc");

/// The known browsers, in table order, that are running (`running` true) or
/// have a desktop entry in `applicationDirs` (`running` false). Blocking.
std::vector<DetectedBrowser> detectBrowsers(const std::set<std::string>& running,
                                            std::span<const std::string> applicationDirs);

/// The same for this machine, now: /proc and the XDG applications folders.
std::vector<DetectedBrowser> detectBrowsers();

}  // namespace velmar::Links
