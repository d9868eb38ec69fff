// Taking in the three stored files, which may arrive in any order, and the
// merge with repositories added before the repos file came in.
#include <algorithm>
#include <array>

#include <gtest/gtest.h>

#include "CoreTest.h"
#include "Formats.h"

namespace velmar {
namespace {

using namespace test;

struct Case {
    const char* name;
    std::string repos, browsers, settings;
    bool pathFirst, addedEarlier;
    std::vector<std::string> expected;  // names after loading, in order
};

TEST(loading, every_order_of_the_three_files_ends_the_same) {
    const std::string repos = "acme/web\thttps://pr-{number}.example.app\nacme/api\t\thttps://l-{number}.app\n";
    const std::string browsers = "mode\tmanual\nselected\tFirefox\nshow\tFirefox\n";
    const std::string settings = "auto\t1\nview\tmanage\nonboarded\t1\nappearance\tlight\n";
    const Case cases[] = {
        {"path first", repos, browsers, settings, true, false, {"acme/web", "acme/api"}},
        {"path last", repos, browsers, settings, false, false, {"acme/web", "acme/api"}},
        {"no files at all", "", "", "", true, false, {}},
        {"added before the file", repos, browsers, settings, true, true, {"acme/web", "acme/api", "acme/extra"}},
        {"added before a missing file", "", "", "", false, true, {"acme/extra", "acme/web"}},
    };
    for (const auto& c : cases) {
        std::array<ConfigFile, 3> order{ConfigFile::repos, ConfigFile::browsers, ConfigFile::settings};
        do {
            SCOPED_TRACE(::testing::Message() << c.name << ": " << jsonText(order[0]) << ", "
                                              << jsonText(order[1]) << ", " << jsonText(order[2]));
            Model m;
            if (c.addedEarlier) {  // before home is known, so not saved then
                EXPECT_EQ(m.addRepo("acme/extra"), Effects{});
                m.addRepo("acme/web");
            }
            m.apply(msg::HomeResolved{kHome});
            if (c.pathFirst) m.apply(msg::PathResolved{kPath});
            Effects all;
            for (ConfigFile f : order) {
                const std::string& text = f == ConfigFile::repos ? c.repos
                                          : f == ConfigFile::browsers ? c.browsers : c.settings;
                const auto contents = text.empty() ? std::nullopt : std::optional(text);
                for (auto& e : m.apply(msg::FileRead{f, contents})) all.push_back(e);
            }
            if (!c.pathFirst)
                for (auto& e : m.apply(msg::PathResolved{kPath}))
                    if (std::holds_alternative<effect::FetchPrs>(e)) all.push_back(e);

            EXPECT_TRUE(m.reposLoaded && m.browsersLoaded && m.settingsLoaded);
            std::vector<std::string> names;
            for (const auto& r : m.repos) names.push_back(r.name);
            EXPECT_EQ(names, c.expected);
            Effects expected;
            if (c.addedEarlier)
                expected.push_back(written(ConfigFile::repos, Formats::serializeRepos(m.repos)));
            if (!c.expected.empty()) expected.push_back(effect::FetchPrs{c.expected[0], kPath});
            EXPECT_EQ(all, expected);
            // "Loading..." goes with the files only when no fetch will end it.
            EXPECT_EQ(m.flash, c.expected.empty() ? std::nullopt : std::optional(std::string(Flash::loading)));
            if (!c.settings.empty()) {
                EXPECT_EQ(std::tie(m.screen, m.autoRefresh, m.onboarded, m.appearance),
                          std::tuple(Screen::manage, true, true, Appearance::light));
                EXPECT_EQ(std::tie(m.browserMode, m.browserPref, m.storedShown),
                          std::tuple(BrowserMode::manual, std::optional<std::string>("Firefox"),
                                     std::vector<std::string>{"Firefox"}));
            }
        } while (std::next_permutation(order.begin(), order.end()));
    }
}

TEST(loading, stored_row_replaces_an_earlier_one_of_the_same_name) {
    Model m;
    m.home = kHome;
    m.addRepo("acme/web");
    m.addRepo("acme/new");
    m.repos[1].state = RepoState::ok;
    const Effects effects = m.fileRead(ConfigFile::repos, "acme/web\tpat\n");
    // The stored row gets a fresh id; the earlier one keeps its id and state.
    EXPECT_EQ(m.repos, (std::vector<Repo>{Repo{3, "acme/web", "pat", RepoState::queued, 0, false, ""},
                                          Repo{2, "acme/new", "", RepoState::ok, 0, false, ""}}));
    EXPECT_EQ(effects, (Effects{written(ConfigFile::repos, "acme/web\tpat\nacme/new\t\n")}));
}

TEST(loading, settings_after_a_navigation_keep_the_screen_and_other_flashes) {
    Model m;
    m.userNavigated = m.reposLoaded = true;
    m.flash = std::string(Flash::couldNotSaveRepos);
    EXPECT_EQ(m.fileRead(ConfigFile::settings, "view\tmanage\nauto\t1\n"), Effects{});
    EXPECT_EQ(m.screen, Screen::list);
    EXPECT_TRUE(m.autoRefresh);
    EXPECT_EQ(m.flash, std::string(Flash::couldNotSaveRepos));
}

}  // namespace
}  // namespace velmar
