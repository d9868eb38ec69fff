// Taking in the three stored files, which may arrive in any order, and the
// rules that keep a save from happening before the home directory is known.
#include <algorithm>
#include <array>
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
const std::string kPath = "/usr/bin";

struct Files {
    std::string repos, browsers, settings;
};

Effects feed(Model& m, const Msg& msg) {
    auto [next, effects] = update(m, msg);
    m = std::move(next);
    return effects;
}

std::vector<effect::FetchPrs> fetches(const Effects& effects) {
    std::vector<effect::FetchPrs> out;
    for (const auto& e : effects)
        if (auto* f = std::get_if<effect::FetchPrs>(&e)) out.push_back(*f);
    return out;
}

TEST(loading, every_order_of_the_three_files_ends_the_same) {
    const Files full{"acme/web\thttps://pr-{number}.example.app\nacme/api\t\thttps://l-{number}.app\n",
                     "mode\tmanual\nselected\tFirefox\nshow\tFirefox\n",
                     "auto\t1\nview\tmanage\nonboarded\t1\nappearance\tlight\n"};
    const Files empty{"", "", ""};
    struct Case {
        const char* name;
        Files files;
        bool pathFirst;
        bool addedEarlier;
    } cases[] = {
        {"full files, path first", full, true, false},
        {"full files, path last", full, false, false},
        {"no files at all", empty, true, false},
        {"a repository added before the file", full, true, true},
        {"added before an empty file, path last", empty, false, true},
    };
    for (const auto& c : cases) {
        std::array<ConfigFile, 3> order{ConfigFile::repos, ConfigFile::browsers, ConfigFile::settings};
        std::sort(order.begin(), order.end());
        do {
            SCOPED_TRACE(::testing::Message() << c.name << ": " << jsonText(order[0]) << ", "
                                              << jsonText(order[1]) << ", " << jsonText(order[2]));
            Model m;
            Effects all = feed(m, msg::HomeResolved{kHome});
            if (c.addedEarlier) {
                // Before home is known the addition cannot be saved.
                all.clear();
                Model early;
                EXPECT_EQ(early.addRepo("acme/extra"), Effects{});
                early.addRepo("acme/web");
                m.repos = early.repos;
                m.nextRepoId = early.nextRepoId;
            }
            if (c.pathFirst) all = feed(m, msg::PathResolved{kPath});
            all.clear();
            for (ConfigFile f : order) {
                const std::string& text = f == ConfigFile::repos      ? c.files.repos
                                          : f == ConfigFile::browsers ? c.files.browsers
                                                                      : c.files.settings;
                for (auto& e : feed(m, msg::FileRead{f, text.empty() ? std::nullopt
                                                                     : std::optional(text)}))
                    all.push_back(e);
            }
            if (!c.pathFirst)
                for (auto& e : feed(m, msg::PathResolved{kPath}))
                    if (std::holds_alternative<effect::FetchPrs>(e)) all.push_back(e);

            EXPECT_TRUE(m.reposLoaded && m.browsersLoaded && m.settingsLoaded);
            const bool fromFile = !c.files.repos.empty();
            std::vector<std::string> expected;
            if (fromFile) expected = {"acme/web", "acme/api"};
            if (c.addedEarlier) expected.push_back("acme/extra");
            if (c.addedEarlier && !fromFile) expected.push_back("acme/web");
            std::vector<std::string> got;
            for (const auto& r : m.repos) got.push_back(r.name);
            EXPECT_EQ(got, expected);
            EXPECT_EQ(m.nextRepoId, static_cast<std::int64_t>(1 + expected.size() +
                                                              (c.addedEarlier && fromFile ? 1 : 0)));

            // The one save: the merged list, only when something came before the file.
            const Effect write{effect::WriteFile{ConfigFile::repos, configPath(ConfigFile::repos, kHome),
                                                 Formats::serializeRepos(m.repos)}};
            EXPECT_EQ(std::count(all.begin(), all.end(), write), c.addedEarlier ? 1 : 0);
            const auto f = fetches(all);
            if (expected.empty()) {
                EXPECT_TRUE(f.empty());
                EXPECT_EQ(m.flash, std::nullopt);
            } else {
                ASSERT_EQ(f.size(), 1u);
                EXPECT_EQ(f[0], (effect::FetchPrs{expected[0], kPath}));
                EXPECT_EQ(m.flash, std::string(Flash::loading));
            }
            if (!c.files.settings.empty()) {
                EXPECT_EQ(m.screen, Screen::manage);
                EXPECT_TRUE(m.autoRefresh && m.onboarded);
                EXPECT_EQ(m.appearance, Appearance::light);
                EXPECT_EQ(m.browserMode, BrowserMode::manual);
                EXPECT_EQ(m.browserPref, "Firefox");
                EXPECT_EQ(m.storedShown, std::vector<std::string>{"Firefox"});
            }
        } while (std::next_permutation(order.begin(), order.end()));
    }
}

TEST(loading, file_rules_that_depend_on_what_came_before) {
    struct Case {
        const char* name;
        std::function<void(Model&)> before;
        Msg msg;
        std::function<void(Model&)> change;
    } cases[] = {
        {"settings after a navigation keep the screen",
         [](Model& m) { m.userNavigated = true; },
         msg::FileRead{ConfigFile::settings, "view\tmanage\nauto\t1\n"},
         [](Model& m) {
             m.settingsLoaded = true;
             m.autoRefresh = true;
         }},
        {"a flash other than loading survives the last file",
         [](Model& m) {
             m.reposLoaded = true;
             m.flash = std::string(Flash::couldNotSaveRepos);
         },
         msg::FileRead{ConfigFile::settings, std::nullopt},
         [](Model& m) { m.settingsLoaded = true; }},
        {"the window file is the shell's", nullptr, msg::FileRead{ConfigFile::window, "x\t1\n"},
         [](Model&) {}},
        {"a stored show list hides what it does not name",
         [](Model& m) {
             m.browsers = {Browser{1, "Safari", "Safari", "Sa", true, true},
                           Browser{2, "System default", "", "SD", false, false}};
         },
         msg::FileRead{ConfigFile::browsers, "mode\tmanual\nshow\t@default\n"},
         [](Model& m) {
             m.browserMode = BrowserMode::manual;
             m.manualConfigured = true;
             m.storedShown = {"@default"};
             m.browsers[0].shown = false;
             m.browsers[1].shown = true;
             m.browsersLoaded = true;
             m.selectedBrowser = 2;
         }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Model start;
        start.home = kHome;
        if (c.before) c.before(start);
        Model expected = start;
        c.change(expected);
        auto [next, effects] = update(start, c.msg);
        EXPECT_EQ(next, expected);
        EXPECT_EQ(effects, Effects{});
    }
}

TEST(loading, stored_row_replaces_an_earlier_one_of_the_same_name) {
    Model m;
    m.home = kHome;
    m.addRepo("acme/web");
    m.addRepo("acme/new");
    m.repos[1].state = RepoState::ok;
    const Effects effects = m.fileRead(ConfigFile::repos, "acme/web\tpat\n");
    ASSERT_EQ(m.repos.size(), 2u);
    EXPECT_EQ(m.repos[0].id, 3);
    EXPECT_EQ(m.repos[0].pattern, "pat");
    // The earlier one keeps its id and its state.
    EXPECT_EQ(m.repos[1].id, 2);
    EXPECT_EQ(m.repos[1].state, RepoState::ok);
    EXPECT_EQ(effects, (Effects{effect::WriteFile{ConfigFile::repos,
                                                  configPath(ConfigFile::repos, kHome),
                                                  "acme/web\tpat\nacme/new\t\n"}}));
}

}  // namespace
}  // namespace velmar
