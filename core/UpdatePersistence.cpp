// Taking in the stored files and saving them back. The three files asked for
// at start-up may arrive in any order, so each branch of `fileRead` only sets
// what its own file holds, and the "Loading..." flash is cleared by whichever
// of the repos and settings files comes last when there is nothing to fetch.
// Every save goes through `write`, which stays silent until the home
// directory is known.
#include <algorithm>
#include <unordered_set>
#include <utility>

#include "Formats.h"
#include "Graphql.h"
#include "Model.h"

namespace velmar {

namespace {

/// Clears the start-up flash once both files are in and no fetch will ever
/// end to clear it. Any other flash was put there for the user and stays.
void clearLoadingFlashIfIdle(Model& m) {
    if (m.settingsLoaded && m.reposLoaded && m.repos.empty() && m.flash == Flash::loading)
        m.flash.reset();
}

Effects takeInSettings(Model& m, const std::string& contents) {
    const Formats::Settings s = Formats::parseSettings(contents);
    m.autoRefresh = s.autoRefresh;
    m.onboarded = s.onboarded;
    m.appearance = s.appearance;
    // A navigation made before the file arrived is the user's newer choice.
    if (!m.userNavigated) m.screen = s.screen;
    m.settingsLoaded = true;
    clearLoadingFlashIfIdle(m);
    return {};
}

Effects takeInBrowsers(Model& m, const std::string& contents) {
    Formats::BrowserPrefs prefs = Formats::parseBrowsers(contents);
    m.browserMode = prefs.mode;
    m.browserPref = std::move(prefs.selected);
    if (prefs.shown) {
        m.manualConfigured = true;
        m.storedShown = std::move(*prefs.shown);
        for (auto& b : m.browsers)
            b.shown = std::find(m.storedShown.begin(), m.storedShown.end(), b.key()) !=
                      m.storedShown.end();
    }
    m.browsersLoaded = true;
    m.resolveSelection();
    return {};
}

Effects takeInRepos(Model& m, const std::string& contents) {
    std::vector<Repo> earlier = std::move(m.repos);

    std::vector<Repo> loaded;
    std::unordered_set<std::string> loadedNames;
    for (auto& line : Formats::parseRepos(contents)) {
        Repo r;
        r.id = m.nextRepoId++;
        r.name = std::move(line.name);
        r.pattern = std::move(line.pattern);
        r.detectedPattern = std::move(line.detected);
        r.state = RepoState::queued;
        loadedNames.insert(r.name);
        loaded.push_back(std::move(r));
    }
    // Repositories added before the file came in stay behind the stored ones;
    // one the file already holds gives way to the stored row.
    for (auto& r : earlier)
        if (!loadedNames.count(r.name)) loaded.push_back(std::move(r));
    m.repos = std::move(loaded);

    m.reposLoaded = true;
    clearLoadingFlashIfIdle(m);

    Effects effects;
    // Additions made before the file arrived were never saved, since nothing
    // is written before the home directory is known; the merge saves them now.
    if (!earlier.empty()) effects = m.writeRepos();
    append(effects, m.startNext());
    return effects;
}

}  // namespace

Effects Model::fileRead(ConfigFile file, const std::string& contents) {
    switch (file) {
        case ConfigFile::repos: return takeInRepos(*this, contents);
        case ConfigFile::browsers: return takeInBrowsers(*this, contents);
        case ConfigFile::settings: return takeInSettings(*this, contents);
        // The shell reads the window file itself before the window is built.
        case ConfigFile::window: return {};
        // Read by the shell at start, and handed in only when the file exists.
        case ConfigFile::extras: {
            const Graphql::Extras extras = Graphql::parseExtras(contents);
            checks = extras.checks ? std::optional<bool>(true) : std::nullopt;
            yours = extras.yours;
            return {};
        }
    }
    return {};
}

Effects Model::write(ConfigFile file, std::string contents) const {
    if (!home) return {};
    return {effect::WriteFile{file, configPath(file, *home), std::move(contents)}};
}

Effects Model::writeSettings() const {
    return write(ConfigFile::settings,
                 Formats::serializeSettings(autoRefresh, screen, onboarded, appearance));
}

Effects Model::finishOnboarding() {
    onboarded = true;
    Effects effects = writeSettings();
    if (!pathResolved) return effects;
    // Onboarding may have been where gh got installed or signed in, so the
    // listings and the pull requests are asked for afresh.
    effects.push_back(effect::FetchSuggestions{SuggestionSource::owned, path});
    effects.push_back(effect::FetchSuggestions{SuggestionSource::shared, path});
    requeueAll();
    append(effects, startNext());
    return effects;
}

}  // namespace velmar
