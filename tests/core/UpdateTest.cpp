// The dispatch rows of the step: each row is a start model, one message, the
// changes the model must show and the exact list of effects. Rows the headless
// transcripts already replay are not repeated here.
#include <functional>

#include <gtest/gtest.h>

#include "CoreTest.h"
#include "Formats.h"

namespace velmar {
namespace {

using namespace test;
const std::string kWebUrl = "https://github.com/acme/web/pull/12";

/// After a finished start-up: home and path known, files in, two idle repos.
Model ready() {
    Model m = watching({"acme/web", "acme/api"}, false);
    m.browsersLoaded = m.onboarded = true;
    m.flash.reset();
    m.gh = GhStatus::ok;
    for (auto& r : m.repos) r.state = RepoState::ok;
    m.repos[0].count = 1;
    m.prs = {PR{.id = 100012, .repoId = 1, .url = kWebUrl}};
    return m;
}

Model with(std::function<void(Model&)> f, Model m = ready()) {
    f(m);
    return m;
}

/// The first repository being fetched, the second queued.
void fetchingFirst(Model& m) {
    m.repos[0].state = RepoState::loading;
    m.repos[1].state = RepoState::queued;
    m.fetchInFlight = true;
}

Effects settingsWrite(bool autoOn, Screen s, Appearance a = Appearance::dark) {
    return {written(ConfigFile::settings, Formats::serializeSettings(autoOn, s, true, a))};
}

struct Row {
    const char* name;
    Model start;
    Msg msg;
    std::function<void(Model&)> change;
    Effects effects;
};

void runRows(const std::vector<Row>& rows) {
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto [next, effects] = update(row.start, row.msg);
        EXPECT_EQ(next, with(row.change, row.start));
        EXPECT_EQ(effects, row.effects);
    }
}

const auto nothing = [](Model&) {};

TEST(dispatch, gh_onboarding_settings_and_timers) {
    const Model missingOnManage = with([](Model& m) { m.gh = GhStatus::missing; m.screen = Screen::manage; });
    const Model onboarding = with([](Model& m) { m.onboarded = false; m.gh = GhStatus::loggedOut; });
    const Model noPath = with([](Model& m) { m.pathResolved = false; m.path.reset(); }, onboarding);
    const Model autoOn = with([](Model& m) { m.autoRefresh = true; });
    Effects skipped = settingsWrite(false, Screen::list);
    skipped.insert(skipped.end(), {effect::FetchSuggestions{SuggestionSource::owned, kPath},
                                   effect::FetchSuggestions{SuggestionSource::shared, kPath},
                                   effect::FetchPrs{"acme/web", kPath}});
    runRows({
        {"empty path stays absent; no fetch before the repos file", Model{}, msg::PathResolved{""},
         [](Model& m) { m.pathResolved = true; },
         {effect::GhPreflight{}, effect::BrewProbe{}, effect::FetchSuggestions{SuggestionSource::owned, std::nullopt},
          effect::FetchSuggestions{SuggestionSource::shared, std::nullopt}}},
        {"gh lost", ready(), msg::GhChecked{127}, [](Model& m) { m.gh = GhStatus::missing; }, {}},
        {"gh fixed on the list screen", with([](Model& m) { m.screen = Screen::list; }, missingOnManage),
         msg::GhChecked{0}, [](Model& m) { m.gh = GhStatus::ok; }, {}},
        {"gh fixed on the manage screen refreshes", missingOnManage, msg::GhChecked{0},
         [](Model& m) { m.gh = GhStatus::ok; fetchingFirst(m); },
         {effect::GhPreflight{kPath}, effect::FetchPrs{"acme/web", kPath}}},
        {"onboarding tick probes", onboarding, msg::OnboardingTick{}, nothing,
         {effect::GhPreflight{kPath}, effect::BrewProbe{kPath}}},
        {"onboarding tick waits for the path", noPath, msg::OnboardingTick{}, nothing, {}},
        {"continue needs gh ok", onboarding, msg::OnboardingContinue{}, nothing, {}},
        {"skip finishes and fetches", onboarding, msg::OnboardingSkip{},
         [](Model& m) { m.onboarded = true; fetchingFirst(m); }, skipped},
        {"skip before the path only saves", noPath, msg::OnboardingSkip{},
         [](Model& m) { m.onboarded = true; }, settingsWrite(false, Screen::list)},
        {"set auto without home changes the model only", with([](Model& m) { m.home.reset(); }),
         msg::SetAuto{true}, [](Model& m) { m.autoRefresh = true; }, {}},
        {"navigate to the same screen still resets the editors",
         with([](Model& m) { m.flash = "x"; m.addOpen = true; m.addText = "a"; m.editingRepo = 1; m.editText = "e"; }),
         msg::Navigate{Screen::list},
         [](Model& m) {
             m.userNavigated = true;
             m.addOpen = false;
             m.flash.reset();
             m.addText.clear();
             m.editingRepo.reset();
             m.editText.clear();
         },
         settingsWrite(false, Screen::list)},
        {"auto tick off", ready(), msg::AutoTick{}, nothing, {}},
        {"auto tick with a repo queued", with([](Model& m) { m.repos[1].state = RepoState::queued; }, autoOn),
         msg::AutoTick{}, nothing, {}},
        {"failed window write reads as settings", ready(), msg::FileWritten{ConfigFile::window, false},
         [](Model& m) { m.flash = std::string(Flash::couldNotSaveSettings); }, {}},
    });
}

TEST(dispatch, links_hover_add_field_and_window) {
    const Model hovered = with([](Model& m) { m.hoveredPr = 100012; });
    const Model adding = with([](Model& m) { m.addOpen = true; m.addText = " acme/docs\n"; });
    const WindowFrame a{10, 20, 620, 760}, b{11, 20, 620, 760};
    const auto addsDocs = [](Model& m) {
        m.repos.push_back(Repo{3, "acme/docs", "", RepoState::loading, 0, false, ""});
        m.nextRepoId = 4;
        m.fetchInFlight = true;
    };
    const Effects docsAdded{
        written(ConfigFile::repos, "acme/web\t\nacme/api\t\nacme/docs\t\n"),
        effect::FetchPrs{"acme/docs", kPath}};
    runRows({
        {"copy pr link", ready(), msg::CopyPrLink{100012},
         [](Model& m) { m.flash = std::string(Flash::copiedLink); }, {effect::CopyToClipboard{kWebUrl}}},
        {"open unknown pr", ready(), msg::OpenPr{7}, nothing, {}},
        {"copy empty preview", ready(), msg::CopyPreview{100012}, nothing, {}},
        {"open repo", ready(), msg::OpenRepo{2}, nothing, {effect::OpenURL{"https://github.com/acme/api", ""}}},
        {"unhover of another row", hovered, msg::UnhoverPr{5}, nothing, {}},
        {"unhover of the hovered row", hovered, msg::UnhoverPr{100012}, [](Model& m) { m.hoveredPr.reset(); }, {}},
        {"256 bytes pass", ready(), msg::AddText{std::string(256, 'a')},
         [](Model& m) { m.addText = std::string(256, 'a'); }, {}},
        {"257 bytes are refused whole", adding, msg::AddText{std::string(257, 'a')}, nothing, {}},
        {"2049 bytes are refused whole", ready(), msg::EditText{std::string(2049, 'p')}, nothing, {}},
        {"unusable text shows the hint", with([](Model& m) { m.addText = "a/"; }, adding), msg::SubmitAdd{},
         [](Model& m) { m.flash = std::string(Flash::enterSlug); }, {}},
        {"submit trims, closes and adds", adding, msg::SubmitAdd{},
         [&](Model& m) { m.addOpen = false; m.addText.clear(); addsDocs(m); }, docsAdded},
        {"submit of a watched slug closes and adds nothing", with([](Model& m) { m.addText = "acme/web"; }, adding),
         msg::SubmitAdd{}, [](Model& m) { m.addOpen = false; m.addText.clear(); }, {}},
        {"pick keeps the popover open", adding, msg::PickSuggestion{" acme/docs "},
         [&](Model& m) { m.addText.clear(); addsDocs(m); }, docsAdded},
        {"same frame as restored", with([&](Model& m) { m.lastFrame = a; }), msg::WindowMoved{a}, nothing, {}},
        {"moved frame", with([&](Model& m) { m.lastFrame = a; }), msg::WindowMoved{b},
         [&](Model& m) { m.lastFrame = b; },
         {written(ConfigFile::window, Formats::serializeWindow(b))}},
    });
}

}  // namespace
}  // namespace velmar
