// The browser list and its selection: rebuilding the list from a detection
// answer, choosing which entry is selected, and the user's three changes
// (select a tile, tick a browser, switch mode), each saved to the browsers file.
#include <algorithm>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "Formats.h"
#include "Model.h"

namespace velmar {

namespace {

bool contains(const std::vector<std::string>& list, const std::string& value) {
    return std::find(list.begin(), list.end(), value) != list.end();
}

}  // namespace

void Model::browsersDetectedFrom(const std::vector<DetectedBrowser>& list) {
    std::unordered_map<std::string_view, const Browser*> known;
    for (const auto& b : browsers) known.emplace(b.app, &b);

    std::vector<Browser> rebuilt;
    rebuilt.reserve(list.size() + 1);
    std::unordered_set<std::string> seen;

    auto take = [&](const std::string& app, bool running) {
        if (!seen.insert(app).second) return;
        Browser b;
        b.app = app;
        b.running = running;
        if (app.empty()) {
            b.name = std::string(Browser::systemDefaultName);
            b.initials = "SD";
        } else {
            b.name = app;
            b.initials = Formats::initials(app);
        }
        if (auto it = known.find(app); it != known.end()) {
            b.id = it->second->id;
            b.shown = it->second->shown;
        } else {
            b.id = nextBrowserId++;
            b.shown = !manualConfigured || contains(storedShown, b.key());
        }
        rebuilt.push_back(std::move(b));
    };

    // The system-default entry always exists, comes first and never runs.
    take(std::string(), false);
    for (const auto& d : list) take(d.app, d.running);

    browsers = std::move(rebuilt);
    browsersDetected = true;
    resolveSelection();
}

void Model::resolveSelection() {
    if (browserPref) {
        for (const auto& b : browsers) {
            if (b.offeredIn(browserMode) && b.key() == *browserPref) {
                selectedBrowser = b.id;
                return;
            }
        }
    }
    if (selectedBrowser) {
        for (const auto& b : browsers)
            if (b.id == *selectedBrowser && b.offeredIn(browserMode)) return;
    }
    for (const auto& b : browsers) {
        if (b.offeredIn(browserMode)) {
            selectedBrowser = b.id;
            return;
        }
    }
    for (const auto& b : browsers) {
        if (b.isSystemDefault()) {
            selectedBrowser = b.id;
            return;
        }
    }
    selectedBrowser.reset();
}

Effects Model::selectBrowser(std::int64_t id) {
    // The id is taken even when nothing has it; the next resolveSelection
    // moves on, and the empty preference matches no browser.
    selectedBrowser = id;
    const Browser* chosen = browser(id);
    browserPref = chosen ? chosen->key() : std::string();
    return writeBrowsers();
}

Effects Model::setBrowserMode(BrowserMode mode) {
    if (mode == browserMode) return {};
    browserMode = mode;

    // The first switch to manual ticks what the user is using now, so the
    // picker does not suddenly offer every installed browser. Without a
    // detection answer there is nothing to seed from yet.
    if (mode == BrowserMode::manual && !manualConfigured && browsersDetected) {
        const bool anyRunning = std::any_of(browsers.begin(), browsers.end(),
                                            [](const Browser& b) { return b.running; });
        for (auto& b : browsers) b.shown = !anyRunning || b.running || b.isSystemDefault();
        manualConfigured = true;
        storedShown = shownKeys();
    }
    resolveSelection();

    Effects effects;
    if (mode == BrowserMode::open) effects.push_back(effect::DetectBrowsers{});
    append(effects, writeBrowsers());
    return effects;
}

Effects Model::toggleBrowserShown(std::int64_t id) {
    const auto it = std::find_if(browsers.begin(), browsers.end(),
                                 [id](const Browser& b) { return b.id == id; });
    if (it == browsers.end()) return {};
    it->shown = !it->shown;
    manualConfigured = true;
    storedShown = shownKeys();
    resolveSelection();
    return writeBrowsers();
}

Effects Model::writeBrowsers() const {
    std::optional<std::vector<std::string>> shown;
    // Before any detection the list holds no real browsers, so the keys as
    // last stored are written back rather than lost.
    if (manualConfigured) shown = browsersDetected ? shownKeys() : storedShown;
    return write(ConfigFile::browsers, Formats::serializeBrowsers(browserMode, browserPref, shown));
}

}  // namespace velmar
