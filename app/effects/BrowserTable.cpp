// The table of known Linux browsers. Executable names cover both the binary a
// running browser shows in /proc (e.g. Chrome's "chrome") and the launcher
// found on PATH ("google-chrome"); desktop ids cover the names distributions
// and vendors install under.
#include "BrowserTable.h"

#include <array>

namespace velmar {
namespace {

const std::array<LinuxBrowser, 10> table{{
    {"Firefox", {"firefox", "firefox-esr", "firefox-bin"},
     {"firefox.desktop", "firefox-esr.desktop", "org.mozilla.firefox.desktop"}},
    {"Google Chrome", {"chrome", "google-chrome", "google-chrome-stable"},
     {"google-chrome.desktop", "com.google.Chrome.desktop"}},
    {"Chromium", {"chromium", "chromium-browser"},
     {"chromium.desktop", "chromium-browser.desktop", "org.chromium.Chromium.desktop"}},
    {"Brave", {"brave", "brave-browser", "brave-browser-stable"},
     {"brave-browser.desktop", "com.brave.Browser.desktop"}},
    {"Microsoft Edge", {"msedge", "microsoft-edge", "microsoft-edge-stable"},
     {"microsoft-edge.desktop", "com.microsoft.Edge.desktop"}},
    {"Vivaldi", {"vivaldi-bin", "vivaldi", "vivaldi-stable"},
     {"vivaldi-stable.desktop", "com.vivaldi.Vivaldi.desktop"}},
    {"GNOME Web", {"epiphany", "epiphany-browser"},
     {"org.gnome.Epiphany.desktop", "epiphany-browser.desktop"}},
    {"Falkon", {"falkon"}, {"org.kde.falkon.desktop", "falkon.desktop"}},
    {"LibreWolf", {"librewolf"}, {"librewolf.desktop", "io.gitlab.librewolf-community.desktop"}},
    {"Opera", {"opera"}, {"opera.desktop", "com.opera.Opera.desktop"}},
}};

}  // namespace

std::span<const LinuxBrowser> linuxBrowsers() { return table; }

const LinuxBrowser* findLinuxBrowser(std::string_view app) {
    for (const auto& row : table)
        if (row.app == app)
            return &row;
    return nullptr;
}

}  // namespace velmar
