// The viewer's own pull requests ("Yours"): the blocked rule and the order,
// the search in the batched query and its switch, and one pull request that
// stands both in its watched repository's group and in "Yours".
#include <gtest/gtest.h>

#include "Graphql.h"
#include "Json.h"
#include "Model.h"

namespace velmar {
namespace {

const std::string kPath = "/usr/bin";

// A search result as GitHub gives it, with the states that decide its place.
Json searchNode(std::string_view slug, int number, std::string_view updated, const char* checks = "SUCCESS",
                const char* review = nullptr, const char* mergeable = "MERGEABLE") {
    Json node{{"id", "PR_" + std::string(slug) + "_" + std::to_string(number)},
              {"number", number},
              {"title", "Title " + std::to_string(number)},
              {"url", "https://github.com/" + std::string(slug) + "/pull/" + std::to_string(number)},
              {"headRefName", "feat/" + std::to_string(number)},
              {"headRefOid", "oid" + std::to_string(number)},
              {"isDraft", false},
              {"updatedAt", updated},
              {"author", {{"login", "ana"}}},
              {"reviewDecision", review ? Json(review) : Json(nullptr)},
              {"mergeable", mergeable},
              {"statusCheckRollup", checks ? Json{{"state", checks}} : Json(nullptr)},
              {"repository", {{"nameWithOwner", slug}}}};
    return node;
}

std::string batchAnswer(Json r0, std::optional<Json> yours) {
    Json data{{"viewer", {{"login", "ana"}}}, {"r0", {{"pullRequests", {{"nodes", std::move(r0)}}}}}};
    if (yours) data["yours"] = {{"nodes", std::move(*yours)}};
    return Json{{"data", std::move(data)}}.dump();
}

/// One watched repository, checks on, the viewer known, nothing fetched yet.
Model watching() {
    Model m;
    m.home = "/home/u";
    m.path = kPath;
    m.pathResolved = m.reposLoaded = m.settingsLoaded = true;
    m.checks = true;
    m.viewer = "ana";
    m.repos = {Repo{1, "acme/web", "", RepoState::queued, 0, false, ""}};
    m.nextRepoId = 2;
    return m;
}

PR mine(std::string repo, std::int64_t number, std::string updated, std::optional<ChecksState> checks = {},
        std::optional<ReviewState> review = {}, bool conflicts = false, bool draft = false) {
    PR pr;
    pr.repo = std::move(repo);
    pr.number = number;
    pr.updatedAt = std::move(updated);
    pr.checks = checks;
    pr.review = review;
    pr.conflicts = conflicts;
    pr.isDraft = draft;
    return pr;
}

TEST(yours_order, the_blocked_rule) {
    using C = ChecksState;
    using R = ReviewState;
    const struct {
        const char* name;
        PR pr;
        bool blocked;
    } rows[] = {
        {"checks failing (or errored)", mine("a/b", 1, "t", C::failing), true},
        {"changes requested", mine("a/b", 1, "t", C::passing, R::changesRequested), true},
        {"merge conflicts", mine("a/b", 1, "t", C::passing, R::approved, true), true},
        {"a draft with failing checks", mine("a/b", 1, "t", C::failing, {}, false, true), true},
        {"checks running", mine("a/b", 1, "t", C::running), false},
        {"review required", mine("a/b", 1, "t", C::passing, R::reviewRequired), false},
        {"approved and passing", mine("a/b", 1, "t", C::passing, R::approved), false},
        {"no states known", mine("a/b", 1, "t"), false},
        {"a plain draft", mine("a/b", 1, "t", {}, {}, false, true), false},
    };
    for (const auto& r : rows) EXPECT_EQ(isBlocked(r.pr), r.blocked) << r.name;
}

TEST(yours_order, blocked_then_running_then_the_rest_newest_first) {
    using C = ChecksState;
    const auto order = [](std::vector<PR> prs) {
        orderYours(prs);
        std::string out;
        for (const auto& p : prs) out += p.repo + "#" + std::to_string(p.number) + " ";
        return out;
    };
    const struct {
        const char* name;
        std::vector<PR> prs;
        const char* want;
    } rows[] = {
        {"each part newest first",
         {mine("a/x", 1, "2026-01-01T00:00:00Z"), mine("a/x", 2, "2026-01-03T00:00:00Z", C::running),
          mine("a/x", 3, "2026-01-02T00:00:00Z", C::failing), mine("a/x", 4, "2026-01-05T00:00:00Z"),
          mine("a/x", 5, "2026-01-04T00:00:00Z", C::passing, ReviewState::changesRequested),
          mine("a/x", 6, "2026-01-06T00:00:00Z", C::running)},
         "a/x#5 a/x#3 a/x#6 a/x#2 a/x#4 a/x#1 "},
        {"an old blocked one before a new running one",
         {mine("a/x", 1, "2026-06-01T00:00:00Z", C::running), mine("a/x", 2, "2020-01-01T00:00:00Z", {}, {}, true)},
         "a/x#2 a/x#1 "},
        {"equal times: repository, then the higher number",
         {mine("b/y", 1, "2026-01-01T00:00:00Z"), mine("a/x", 1, "2026-01-01T00:00:00Z"),
          mine("a/x", 7, "2026-01-01T00:00:00Z")},
         "a/x#7 a/x#1 b/y#1 "},
        {"drafts take their place by their states",
         {mine("a/x", 1, "2026-01-02T00:00:00Z", {}, {}, false, true),
          mine("a/x", 2, "2026-01-01T00:00:00Z", C::failing, {}, false, true),
          mine("a/x", 3, "2026-01-03T00:00:00Z", C::passing)},
         "a/x#2 a/x#3 a/x#1 "},
        {"no update time sorts last in its part",
         {mine("a/x", 1, ""), mine("a/x", 2, "2026-01-01T00:00:00Z")}, "a/x#2 a/x#1 "},
    };
    for (const auto& r : rows) EXPECT_EQ(order(r.prs), r.want) << r.name;
}

TEST(yours_query, the_search_only_with_the_switch_and_the_login) {
    const struct {
        std::optional<std::string> viewer;
        bool yours;
        bool searched;
    } rows[] = {{std::nullopt, true, false}, {"", true, false}, {"ana", false, false}, {"ana", true, true}};
    for (const auto& r : rows) {
        const auto args = Graphql::batchArguments({"acme/web"}, r.viewer, r.yours);
        const std::string& query = args[3];
        EXPECT_EQ(query.find("yours: search(query: $a, type: ISSUE, first: 50)") != std::string::npos, r.searched)
            << query;
        EXPECT_EQ(query.find("$a: String!") != std::string::npos, r.searched);
        const bool hasValue = std::find(args.begin(), args.end(), "a=is:open is:pr author:ana") != args.end();
        EXPECT_EQ(hasValue, r.searched);
        // The login never enters the query's text.
        EXPECT_EQ(query.find("ana"), std::string::npos);
    }
    // With no repository the search alone still spreads, and so needs, the row fragment.
    const std::string alone = Graphql::batchQuery(0, false, true);
    EXPECT_NE(alone.find("fragment P "), std::string::npos);
    EXPECT_EQ(alone.find("fragment R "), std::string::npos);
}

TEST(yours_query, the_switch_in_the_extras_file) {
    const struct {
        const char* text;
        std::optional<bool> yours;
    } rows[] = {{"checks\t1\n", std::nullopt}, {"checks\t1\nyours\t0\n", false}, {"yours\t1\n", true},
                {"yours\t0\nyours\t1\n", true}, {"yours\tyes\n", false}};
    for (const auto& r : rows) EXPECT_EQ(Graphql::parseExtras(r.text).yours, r.yours) << r.text;
    EXPECT_EQ(Graphql::serializeExtras({true, std::nullopt}), "checks\t1\n");
    EXPECT_EQ(Graphql::serializeExtras({true, false}), "checks\t1\nyours\t0\n");
    EXPECT_EQ(Graphql::serializeExtras({false, true}), "checks\t0\nyours\t1\n");
}

TEST(yours_model, the_switch_decides_the_query_the_group_and_the_json) {
    const auto file = [](const char* text) {
        return Effect(effect::WriteFile{ConfigFile::extras, "/home/u/.config/velmar/extras.tsv", text});
    };
    const Json found = Json::array({searchNode("other/lib", 4, "2026-01-02T00:00:00Z", "FAILURE"),
                                    searchNode("other/lib", 5, "2026-01-03T00:00:00Z")});

    // On by default: the query asks, the group stands between the review
    // group's place and the watched repositories.
    Model m = watching();
    EXPECT_EQ(m.refresh().back(), Effect(effect::FetchBatch{{"acme/web"}, "ana", kPath, true}));
    m.batchFetched({"acme/web"}, batchAnswer(Json::array(), found));
    ASSERT_TRUE(m.yourPrs);
    EXPECT_EQ(m.yoursBlocked(), 1);
    std::string ids;
    for (const auto& r : m.listRows()) ids += r.isHeader() ? r.id() + " " : "pr ";
    EXPECT_EQ(ids, "repo--1 pr pr repo-1 ");
    EXPECT_EQ(m.yourPrs->front().number, 4);  // blocked first, though older
    EXPECT_EQ(m.apply(msg::OpenRepoPulls{yoursGroupId}), (Effects{effect::OpenURL{"https://github.com/pulls", ""}}));

    // Off: written, the group gone at once, nothing asked, nothing in the JSON.
    EXPECT_EQ(m.apply(msg::SetYours{false}), (Effects{file("checks\t1\nyours\t0\n")}));
    EXPECT_FALSE(m.yourPrs);
    EXPECT_EQ(toJson(m).dump().find("yourPrs"), std::string::npos);
    for (auto& r : m.repos) r.state = RepoState::ok;
    EXPECT_EQ(m.refresh().back(), Effect(effect::FetchBatch{{"acme/web"}, "ana", kPath}));
    // An answer that still carries the search (asked before the switch) is not shown.
    m.batchFetched({"acme/web"}, batchAnswer(Json::array(), found));
    EXPECT_FALSE(m.yourPrs);

    // On again: written and asked for at once.
    EXPECT_EQ(m.apply(msg::SetYours{true}),
              (Effects{file("checks\t1\nyours\t1\n"), effect::FetchBatch{{"acme/web"}, "ana", kPath, true}}));

    // The parent off: the sub-switch is inert and the file keeps its choice.
    m = watching();
    m.yours = true;
    m.batchFetched({"acme/web"}, batchAnswer(Json::array(), found));
    EXPECT_EQ(m.apply(msg::SetChecks{false}), (Effects{file("checks\t0\nyours\t1\n"), effect::FetchPrs{"acme/web", kPath}}));
    EXPECT_FALSE(m.yourPrs);
    EXPECT_TRUE(m.apply(msg::SetYours{false}).empty());
    EXPECT_EQ(toJson(m).dump().find("yourPrs"), std::string::npos);

    // Not known who the viewer is yet: no search in the first query.
    m = watching();
    m.viewer.reset();
    EXPECT_EQ(m.refresh().back(), Effect(effect::FetchBatch{{"acme/web"}, std::nullopt, kPath}));
}

TEST(yours_model, no_pull_requests_of_the_viewer_no_group) {
    Model m = watching();
    m.refresh();
    m.batchFetched({"acme/web"}, batchAnswer(Json::array({searchNode("acme/web", 1, "t")}), Json::array()));
    ASSERT_TRUE(m.yourPrs);
    EXPECT_TRUE(m.yourPrs->empty());
    EXPECT_EQ(m.yoursBlocked(), 0);
    const auto rows = m.listRows();
    ASSERT_FALSE(rows.empty());
    EXPECT_EQ(rows.front().id(), "repo-1");
}

TEST(yours_model, watched_and_yours_one_row_each_both_from_the_same_answer) {
    Model m = watching();
    m.refresh();
    const auto round = [&](const char* checks) {
        Json same = searchNode("acme/web", 7, "2026-01-01T00:00:00Z", checks);
        m.batchFetched({"acme/web"}, batchAnswer(Json::array({same}), Json::array({same})));
        m.commentsFetched("{}");
        for (auto& r : m.repos) r.state = RepoState::ok;
    };
    round("PENDING");
    ASSERT_TRUE(m.yourPrs);
    ASSERT_EQ(m.yourPrs->size(), 1u);
    ASSERT_EQ(m.prs.size(), 1u);
    const PR& watched = m.prs.front();
    const PR& own = m.yourPrs->front();
    EXPECT_NE(own.id, watched.id);
    EXPECT_EQ(own.repoId, yoursGroupId);
    EXPECT_EQ(own.repo, "acme/web");
    EXPECT_EQ(m.pr(own.id), &own);
    const auto rows = m.listRows();
    EXPECT_EQ(std::count_if(rows.begin(), rows.end(), [](const ListRow& r) { return !r.isHeader(); }), 2);

    // The next refresh's answer changes both rows alike.
    m.refresh();
    round("FAILURE");
    EXPECT_EQ(m.prs.front().checks, ChecksState::failing);
    EXPECT_EQ(m.yourPrs->front().checks, ChecksState::failing);
    EXPECT_EQ(m.yoursBlocked(), 1);
}

}  // namespace
}  // namespace velmar
