#include <gtest/gtest.h>

#include <string>

#include "Json.h"
#include "Model.h"

using namespace velmar;

namespace {

Repo repo(std::int64_t id, RepoState state = RepoState::ok) {
    return Repo{id, "acme/r" + std::to_string(id), "", state, 0, false, ""};
}

void addPrs(Model& m, std::int64_t repoId, int n) {
    for (int i = 0; i < n; ++i) {
        PR p;
        p.id = repoId * 1000 + i;
        p.repoId = repoId;
        m.prs.push_back(p);
    }
}

/// The rows as "repo-1:40 repo-2:8": each header with the number of rows under it.
std::string shape(const std::vector<ListRow>& rows) {
    std::string out;
    int under = 0;
    for (std::size_t i = 0; i <= rows.size(); ++i) {
        if (i == rows.size() || rows[i].isHeader()) {
            if (i > 0) out += ":" + std::to_string(under);
            if (i < rows.size()) out += (i > 0 ? " " : "") + rows[i].id();
            under = 0;
        } else {
            ++under;
        }
    }
    return out;
}

}  // namespace

TEST(derived, footer_by_screen_onboarding_and_refresh) {
    struct Row {
        Screen screen;
        bool onboarding, inFlight;
        RepoState state;
        std::optional<std::string> flash;
        std::string footer;
    };
    const std::string counts = "2 open PRs across 1 repos";
    const Row rows[] = {
        {Screen::list, false, false, RepoState::ok, "No repos yet", counts + " | No repos yet"},
        {Screen::list, false, false, RepoState::ok, std::nullopt, counts},
        {Screen::list, false, false, RepoState::queued, "x", counts + " | refreshing..."},
        {Screen::list, false, true, RepoState::ok, std::nullopt, counts + " | refreshing..."},
        {Screen::manage, false, true, RepoState::loading, "Copied link", "Copied link"},
        {Screen::manage, false, false, RepoState::ok, std::nullopt, ""},
        {Screen::list, true, true, RepoState::ok, "Loading...", "Loading..."},
        {Screen::list, true, false, RepoState::ok, std::nullopt, ""},
    };
    for (const auto& r : rows) {
        Model m;
        m.screen = r.screen;
        m.settingsLoaded = true;
        m.onboarded = !r.onboarding;
        m.fetchInFlight = r.inFlight;
        m.repos = {repo(1, r.state)};
        addPrs(m, 1, 2);
        m.flash = r.flash;
        EXPECT_EQ(m.footerText(), r.footer) << r.footer;
    }
}

TEST(derived, list_rows_follow_repo_order_and_both_caps) {
    struct Row {
        std::vector<int> prsPerRepo;  // repository i+1 gets this many
        std::string shape;
    };
    const Row rows[] = {
        {{}, ""},
        {{40, 40, 3}, "repo-1:40 repo-2:8"},
        {{48, 0, 5}, "repo-1:40 repo-2:0 repo-3:5"},
        {{40, 0, 10}, "repo-1:40 repo-2:0 repo-3:7"},
        {{40, 9, 1}, "repo-1:40 repo-2:8"},
    };
    for (const auto& r : rows) {
        Model m;
        // Answers arrive in reverse: the list must still follow the watch list.
        for (std::size_t i = r.prsPerRepo.size(); i-- > 0;) {
            m.repos.insert(m.repos.begin(), repo(static_cast<std::int64_t>(i + 1)));
            addPrs(m, static_cast<std::int64_t>(i + 1), r.prsPerRepo[i]);
        }
        EXPECT_EQ(shape(m.listRows()), r.shape);
    }

    Model many;
    for (std::int64_t id = 1; id <= 51; ++id) many.repos.push_back(repo(id));
    addPrs(many, 2, 1);
    const auto rows51 = many.listRows();
    ASSERT_EQ(rows51.size(), 50u);
    EXPECT_EQ(rows51[2], ListRow{many.prs[0]});
    EXPECT_EQ(rows51.back().id(), "repo-49");
    addPrs(many, 300, 13);
    EXPECT_EQ(ListRow{many.prs.back()}.id(), "pr-300012");
}

TEST(derived, preview_menu_lists_at_most_five_visible_browsers) {
    struct Row {
        int running;
        std::optional<std::int64_t> selected;
        std::size_t size;
        std::string firstTitle;
    };
    const Row rows[] = {{0, std::nullopt, 3, "Open in System default"}, {0, 99, 3, "Open in System default"},
                        {1, 2, 5, "Open in B2"}, {5, 1, 9, "Open in System default"}, {7, 4, 9, "Open in B4"}};
    for (const auto& r : rows) {
        Model m;
        m.browsers.push_back(Browser{1, "System default", "", "SD", false, true});
        for (std::int64_t id = 2; id <= 8; ++id)
            m.browsers.push_back(Browser{id, "B" + std::to_string(id), "App", "", id - 2 < r.running, true});
        m.selectedBrowser = r.selected;
        const auto items = m.previewMenu();
        ASSERT_EQ(items.size(), r.size) << r.running;
        EXPECT_EQ(items[0], PreviewMenuItem(menu::Open{r.firstTitle, std::nullopt}));
        EXPECT_EQ(items[r.size - 2], PreviewMenuItem(menu::Separator{}));
        EXPECT_EQ(items.back(), PreviewMenuItem(menu::Copy{"Copy preview URL"}));
        if (r.running > 0) {
            EXPECT_EQ(items[2], PreviewMenuItem(menu::Open{"Open in B2", 2}));
        }
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

    struct Row {
        std::string addText;
        int owned, shared;
        std::size_t mineOut, sharedOut;
    };
    const Row rows[] = {{"", 3, 2, 2, 1}, {"  ACME/O  ", 3, 2, 2, 0}, {"acme", 50, 50, 40, 40}, {"zzz", 5, 5, 0, 0}};
    for (const auto& r : rows) {
        Model m;
        m.addText = r.addText;
        // Shared entries come first here, yet owned ones must lead the result.
        for (int i = 0; i < r.shared; ++i) m.suggestions.push_back({"acme/s" + std::to_string(i), false});
        for (int i = 0; i < r.owned; ++i) m.suggestions.push_back({"acme/o" + std::to_string(i), true});
        m.repos = {repo(1), repo(2)};
        m.repos[0].name = "acme/o0";
        m.repos[1].name = "acme/s0";
        const auto out = m.filteredSuggestions();
        ASSERT_EQ(out.size(), r.mineOut + r.sharedOut) << r.addText;
        for (std::size_t i = 0; i < out.size(); ++i) EXPECT_EQ(out[i].mine, i < r.mineOut);
        if (r.mineOut > 0) {
            EXPECT_EQ(out[0].name, "acme/o1");
            EXPECT_EQ(out[r.mineOut - 1].name, "acme/o" + std::to_string(r.mineOut));
        }
    }
}
