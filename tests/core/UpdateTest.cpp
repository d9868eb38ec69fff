// The dispatch rows of the step: each row is a start model, one message, the
// changes the model must show and the exact list of effects.
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Formats.h"
#include "Json.h"
#include "Model.h"

namespace velmar {
namespace {

const std::string kHome = "/home/u";
const std::string kPath = "/usr/bin:/bin";

std::string path(ConfigFile f) { return configPath(f, kHome); }

Repo repo(std::int64_t id, std::string name, RepoState state = RepoState::ok) {
    Repo r;
    r.id = id;
    r.name = std::move(name);
    r.state = state;
    return r;
}

PR pr(std::int64_t id, std::int64_t repoId, std::string url, std::string preview = "") {
    PR p;
    p.id = id;
    p.repoId = repoId;
    p.url = std::move(url);
    p.preview = std::move(preview);
    return p;
}

/// A model after a finished start-up: home and path known, files in, idle.
Model ready() {
    Model m;
    m.home = kHome;
    m.path = kPath;
    m.pathResolved = true;
    m.reposLoaded = m.settingsLoaded = m.browsersLoaded = true;
    m.onboarded = true;
    m.flash.reset();
    m.gh = GhStatus::ok;
    return m;
}

Model withRepos(Model m) {
    m.repos = {repo(1, "acme/web"), repo(2, "acme/api")};
    m.nextRepoId = 3;
    m.prs = {pr(100012, 1, "https://github.com/acme/web/pull/12", "https://pr-12.example.app"),
             pr(200003, 2, "https://github.com/acme/api/pull/3")};
    return m;
}

Effects settingsWrite(bool autoRefresh, Screen screen, bool onboarded, Appearance a) {
    return {effect::WriteFile{ConfigFile::settings, path(ConfigFile::settings),
                              Formats::serializeSettings(autoRefresh, screen, onboarded, a)}};
}

struct Row {
    std::string name;
    Model start;
    Msg msg;
    std::function<void(Model&)> change;
    Effects effects;
};

void runRows(const std::vector<Row>& rows) {
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Model expected = row.start;
        if (row.change) row.change(expected);
        const auto [next, effects] = update(row.start, row.msg);
        EXPECT_EQ(next, expected);
        EXPECT_EQ(effects, row.effects);
    }
}

auto nothing = [](Model&) {};

TEST(dispatch, boot_and_resolution_rows) {
    Model fresh;
    Model loaded = fresh;
    loaded.reposLoaded = true;
    loaded.repos = {repo(1, "acme/web", RepoState::queued)};
    runRows({
        {"boot asks for home, path and browsers, in that order", fresh, msg::Boot{}, nothing,
         {effect::ResolveHome{}, effect::ResolvePath{}, effect::DetectBrowsers{}}},
        {"home asks for three files, not the window", fresh, msg::HomeResolved{kHome},
         [](Model& m) { m.home = kHome; },
         {effect::ReadFile{ConfigFile::repos, path(ConfigFile::repos)},
          effect::ReadFile{ConfigFile::browsers, path(ConfigFile::browsers)},
          effect::ReadFile{ConfigFile::settings, path(ConfigFile::settings)}}},
        {"empty path stays absent; no fetch before the repos file", fresh, msg::PathResolved{""},
         [](Model& m) { m.pathResolved = true; },
         {effect::GhPreflight{}, effect::BrewProbe{},
          effect::FetchSuggestions{SuggestionSource::owned, std::nullopt},
          effect::FetchSuggestions{SuggestionSource::shared, std::nullopt}}},
        {"path after the repos file starts the first fetch", loaded, msg::PathResolved{kPath},
         [](Model& m) {
             m.path = kPath;
             m.pathResolved = true;
             m.fetchInFlight = true;
             m.repos[0].state = RepoState::loading;
         },
         {effect::GhPreflight{kPath}, effect::BrewProbe{kPath},
          effect::FetchSuggestions{SuggestionSource::owned, kPath},
          effect::FetchSuggestions{SuggestionSource::shared, kPath},
          effect::FetchPrs{"acme/web", kPath}}},
        {"window restored without a frame", fresh, msg::WindowRestored{}, nothing, {}},
    });
}

TEST(dispatch, results_of_outside_work) {
    const Model m = ready();
    auto flashOf = [](std::string_view text) {
        return [text](Model& x) { x.flash = std::string(text); };
    };
    runRows({
        {"failed repos write", m, msg::FileWritten{ConfigFile::repos, false},
         flashOf(Flash::couldNotSaveRepos), {}},
        {"failed browsers write", m, msg::FileWritten{ConfigFile::browsers, false},
         flashOf(Flash::couldNotSaveBrowsers), {}},
        {"failed window write reads as settings", m, msg::FileWritten{ConfigFile::window, false},
         flashOf(Flash::couldNotSaveSettings), {}},
        {"successful write says nothing", m, msg::FileWritten{ConfigFile::repos, true}, nothing, {}},
        {"open failed", m, msg::OpenFailed{}, flashOf(Flash::couldNotOpen), {}},
        {"detect failed keeps the list", m, msg::BrowsersDetectFailed{}, nothing, {}},
        {"failed suggestions keep the old ones", m,
         msg::SuggestionsFetched{SuggestionSource::owned, "acme/web\n", false}, nothing, {}},
        {"suggestions merge", m, msg::SuggestionsFetched{SuggestionSource::shared, "a/b\nc/d\n", true},
         [](Model& x) { x.suggestions = {{"a/b", false}, {"c/d", false}}; }, {}},
        {"brew probed", m, msg::BrewProbed{false}, [](Model& x) { x.brewInstalled = false; }, {}},
    });
}

TEST(dispatch, gh_state_and_onboarding) {
    Model missingOnManage = withRepos(ready());
    missingOnManage.gh = GhStatus::missing;
    missingOnManage.screen = Screen::manage;
    Model missingOnList = missingOnManage;
    missingOnList.screen = Screen::list;
    Model unknownOnManage = missingOnManage;
    unknownOnManage.gh = GhStatus::unknown;
    Model onboarding = withRepos(ready());
    onboarding.onboarded = false;
    onboarding.gh = GhStatus::loggedOut;
    Model onboardingNoPath = onboarding;
    onboardingNoPath.pathResolved = false;
    onboardingNoPath.path.reset();

    runRows({
        {"exit 127 after ok", ready(), msg::GhChecked{127},
         [](Model& m) { m.gh = GhStatus::missing; }, {}},
        {"exit 1 means logged out", ready(), msg::GhChecked{1},
         [](Model& m) { m.gh = GhStatus::loggedOut; }, {}},
        {"fixed on the list screen: no refresh", missingOnList, msg::GhChecked{0},
         [](Model& m) { m.gh = GhStatus::ok; }, {}},
        {"fixed on the manage screen refreshes", missingOnManage, msg::GhChecked{0},
         [](Model& m) {
             m.gh = GhStatus::ok;
             m.repos[0].state = RepoState::loading;
             m.repos[1].state = RepoState::queued;
             m.fetchInFlight = true;
         },
         {effect::GhPreflight{kPath}, effect::FetchPrs{"acme/web", kPath}}},
        {"ok after unknown never refreshes", unknownOnManage, msg::GhChecked{0},
         [](Model& m) { m.gh = GhStatus::ok; }, {}},
        {"tick while onboarding probes again", onboarding, msg::OnboardingTick{}, nothing,
         {effect::GhPreflight{kPath}, effect::BrewProbe{kPath}}},
        {"tick without a path does nothing", onboardingNoPath, msg::OnboardingTick{}, nothing, {}},
        {"tick with gh ok does nothing", ready(), msg::OnboardingTick{}, nothing, {}},
        {"continue needs gh ok", onboarding, msg::OnboardingContinue{}, nothing, {}},
        {"skip finishes and starts fetching", onboarding, msg::OnboardingSkip{},
         [](Model& m) {
             m.onboarded = true;
             m.repos[0].state = RepoState::loading;
             m.repos[1].state = RepoState::queued;
             m.fetchInFlight = true;
         },
         [] {
             Effects e = settingsWrite(false, Screen::list, true, Appearance::dark);
             e.push_back(effect::FetchSuggestions{SuggestionSource::owned, kPath});
             e.push_back(effect::FetchSuggestions{SuggestionSource::shared, kPath});
             e.push_back(effect::FetchPrs{"acme/web", kPath});
             return e;
         }()},
        {"skip before the path only saves", onboardingNoPath, msg::OnboardingSkip{},
         [](Model& m) { m.onboarded = true; },
         settingsWrite(false, Screen::list, true, Appearance::dark)},
        {"install page opens in the selected app", ready(), msg::OpenInstallPage{}, nothing,
         {effect::OpenURL{std::string(Constants::ghInstallURL), ""}}},
    });
}

TEST(dispatch, settings_navigation_and_timers) {
    Model editing = withRepos(ready());
    editing.screen = Screen::manage;
    editing.flash = "Copied link to clipboard";
    editing.addOpen = true;
    editing.addText = "acme/x";
    editing.editingRepo = 1;
    editing.editText = "https://x";
    Model noHome = ready();
    noHome.home.reset();
    Model autoIdle = withRepos(ready());
    autoIdle.autoRefresh = true;
    Model autoQueued = autoIdle;
    autoQueued.repos[1].state = RepoState::queued;
    Model autoInFlight = autoIdle;
    autoInFlight.fetchInFlight = true;
    Model manual = ready();
    manual.browserMode = BrowserMode::manual;

    runRows({
        {"set auto saves settings", ready(), msg::SetAuto{true},
         [](Model& m) { m.autoRefresh = true; },
         settingsWrite(true, Screen::list, true, Appearance::dark)},
        {"set auto without home changes the model only", noHome, msg::SetAuto{true},
         [](Model& m) { m.autoRefresh = true; }, {}},
        {"appearance saves settings", ready(), msg::SetAppearance{Appearance::system},
         [](Model& m) { m.appearance = Appearance::system; },
         settingsWrite(false, Screen::list, true, Appearance::system)},
        {"navigate to the same screen still resets the editors", editing,
         msg::Navigate{Screen::manage},
         [](Model& m) {
             m.userNavigated = true;
             m.flash.reset();
             m.addOpen = false;
             m.addText.clear();
             m.editingRepo.reset();
             m.editText.clear();
         },
         settingsWrite(false, Screen::manage, true, Appearance::dark)},
        {"auto tick requeues and fetches", autoIdle, msg::AutoTick{},
         [](Model& m) {
             m.repos[0].state = RepoState::loading;
             m.repos[1].state = RepoState::queued;
             m.fetchInFlight = true;
         },
         {effect::FetchPrs{"acme/web", kPath}}},
        {"auto tick with auto off", withRepos(ready()), msg::AutoTick{}, nothing, {}},
        {"auto tick with a queued repo", autoQueued, msg::AutoTick{}, nothing, {}},
        {"auto tick with a fetch in flight", autoInFlight, msg::AutoTick{}, nothing, {}},
        {"detect tick in open mode", ready(), msg::DetectTick{}, nothing, {effect::DetectBrowsers{}}},
        {"detect tick in manual mode", manual, msg::DetectTick{}, nothing, {}},
    });
}

TEST(dispatch, opening_copying_and_hover) {
    const Model m = withRepos(ready());
    Model hovered = m;
    hovered.hoveredPr = 100012;
    auto flashOf = [](std::string_view text) {
        return [text](Model& x) { x.flash = std::string(text); };
    };
    runRows({
        {"open pr", m, msg::OpenPr{100012}, nothing,
         {effect::OpenURL{"https://github.com/acme/web/pull/12", ""}}},
        {"open unknown pr", m, msg::OpenPr{7}, nothing, {}},
        {"copy pr link", m, msg::CopyPrLink{200003}, flashOf(Flash::copiedLink),
         {effect::CopyToClipboard{"https://github.com/acme/api/pull/3"}}},
        {"open preview", m, msg::OpenPreview{100012, std::nullopt}, nothing,
         {effect::OpenURL{"https://pr-12.example.app", ""}}},
        {"open empty preview", m, msg::OpenPreview{200003, std::nullopt}, nothing, {}},
        {"copy empty preview", m, msg::CopyPreview{200003}, nothing, {}},
        {"copy preview", m, msg::CopyPreview{100012}, flashOf(Flash::copiedLink),
         {effect::CopyToClipboard{"https://pr-12.example.app"}}},
        {"open repo", m, msg::OpenRepo{2}, nothing,
         {effect::OpenURL{"https://github.com/acme/api", ""}}},
        {"copy repo link", m, msg::CopyRepoLink{1}, flashOf(Flash::copiedLink),
         {effect::CopyToClipboard{"https://github.com/acme/web"}}},
        {"copy repo name", m, msg::CopyRepoName{1}, flashOf(Flash::copiedRepoName),
         {effect::CopyToClipboard{"acme/web"}}},
        {"copy unknown repo name", m, msg::CopyRepoName{9}, nothing, {}},
        {"copy command", m, msg::CopyCommand{"gh auth login"}, flashOf(Flash::copiedCommand),
         {effect::CopyToClipboard{"gh auth login"}}},
        {"hover", m, msg::HoverPr{200003}, [](Model& x) { x.hoveredPr = 200003; }, {}},
        {"unhover of another row keeps the hover", hovered, msg::UnhoverPr{200003}, nothing, {}},
        {"unhover of the hovered row", hovered, msg::UnhoverPr{100012},
         [](Model& x) { x.hoveredPr.reset(); }, {}},
    });
}

TEST(dispatch, add_field_and_pattern_editor) {
    const Model m = withRepos(ready());
    Model open = m;
    open.addOpen = true;
    open.addText = "  acme/docs \n";
    Model openShort = open;
    openShort.addText = "a/";
    Model openWatched = open;
    openWatched.addText = "acme/web";
    const std::string slug256(256, 'a'), slug257(257, 'a');
    const std::string pattern2048(2048, 'p'), pattern2049(2049, 'p');
    auto repoWrite = [](std::vector<Repo> repos) {
        return effect::WriteFile{ConfigFile::repos, path(ConfigFile::repos),
                                 Formats::serializeRepos(repos)};
    };
    Repo docs = repo(3, "acme/docs", RepoState::loading);

    runRows({
        {"open add clears text and flash", [&] { Model x = m; x.flash = "x"; x.addText = "q"; return x; }(),
         msg::OpenAdd{},
         [](Model& x) {
             x.addOpen = true;
             x.addText.clear();
             x.flash.reset();
         },
         {}},
        {"close add", open, msg::CloseAdd{},
         [](Model& x) {
             x.addOpen = false;
             x.addText.clear();
         },
         {}},
        {"256 bytes pass", m, msg::AddText{slug256}, [&](Model& x) { x.addText = slug256; }, {}},
        {"257 bytes are refused whole", open, msg::AddText{slug257}, nothing, {}},
        {"2048 bytes pass", m, msg::EditText{pattern2048}, [&](Model& x) { x.editText = pattern2048; }, {}},
        {"2049 bytes are refused whole", m, msg::EditText{pattern2049}, nothing, {}},
        {"unusable text shows the hint and keeps the popover", openShort, msg::SubmitAdd{},
         [](Model& x) { x.flash = std::string(Flash::enterSlug); }, {}},
        {"submit trims, closes and adds", open, msg::SubmitAdd{},
         [&](Model& x) {
             x.addOpen = false;
             x.addText.clear();
             x.repos.push_back(docs);
             x.nextRepoId = 4;
             x.fetchInFlight = true;
         },
         {repoWrite({repo(1, "acme/web"), repo(2, "acme/api"), repo(3, "acme/docs", RepoState::queued)}),
          effect::FetchPrs{"acme/docs", kPath}}},
        {"submit of a watched slug closes and adds nothing", openWatched, msg::SubmitAdd{},
         [](Model& x) {
             x.addOpen = false;
             x.addText.clear();
         },
         {}},
        {"pick keeps the popover open", open, msg::PickSuggestion{" acme/docs "},
         [&](Model& x) {
             x.addText.clear();
             x.repos.push_back(docs);
             x.nextRepoId = 4;
             x.fetchInFlight = true;
         },
         {repoWrite({repo(1, "acme/web"), repo(2, "acme/api"), repo(3, "acme/docs", RepoState::queued)}),
          effect::FetchPrs{"acme/docs", kPath}}},
        {"edit pattern of a known repo", [&] { Model x = m; x.repos[1].pattern = "https://{name}.app"; return x; }(),
         msg::EditPattern{2},
         [](Model& x) {
             x.editingRepo = 2;
             x.editText = "https://{name}.app";
         },
         {}},
        {"edit pattern of an unknown repo", m, msg::EditPattern{5}, nothing, {}},
        {"cancel edit", [&] { Model x = m; x.editingRepo = 1; x.editText = "t"; return x; }(),
         msg::CancelEdit{},
         [](Model& x) {
             x.editingRepo.reset();
             x.editText.clear();
         },
         {}},
    });
}

TEST(dispatch, window_frame_is_written_only_when_it_changes) {
    const WindowFrame a{10, 20, 620, 760}, b{11, 20, 620, 760};
    Model restored = ready();
    restored.lastFrame = a;
    Model noHome = ready();
    noHome.home.reset();
    const Effect writeB =
        effect::WriteFile{ConfigFile::window, path(ConfigFile::window), Formats::serializeWindow(b)};
    runRows({
        {"restore", ready(), msg::WindowRestored{a}, [&](Model& x) { x.lastFrame = a; }, {}},
        {"same frame as restored", restored, msg::WindowMoved{a}, nothing, {}},
        {"moved frame", restored, msg::WindowMoved{b}, [&](Model& x) { x.lastFrame = b; }, {writeB}},
        {"first frame without home is remembered", noHome, msg::WindowMoved{b},
         [&](Model& x) { x.lastFrame = b; }, {}},
    });
}

}  // namespace
}  // namespace velmar
