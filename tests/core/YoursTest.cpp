// The viewer's own pull requests ("Yours"): the blocked rule and the order,
// the search in the batched query and its switch, and one pull request that
// stands both in its watched repository's group and in "Yours".
#include <gtest/gtest.h>

#include "CoreTest.h"

namespace velmar {
namespace {

using namespace test;

/// A search result as GitHub gives it, with the states that decide its place.
Json searchNode(const std::string& slug, int number, std::string_view updated, const char* checks = "SUCCESS") {
    const std::string n = std::to_string(number);
    return prNode(number, {{"id", "PR_" + slug + "_" + n}, {"url", "https://github.com/" + slug + "/pull/" + n},
                           {"updatedAt", updated}, {"statusCheckRollup", {{"state", checks}}},
                           {"repository", {{"nameWithOwner", slug}}}});
}

std::string batchAnswer(Json r0, std::optional<Json> yours) {
    Json data{{"viewer", {{"login", "ana"}}}, {"r0", repoNode(std::move(r0))}};
    if (yours) data["yours"] = {{"nodes", std::move(*yours)}};
    return answer(std::move(data));
}

/// One watched repository, checks on, the viewer known, nothing fetched yet.
Model watchingWeb() {
    Model m = watching({"acme/web"});
    m.viewer = "ana";
    return m;
}

PR mine(std::string repo, std::int64_t number, std::string updated, std::optional<ChecksState> checks = {},
        std::optional<ReviewState> review = {}, bool conflicts = false, bool draft = false) {
    return PR{.repo = std::move(repo), .number = number, .isDraft = draft, .checks = checks, .review = review,
              .conflicts = conflicts, .updatedAt = std::move(updated)};
}

TEST(yours_order, the_blocked_rule) {
    using C = ChecksState;
    using R = ReviewState;
    const std::tuple<const char*, PR, bool> rows[] = {
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
    for (const auto& [name, pr, blocked] : rows) EXPECT_EQ(isBlocked(pr), blocked) << name;
}

TEST(yours_order, blocked_then_running_then_the_rest_newest_first) {
    using C = ChecksState;
    const auto order = [](std::vector<PR> prs) {
        orderYours(prs);
        std::string out;
        for (const auto& p : prs) out += p.repo + "#" + std::to_string(p.number) + " ";
        return out;
    };
    const std::tuple<const char*, std::vector<PR>, const char*> rows[] = {
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
    for (const auto& [name, prs, want] : rows) EXPECT_EQ(order(prs), want) << name;
}

TEST(yours_model, the_switch_decides_the_query_the_group_and_the_json) {
    const auto file = [](const char* text) { return written(ConfigFile::extras, text); };
    const Json found = Json::array({searchNode("other/lib", 4, "2026-01-02T00:00:00Z", "FAILURE"),
                                    searchNode("other/lib", 5, "2026-01-03T00:00:00Z")});

    // On by default: the query asks, the group stands between the review
    // group's place and the watched repositories.
    Model m = watchingWeb();
    EXPECT_EQ(m.refresh().back(), Effect(effect::FetchBatch{{"acme/web"}, "ana", kPath, true}));
    m.batchFetched({"acme/web"}, batchAnswer(Json::array(), found));
    EXPECT_EQ(m.yoursBlocked(), 1);
    EXPECT_EQ(shape(m.listRows()), "repo--1:2 repo-1:0");
    EXPECT_EQ(m.yourPrs.value().front().number, 4);  // blocked first, though older
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
}

TEST(yours_model, no_pull_requests_of_the_viewer_no_group) {
    Model m = watchingWeb();
    m.refresh();
    m.batchFetched({"acme/web"}, batchAnswer(Json::array({searchNode("acme/web", 1, "t")}), Json::array()));
    EXPECT_EQ(m.yourPrs, std::vector<PR>{});
    EXPECT_EQ(m.yoursBlocked(), 0);
    EXPECT_EQ(shape(m.listRows()), "repo-1:1");
}

TEST(yours_model, watched_and_yours_one_row_each_both_from_the_same_answer) {
    Model m = watchingWeb();
    m.refresh();
    const auto round = [&](const char* checks) {
        Json same = searchNode("acme/web", 7, "2026-01-01T00:00:00Z", checks);
        m.batchFetched({"acme/web"}, batchAnswer(Json::array({same}), Json::array({same})));
        m.commentsFetched("{}");
        for (auto& r : m.repos) r.state = RepoState::ok;
    };
    round("PENDING");
    EXPECT_EQ(shape(m.listRows()), "repo--1:1 repo-1:1");
    const PR& own = m.yourPrs.value().front();
    EXPECT_NE(own.id, m.prs.at(0).id);
    EXPECT_EQ(std::tie(own.repoId, own.repo), std::tuple(yoursGroupId, "acme/web"));
    EXPECT_EQ(m.pr(own.id), &own);

    // The next refresh's answer changes both rows alike.
    m.refresh();
    round("FAILURE");
    EXPECT_EQ(std::pair(m.prs.front().checks, m.yourPrs->front().checks),
              std::pair(std::optional(ChecksState::failing), std::optional(ChecksState::failing)));
    EXPECT_EQ(m.yoursBlocked(), 1);
}

}  // namespace
}  // namespace velmar
