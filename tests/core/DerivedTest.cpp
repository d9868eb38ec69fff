#include <gtest/gtest.h>

#include <string>

#include "CoreTest.h"

using namespace velmar;
using test::shape;

namespace {

Repo repo(std::int64_t id, RepoState state = RepoState::ok) {
    return Repo{id, "acme/r" + std::to_string(id), "", state, 0, false, ""};
}

void addPrs(Model& m, std::int64_t repoId, int n) {
    for (int i = 0; i < n; ++i) m.prs.push_back(test::row(repoId, i));
}

}  // namespace

// The list screen's footer is the status line of every headless transcript.
TEST(derived, footer_by_screen_onboarding_and_refresh) {
    const std::string counts = "2 open PRs across 1 repos";
    // Screen, onboarding, a fetch in flight, the repository's state, the flash, the footer.
    const std::tuple<Screen, bool, bool, RepoState, std::optional<std::string>, std::string> rows[] = {
        {Screen::list, false, true, RepoState::ok, std::nullopt, counts + " | refreshing..."},
        {Screen::manage, false, true, RepoState::loading, "Copied link", "Copied link"},
        {Screen::manage, false, false, RepoState::ok, std::nullopt, ""},
        {Screen::list, true, true, RepoState::ok, "Loading...", "Loading..."},
        {Screen::list, true, false, RepoState::ok, std::nullopt, ""},
    };
    for (const auto& [screen, onboarding, inFlight, state, flash, footer] : rows) {
        Model m;
        m.screen = screen;
        m.settingsLoaded = true;
        m.onboarded = !onboarding;
        m.fetchInFlight = inFlight;
        m.repos = {repo(1, state)};
        addPrs(m, 1, 2);
        m.flash = flash;
        EXPECT_EQ(m.footerText(), footer);
    }
}

TEST(derived, list_rows_follow_repo_order_and_both_caps) {
    // Repository i+1 gets the i-th count.
    const std::pair<std::vector<int>, std::string> rows[] = {
        {{}, ""},
        {{40, 40, 3}, "repo-1:40 repo-2:8"},
        {{48, 0, 5}, "repo-1:40 repo-2:0 repo-3:5"},
        {{40, 0, 10}, "repo-1:40 repo-2:0 repo-3:7"},
        {{40, 9, 1}, "repo-1:40 repo-2:8"},
    };
    for (const auto& [counts, want] : rows) {
        Model m;
        // Answers arrive in reverse: the list must still follow the watch list.
        for (std::size_t i = counts.size(); i-- > 0;) {
            m.repos.insert(m.repos.begin(), repo(static_cast<std::int64_t>(i + 1)));
            addPrs(m, static_cast<std::int64_t>(i + 1), counts[i]);
        }
        EXPECT_EQ(shape(m.listRows()), want);
    }

    Model many;
    for (std::int64_t id = 1; id <= 51; ++id) many.repos.push_back(repo(id));
    addPrs(many, 2, 1);
    const auto rows51 = many.listRows();
    ASSERT_EQ(rows51.size(), 50u);
    EXPECT_EQ(rows51[2], ListRow{many.prs[0]});
    EXPECT_EQ(rows51.back().id(), "repo-49");
    EXPECT_EQ(ListRow{test::row(300, 12)}.id(), "pr-30000012");
}

TEST(derived, preview_menu_lists_at_most_five_visible_browsers) {
    // Browsers running, the one selected, the menu's length and its first title.
    const std::tuple<int, std::optional<std::int64_t>, std::size_t, std::string> rows[] = {
        {0, std::nullopt, 3, "Open in System default"}, {0, 99, 3, "Open in System default"},
        {1, 2, 5, "Open in B2"}, {5, 1, 9, "Open in System default"}, {7, 4, 9, "Open in B4"}};
    for (const auto& [running, selected, size, firstTitle] : rows) {
        Model m;
        m.browsers.push_back(Browser{1, "System default", "", "SD", false, true});
        for (std::int64_t id = 2; id <= 8; ++id)
            m.browsers.push_back(Browser{id, "B" + std::to_string(id), "App", "", id - 2 < running, true});
        m.selectedBrowser = selected;
        const auto items = m.previewMenu();
        ASSERT_EQ(items.size(), size) << running;
        EXPECT_EQ(items[0], PreviewMenuItem(menu::Open{firstTitle, std::nullopt}));
        EXPECT_EQ(items[size - 2], PreviewMenuItem(menu::Separator{}));
        EXPECT_EQ(items.back(), PreviewMenuItem(menu::Copy{"Copy preview URL"}));
        if (running > 0) EXPECT_EQ(items[2], PreviewMenuItem(menu::Open{"Open in B2", 2}));
    }
}

TEST(derived, add_field_validation_and_suggestion_filter) {
    const std::pair<std::string, bool> slugs[] = {
        {"", false}, {"a/", false}, {"abc", false}, {"a/b", true}, {" \n a/b \t\r\n", true},
        {"/\u00e9", false}, {"e\u0301/x", true}, {"\u3000a/\u3000", false}};
    for (const auto& [text, ok] : slugs) {
        Model m;
        m.addText = text;
        EXPECT_EQ(m.canSubmitAdd(), ok) << text;
    }

    // The text typed, owned and shared suggestions, and how many of each are offered.
    const std::tuple<std::string, int, int, std::size_t, std::size_t> rows[] = {
        {"", 3, 2, 2, 1}, {"  ACME/O  ", 3, 2, 2, 0}, {"acme", 50, 50, 40, 40}, {"zzz", 5, 5, 0, 0}};
    for (const auto& [text, owned, shared, mineOut, sharedOut] : rows) {
        Model m = test::watching({"acme/o0", "acme/s0"});
        m.addText = text;
        // Shared entries come first here, yet owned ones must lead the result.
        for (int i = 0; i < shared; ++i) m.suggestions.push_back({"acme/s" + std::to_string(i), false});
        for (int i = 0; i < owned; ++i) m.suggestions.push_back({"acme/o" + std::to_string(i), true});
        const auto out = m.filteredSuggestions();
        ASSERT_EQ(out.size(), mineOut + sharedOut) << text;
        for (std::size_t i = 0; i < out.size(); ++i) EXPECT_EQ(out[i].mine, i < mineOut);
        if (mineOut > 0) EXPECT_EQ(std::pair(out[0].name, out[mineOut - 1].name),
                                   std::pair(std::string("acme/o1"), "acme/o" + std::to_string(mineOut)));
    }
}
