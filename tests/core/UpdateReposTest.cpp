// The watch list: removing, reordering, saving patterns, and the merge of the
// two suggestion listings.
#include <gtest/gtest.h>

#include "Formats.h"
#include "Json.h"
#include "Model.h"

namespace velmar {
namespace {

Model watching(std::vector<std::string> names) {
    Model m;
    m.home = "/home/u";
    for (auto& n : names) m.repos.push_back(Repo{m.nextRepoId++, n, "", RepoState::ok, 0, false, ""});
    return m;
}

PR row(std::int64_t repoId, std::int64_t number, std::string comment = "") {
    PR p;
    p.id = repoId * 100000 + number;
    p.repoId = repoId;
    p.number = number;
    p.commentPreview = p.preview = comment;
    return p;
}

Effects saved(const Model& m) {
    return {effect::WriteFile{ConfigFile::repos, "/home/u/.config/velmar/repos.tsv",
                              Formats::serializeRepos(m.repos)}};
}

TEST(repos, move_clamps_and_skips_a_move_to_the_same_place) {
    struct Case {
        std::int64_t id, to;
        std::string order;
        bool writes;
    } cases[] = {{1, 2, "bca", true}, {3, 7, "abc", false}, {2, 1, "abc", false}, {9, 0, "abc", false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(::testing::Message() << c.id << " to " << c.to);
        Model m = watching({"a", "b", "c"});
        const Effects effects = m.moveRepo(c.id, c.to);
        EXPECT_EQ(m.repos[0].name + m.repos[1].name + m.repos[2].name, c.order);
        EXPECT_EQ(effects, c.writes ? saved(m) : Effects{});
    }
}

TEST(repos, remove_drops_its_rows_and_ends_hover_and_edit_on_it_only) {
    for (std::int64_t removed : {1, 2}) {
        SCOPED_TRACE(removed);
        Model m = watching({"acme/web", "acme/api"});
        m.prs = {row(1, 5), row(2, 6), row(1, 7)};
        m.hoveredPr = 100005;
        m.editingRepo = 1;
        m.editText = "x";
        const Effects effects = m.removeRepo(removed);
        EXPECT_EQ(m.prs, (removed == 1 ? std::vector<PR>{row(2, 6)} : std::vector<PR>{row(1, 5), row(1, 7)}));
        EXPECT_EQ(m.hoveredPr.has_value(), removed != 1);
        EXPECT_EQ(m.editingRepo.has_value(), removed != 1);
        EXPECT_EQ(effects, saved(m));
    }
}

TEST(repos, saving_a_pattern_resolves_rows_again) {
    Model m = watching({"acme/web"});
    m.repos[0].detectedPattern = "https://learned-{number}.example.app";
    m.prs = {row(1, 5), row(1, 6, "https://bot.example.app/6")};
    struct Case {
        std::string typed, pattern, preview5;
        PreviewSource source5;
    } cases[] = {
        {" https://typed-{number}.example.app\n", "https://typed-{number}.example.app",
         "https://typed-5.example.app", PreviewSource::pattern},
        {"   ", "", "https://learned-5.example.app", PreviewSource::detected},
        {"no-scheme-{number}", "no-scheme-{number}", "https://learned-5.example.app", PreviewSource::detected},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.typed);
        m.editingRepo = 1;
        m.editText = c.typed;
        const Effects effects = m.savePattern();
        EXPECT_EQ(effects, saved(m));
        EXPECT_EQ(m.repos[0].pattern, c.pattern);
        EXPECT_EQ(m.prs[0].preview, c.preview5);
        EXPECT_EQ(m.prs[0].previewSource, c.source5);
        EXPECT_EQ(m.prs[1].preview, "https://bot.example.app/6");  // a comment link wins
        EXPECT_EQ(m.editingRepo, std::nullopt);
    }
}

TEST(suggestions, merge_keeps_owned_first_and_drops_names_no_longer_owned) {
    using S = std::vector<Suggestion>;
    Model m;
    m.mergeSuggestions(SuggestionSource::owned, {"me/a", "both/x"});
    m.mergeSuggestions(SuggestionSource::shared, {"both/x", "them/b"});
    EXPECT_EQ(m.suggestions, (S{{"me/a", true}, {"both/x", true}, {"them/b", false}}));
    // A name no longer owned goes, and stays gone until shared lists it again.
    m.mergeSuggestions(SuggestionSource::owned, {"me/a"});
    EXPECT_EQ(m.suggestions, (S{{"me/a", true}, {"them/b", false}}));
    m.mergeSuggestions(SuggestionSource::shared, {"both/x", "them/b"});
    EXPECT_EQ(m.suggestions, (S{{"me/a", true}, {"both/x", false}, {"them/b", false}}));
}

}  // namespace
}  // namespace velmar
