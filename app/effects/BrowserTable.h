// The browsers Velmar knows on Linux, in the order they are offered: the name
// the core stores (`app`), the executable file names that identify a running
// instance or can be launched from PATH, and the desktop entry ids that mark
// an installed one.
#pragma once

#include <span>
#include <string_view>
#include <vector>

namespace velmar {

struct LinuxBrowser {
    std::string_view app;
    std::vector<std::string_view> executables;
    std::vector<std::string_view> desktopIds;
};

/// The table, in display order.
std::span<const LinuxBrowser> linuxBrowsers();

/// The row whose `app` equals `app` exactly; null when unknown.
const LinuxBrowser* findLinuxBrowser(std::string_view app);

}  // namespace velmar
