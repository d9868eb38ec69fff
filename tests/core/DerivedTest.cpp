#include <gtest/gtest.h>

#include <string>

#include "Json.h"
#include "Model.h"

using namespace velmar;

namespace {

Repo repo(std::int64_t id, RepoState state = RepoState::ok) {
    return Repo{id, "acme/r" + std::to_string(id), "", state, 0, false, ""};
}

PR pr(std::int64_t id, std::int64_t repoId) {
    PR p;
    p.id = id;
    p.repoId = repoId;
    p.number = id;
    return p;
}

/// The rows as text: "repo-1 pr-3 ...", so a table can state a whole list.
std::string rowIds(const std::vector<ListRow>& rows) {
    std::string out;
    for (const auto& r : rows) out += (out.empty() ? "" : " ") + r.id();
    return out;
}

/// `n` consecutive pull requests of one repository, ids from `firstId`.
void addPrs(Model& m, std::int64_t repoId, int n, std::int64_t firstId) {
    for (int i = 0; i < n; ++i) m.prs.push_back(pr(firstId + i, repoId));
}

}  // namespace

TEST(derived, footer_depends_on_screen_onboarding_and_refresh) {
    struct Row {
        const char* what;
        Screen screen;
        bool settingsLoaded, onboarded, inFlight;
        RepoState state;
        std::optional<std::string> flash;
        std::string footer;
    };
    const Row rows[] = {
        {"list, idle, flash", Screen::list, true, true, false, RepoState::ok, "No repos yet",
         "2 open PRs across 1 repos | No repos yet"},
        {"list, idle, no flash", Screen::list, true, true, false, RepoState::ok, std::nullopt,
         "2 open PRs across 1 repos"},
        {"a queued repository hides the flash", Screen::list, true, true, false,
         RepoState::queued, "x", "2 open PRs across 1 repos | refreshing..."},
        {"a fetch in flight", Screen::list, false, false, true, RepoState::ok, std::nullopt,
         "2 open PRs across 1 repos | refreshing..."},
        {"manage shows the flash alone", Screen::manage, true, true, true, RepoState::loading,
         "Copied link to clipboard", "Copied link to clipboard"},
        {"manage without a flash", Screen::manage, true, true, false, RepoState::ok,
         std::nullopt, ""},
        {"onboarding shows the flash alone", Screen::list, true, false, true, RepoState::ok,
         "Loading...", "Loading..."},
        {"onboarding without a flash", Screen::list, true, false, false, RepoState::ok,
         std::nullopt, ""},
    };
    for (const auto& r : rows) {
        Model m;
        m.screen = r.screen;
        m.settingsLoaded = r.settingsLoaded;
        m.onboarded = r.onboarded;
        m.fetchInFlight = r.inFlight;
        m.repos = {repo(1, r.state)};
        m.prs = {pr(1, 1), pr(2, 1)};
        m.flash = r.flash;
        EXPECT_EQ(m.footerText(), r.footer) << r.what;
    }
    EXPECT_EQ(Model().statusLine(), "0 open PRs across 0 repos | Loading...");
}

TEST(derived, list_rows_follow_repo_order_and_both_caps) {
    struct Row {
        const char* what;
        std::vector<int> prsPerRepo;  // repository i+1 gets this many, listed in repo order
        bool reverseRepos;
        std::string expectedHead;     // the first rows
        std::size_t total;
    };
    const Row rows[] = {
        {"no repositories", {}, false, "", 0},
        {"an empty repository keeps its header", {0, 2}, false, "repo-1 repo-2 pr-2000 pr-2001", 4},
        {"45 pull requests show 40", {45}, false, "repo-1 pr-1000", 41},
        {"two full repositories are cut inside the second", {40, 40}, false, "repo-1 pr-1000", 50},
        {"order is the repositories', not the answers'", {1, 1}, true,
         "repo-2 pr-2000 repo-1 pr-1000", 4},
        {"fifty repositories fill the list with headers", std::vector<int>(51, 0), false,
         "repo-1 repo-2", 50},
    };
    for (const auto& r : rows) {
        Model m;
        for (std::size_t i = 0; i < r.prsPerRepo.size(); ++i) {
            const auto id = static_cast<std::int64_t>(i + 1);
            m.repos.push_back(repo(id));
            addPrs(m, id, r.prsPerRepo[i], id * 1000);
        }
        if (r.reverseRepos) std::reverse(m.repos.begin(), m.repos.end());
        const auto rowsOut = m.listRows();
        EXPECT_EQ(rowIds(rowsOut).substr(0, r.expectedHead.size()), r.expectedHead) << r.what;
        EXPECT_EQ(rowsOut.size(), r.total) << r.what;
    }

    // The cut of two full repositories: header, 40 rows, header, 8 rows.
    Model m;
    m.repos = {repo(7), repo(9)};
    addPrs(m, 9, 40, 900);
    addPrs(m, 7, 40, 700);
    const auto rowsOut = m.listRows();
    ASSERT_EQ(rowsOut.size(), 50u);
    EXPECT_EQ(rowsOut[41].id(), "repo-9");
    EXPECT_EQ(rowsOut[42].id(), "pr-900");
    EXPECT_EQ(rowsOut[49].id(), "pr-907");
    EXPECT_EQ(rowsOut[1], ListRow{m.prs[40]});
    EXPECT_EQ(m.statusLine().substr(0, 25), "80 open PRs across 2 repo");
    EXPECT_EQ(ListRow{pr(300012, 1)}.id(), "pr-300012");
}

TEST(derived, preview_menu_lists_at_most_five_visible_browsers) {
    struct Row {
        int running;
        std::optional<std::int64_t> selected;
        std::size_t size;
        std::string firstTitle;
    };
    const Row rows[] = {
        {0, std::nullopt, 3, "Open in System default"},
        {0, 99, 3, "Open in System default"},
        {1, 2, 5, "Open in B2"},
        {5, 1, 9, "Open in System default"},
        {7, 4, 9, "Open in B4"},
    };
    for (const auto& r : rows) {
        Model m;
        m.browsers.push_back(Browser{1, "System default", "", "SD", false, true});
        for (int i = 0; i < 7; ++i) {
            const auto id = static_cast<std::int64_t>(i + 2);
            m.browsers.push_back(
                Browser{id, "B" + std::to_string(id), "App" + std::to_string(id), "", i < r.running, true});
        }
        m.selectedBrowser = r.selected;
        const auto items = m.previewMenu(PR{});
        ASSERT_EQ(items.size(), r.size) << r.running;
        EXPECT_EQ(std::get<menu::Open>(items[0]), (menu::Open{r.firstTitle, std::nullopt}));
        EXPECT_EQ(items.back(), PreviewMenuItem(menu::Copy{"Copy preview URL"}));
        EXPECT_TRUE(std::holds_alternative<menu::Separator>(items[items.size() - 2]));
        if (r.running > 0) {
            EXPECT_EQ(std::get<menu::Open>(items[2]), (menu::Open{"Open in B2", 2}));
        }
    }
}

TEST(derived, launcher_app_prefers_the_given_browser_then_the_selected_one) {
    Model m;
    m.browsers = {Browser{1, "System default", "", "SD", false, true},
                  Browser{2, "Safari", "Safari", "SA", true, true}};
    struct Row {
        std::optional<std::int64_t> selected, given;
        std::string app;
    };
    const Row rows[] = {{2, std::nullopt, "Safari"}, {2, 1, ""},       {1, 2, "Safari"},
                        {2, 77, "Safari"},           {77, 77, ""},     {std::nullopt, std::nullopt, ""}};
    for (const auto& r : rows) {
        m.selectedBrowser = r.selected;
        EXPECT_EQ(m.launcherApp(r.given), r.app);
    }
}

TEST(derived, can_submit_add_needs_a_slash_and_three_characters) {
    const std::pair<std::string, bool> rows[] = {
        {"", false},           {"a/", false},        {"abc", false},
        {"a/b", true},         {" \n a/b \t\r\n", true}, {"/\u00e9", false},
        {"e\u0301/", false},   {"e\u0301/x", true},  {"\u3000a/\u3000", false},
    };
    for (const auto& [text, ok] : rows) {
        Model m;
        m.addText = text;
        EXPECT_EQ(m.canSubmitAdd(), ok) << text;
    }
}

TEST(derived, filtered_suggestions_skip_watched_match_any_case_and_cap_each_source) {
    struct Row {
        const char* what;
        std::string addText;
        int owned, shared;
        std::size_t mineOut, sharedOut;
    };
    const Row rows[] = {
        {"empty needle lists everything unwatched", "", 3, 2, 2, 1},
        {"other letter case and blanks still match", "  ACME/O  ", 3, 2, 2, 0},
        {"fifty of each give forty of each", "acme", 50, 50, 40, 40},
        {"no match", "zzz", 5, 5, 0, 0},
    };
    for (const auto& r : rows) {
        Model m;
        m.addText = r.addText;
        // Shared first in the source list: owned must still lead the result.
        for (int i = 0; i < r.shared; ++i) m.suggestions.push_back({"acme/s" + std::to_string(i), false});
        for (int i = 0; i < r.owned; ++i) m.suggestions.push_back({"acme/o" + std::to_string(i), true});
        m.repos = {Repo{1, "acme/o0", "", RepoState::ok, 0, false, ""},
                   Repo{2, "acme/s0", "", RepoState::ok, 0, false, ""}};
        const auto out = m.filteredSuggestions();
        ASSERT_EQ(out.size(), r.mineOut + r.sharedOut) << r.what;
        for (std::size_t i = 0; i < out.size(); ++i) EXPECT_EQ(out[i].mine, i < r.mineOut) << r.what;
        if (r.mineOut > 0) {
            EXPECT_EQ(out[0].name, "acme/o1") << r.what;
        }
        if (r.mineOut == 40) {
            EXPECT_EQ(out[39].name, "acme/o40") << r.what;
        }
    }
}
