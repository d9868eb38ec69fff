// The watch list: removing, reordering, saving patterns, and the merge of the
// two suggestion listings.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Formats.h"
#include "Json.h"
#include "Model.h"

namespace velmar {
namespace {

const std::string kHome = "/home/u";

Repo repo(std::int64_t id, std::string name) {
    Repo r;
    r.id = id;
    r.name = std::move(name);
    r.state = RepoState::ok;
    return r;
}

PR pr(std::int64_t repoId, std::int64_t number, std::string comment = "") {
    PR p;
    p.id = repoId * 100000 + number;
    p.repoId = repoId;
    p.number = number;
    p.branch = "b";
    p.commentPreview = comment;
    p.preview = comment;
    if (!comment.empty()) p.previewSource = PreviewSource::comment;
    return p;
}

Model watching(std::vector<std::string> names) {
    Model m;
    m.home = kHome;
    m.flash.reset();
    for (auto& n : names) m.repos.push_back(repo(m.nextRepoId++, n));
    return m;
}

std::vector<std::string> names(const Model& m) {
    std::vector<std::string> out;
    for (const auto& r : m.repos) out.push_back(r.name);
    return out;
}

Effects reposWrite(const Model& m) {
    return {effect::WriteFile{ConfigFile::repos, configPath(ConfigFile::repos, kHome),
                              Formats::serializeRepos(m.repos)}};
}

TEST(repos, move_clamps_and_skips_a_move_to_the_same_place) {
    struct Case {
        std::int64_t id;
        std::int64_t to;
        std::vector<std::string> order;
        bool writes;
    } cases[] = {
        {1, 2, {"b", "c", "a"}, true},  {3, 0, {"c", "a", "b"}, true},
        {1, 99, {"b", "c", "a"}, true}, {3, -5, {"c", "a", "b"}, true},
        {2, 1, {"a", "b", "c"}, false}, {3, 7, {"a", "b", "c"}, false},
        {9, 0, {"a", "b", "c"}, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(::testing::Message() << "id " << c.id << " to " << c.to);
        Model m = watching({"a", "b", "c"});
        const Effects effects = m.moveRepo(c.id, c.to);
        EXPECT_EQ(names(m), c.order);
        EXPECT_EQ(effects, c.writes ? reposWrite(m) : Effects{});
    }
}

TEST(repos, remove_drops_rows_and_ends_what_pointed_at_the_repository) {
    struct Case {
        const char* name;
        std::int64_t remove;
        bool hoverCleared;
        bool editCleared;
    } cases[] = {
        {"the hovered and edited one", 1, true, true},
        {"another one", 2, false, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Model m = watching({"acme/web", "acme/api"});
        m.prs = {pr(1, 5), pr(2, 6), pr(1, 7)};
        m.hoveredPr = 100005;
        m.editingRepo = 1;
        m.editText = "https://x";
        const Effects effects = m.removeRepo(c.remove);
        EXPECT_EQ(m.hoveredPr.has_value(), !c.hoverCleared);
        EXPECT_EQ(m.editingRepo.has_value(), !c.editCleared);
        EXPECT_EQ(m.editText.empty(), c.editCleared);
        for (const auto& p : m.prs) EXPECT_NE(p.repoId, c.remove);
        EXPECT_EQ(m.prs.size(), c.remove == 1 ? 1u : 2u);
        EXPECT_EQ(effects, reposWrite(m));
    }
    Model m = watching({"a/b"});
    EXPECT_EQ(m.removeRepo(5), Effects{});
    EXPECT_EQ(m.repos.size(), 1u);
}

TEST(repos, saving_a_pattern_resolves_rows_again) {
    Model m = watching({"acme/web"});
    m.repos[0].detectedPattern = "https://learned-{number}.example.app";
    m.prs = {pr(1, 5), pr(1, 6, "https://bot.example.app/6")};
    m.editingRepo = 1;
    m.editText = "  https://typed-{number}.example.app \n";
    Effects saved = m.savePattern();
    EXPECT_EQ(saved, reposWrite(m));
    EXPECT_EQ(m.repos[0].pattern, "https://typed-{number}.example.app");
    EXPECT_EQ(m.prs[0].preview, "https://typed-5.example.app");
    EXPECT_EQ(m.prs[0].previewSource, PreviewSource::pattern);
    EXPECT_EQ(m.prs[1].preview, "https://bot.example.app/6");  // comments win
    EXPECT_EQ(m.editingRepo, std::nullopt);
    EXPECT_EQ(m.editText, "");

    // Blanks alone remove the pattern; the learned one takes over.
    m.editingRepo = 1;
    m.editText = "   ";
    saved = m.savePattern();
    EXPECT_EQ(saved, reposWrite(m));
    EXPECT_EQ(m.repos[0].pattern, "");
    EXPECT_EQ(m.prs[0].preview, "https://learned-5.example.app");
    EXPECT_EQ(m.prs[0].previewSource, PreviewSource::detected);

    // An editor pointing at nothing just closes.
    m.editingRepo = 42;
    m.editText = "x";
    EXPECT_EQ(m.savePattern(), Effects{});
    EXPECT_EQ(m.editingRepo, std::nullopt);
    EXPECT_EQ(m.editText, "");
}

TEST(repos, add_without_a_path_waits_in_the_queue) {
    Model m = watching({});
    m.home.reset();
    EXPECT_EQ(m.addRepo("acme/web"), Effects{});
    ASSERT_EQ(m.repos.size(), 1u);
    EXPECT_EQ(m.repos[0].state, RepoState::queued);
    EXPECT_EQ(m.nextRepoId, 2);
    EXPECT_EQ(m.addRepo(""), Effects{});
    EXPECT_EQ(m.repos.size(), 1u);
}

TEST(suggestions, merge_keeps_owned_first_in_either_order) {
    using S = Suggestion;
    const std::vector<std::string> owned{"me/a", "both/x"}, shared{"both/x", "them/b"};
    const std::vector<S> merged{{"me/a", true}, {"both/x", true}, {"them/b", false}};
    for (bool ownedFirst : {true, false}) {
        SCOPED_TRACE(ownedFirst ? "owned first" : "shared first");
        Model m;
        if (ownedFirst) {
            m.mergeSuggestions(SuggestionSource::owned, owned);
            m.mergeSuggestions(SuggestionSource::shared, shared);
        } else {
            m.mergeSuggestions(SuggestionSource::shared, shared);
            m.mergeSuggestions(SuggestionSource::owned, owned);
        }
        EXPECT_EQ(m.suggestions, merged);
        // A repeated answer changes nothing.
        m.mergeSuggestions(SuggestionSource::owned, owned);
        EXPECT_EQ(m.suggestions, merged);
        // A name no longer owned goes, and stays gone until shared lists it again.
        m.mergeSuggestions(SuggestionSource::owned, {"me/a"});
        EXPECT_EQ(m.suggestions, (std::vector<S>{{"me/a", true}, {"them/b", false}}));
        m.mergeSuggestions(SuggestionSource::shared, shared);
        EXPECT_EQ(m.suggestions, (std::vector<S>{{"me/a", true}, {"both/x", false}, {"them/b", false}}));
    }
}

}  // namespace
}  // namespace velmar
