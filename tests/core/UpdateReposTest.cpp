// The watch list: removing, reordering, saving patterns, and the merge of the
// two suggestion listings.
#include <gtest/gtest.h>

#include "CoreTest.h"
#include "Formats.h"

namespace velmar {
namespace {

using test::watching;

PR row(std::int64_t repoId, std::int64_t number, std::string comment = "") {
    PR p = test::row(repoId, number);
    p.commentPreview = p.preview = comment;
    return p;
}

Effects saved(const Model& m) { return {test::written(ConfigFile::repos, Formats::serializeRepos(m.repos))}; }

TEST(repos, move_clamps_and_skips_a_move_to_the_same_place) {
    // Moved, to, the order after, and whether the list is written.
    const std::tuple<std::int64_t, std::int64_t, std::string, bool> cases[] = {
        {1, 2, "bca", true}, {3, 7, "abc", false}, {2, 1, "abc", false}, {9, 0, "abc", false}};
    for (const auto& [id, to, order, writes] : cases) {
        Model m = watching({"a", "b", "c"});
        const Effects effects = m.moveRepo(id, to);
        EXPECT_EQ(m.repos[0].name + m.repos[1].name + m.repos[2].name, order) << id << " to " << to;
        EXPECT_EQ(effects, writes ? saved(m) : Effects{});
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
    // What is typed, the pattern kept and row 5's preview. A typed pattern is
    // kept trimmed, as the transcript fetch_learns_pattern shows.
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {"   ", "", "https://learned-5.example.app"},
        {"no-scheme-{number}", "no-scheme-{number}", "https://learned-5.example.app"},  // no web address
    };
    for (const auto& [typed, pattern, preview5] : cases) {
        m.editingRepo = 1;
        m.editText = typed;
        const Effects effects = m.savePattern();
        EXPECT_EQ(effects, saved(m));
        // A comment link wins over either pattern.
        EXPECT_EQ(std::tie(m.repos[0].pattern, m.prs[0].preview, m.prs[0].previewSource, m.prs[1].preview, m.editingRepo),
                  std::tuple(pattern, preview5, PreviewSource::detected, "https://bot.example.app/6", std::nullopt))
            << typed;
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
