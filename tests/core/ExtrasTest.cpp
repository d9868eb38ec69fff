// Checks, reviews and deployments: the extras file, the batched query's
// command line and reader, the deployment match, the queue of batched calls
// and comment queries, and the list rows with the extras.
#include <map>
#include <set>

#include <gtest/gtest.h>

#include "CoreTest.h"
#include "Graphql.h"

namespace velmar {
namespace {

using namespace test;
using Graphql::Deployment;

TEST(extras_file, each_switch_reads_back_as_written) {
    // "1" is on, any other value off; the last line wins.
    const auto none = std::nullopt;
    const std::tuple<const char*, bool, std::optional<bool>> rows[] = {
        {"", false, none},          {"checks\t1\n", true, none},           {"checks\t0\n", false, none},
        {"checks\ttrue\n", false, none}, {"checks\t1\r\nchecks\t0\n", false, none}, {"checks\t0\nchecks\t1", true, none},
        {"  checks \t 1 \n", true, none}, {"other\t1\n", false, none},          {"checks\n", false, none},
        {"checks\t1\nyours\t0\n", true, false}, {"yours\t0\nyours\t1\n", false, true}, {"yours\tyes\n", false, false},
    };
    for (const auto& [text, checks, yours] : rows) {
        const auto read = Graphql::parseExtras(text);
        EXPECT_EQ(std::pair(read.checks, read.yours), std::pair(checks, yours)) << text;
    }
    // A switch never set stays out of the file.
    const std::pair<Graphql::Extras, const char*> files[] = {
        {{true}, "checks\t1\n"},
        {{false, true}, "checks\t0\nyours\t1\n"},
        {{true, false, true, true, true, false, true},
         "checks\t1\nyours\t0\nnotify\t1\nnotify_new\t1\nnotify_checks\t1\nnotify_review\t0\ntray\t1\n"},
    };
    for (const auto& [extras, text] : files) {
        EXPECT_EQ(Graphql::serializeExtras(extras), text);
        EXPECT_EQ(Graphql::parseExtras(text), extras) << text;
    }
}

TEST(batch_command, slugs_login_and_host_travel_outside_the_query) {
    const std::vector<std::string> repos{"acme/web", "o'; rm -rf ~/x\"$(id)", "solo"};
    // Both searches need the login; "Yours" also needs its switch.
    // The login, the switch, and whether the review search and "Yours" are asked.
    const std::tuple<std::optional<std::string>, bool, bool, bool> rows[] = {
        {std::nullopt, true, false, false}, {"", true, false, false}, {"ana", false, true, false}, {"ana", true, true, true}};
    for (const auto& [viewer, yours, review, searched] : rows) {
        const auto args = Graphql::batchArguments(repos, viewer, yours);
        std::vector<std::string> expected{"api", "graphql", "-f", "query=" + Graphql::batchQuery(3, review, searched),
                                          "-f", "o0=acme", "-f", "n0=web", "-f", "o1=o'; rm -rf ~", "-f", "n1=x\"$(id)",
                                          "-f", "o2=solo", "-f", "n2="};
        if (review) expected.insert(expected.end(), {"-f", "q=is:pr is:open archived:false review-requested:ana"});
        if (searched) expected.insert(expected.end(), {"-f", "a=is:open is:pr author:ana"});
        EXPECT_EQ(args, expected);
        const std::string& query = args[3];
        for (const char* secret : {"acme", "rm -rf", "solo", "ana"})
            EXPECT_EQ(query.find(secret), std::string::npos) << secret;
        EXPECT_EQ(query.find("review:") != std::string::npos, review);
        EXPECT_EQ(query.find("yours: search(query: $a, type: ISSUE, first: 50)") != std::string::npos, searched);
        EXPECT_EQ(query.find("$a: String!") != std::string::npos, searched);
        EXPECT_NE(query.find("r2: repository(owner: $o2, name: $n2)"), std::string::npos);
        EXPECT_EQ(query.find("r3:"), std::string::npos);
    }
    // GraphQL refuses an unused fragment: each is there only when something
    // spreads it, the search alone included.
    const std::tuple<std::size_t, bool, bool, bool, bool> fragments[] = {
        {0, false, false, false, false}, {0, true, false, true, false}, {1, false, false, true, true},
        {2, true, false, true, true},    {0, false, true, true, false}};
    for (const auto& [count, review, yours, hasP, hasR] : fragments) {
        const std::string q = Graphql::batchQuery(count, review, yours);
        EXPECT_EQ(q.find("fragment P ") != std::string::npos, hasP) << q;
        EXPECT_EQ(q.find("fragment R ") != std::string::npos, hasR) << q;
    }

    const std::pair<const char*, std::optional<std::string>> hosts[] = {
        {"acme/web", std::nullopt}, {"ghe.corp/acme/web", "ghe.corp"}, {"localhost:8443/a/b", "localhost:8443"},
        {"a/b/c/d", std::nullopt},  {"/acme/web", std::nullopt},       {"h//web", std::nullopt},
        {"h/acme/", std::nullopt},  {"solo", std::nullopt},            {"acme/web/", std::nullopt},
    };
    for (const auto& [slug, host] : hosts) EXPECT_EQ(Graphql::hostOf(slug), host) << slug;
    // The host is not asked for as part of the name: the call goes to it.
    EXPECT_EQ(Graphql::batchArguments({"ghe.corp/acme/web", "ghe.corp/x/y"}, std::nullopt),
              (std::vector<std::string>{"api", "graphql", "-f", "query=" + Graphql::batchQuery(2, false), "-f",
                                        "o0=acme", "-f", "n0=web", "-f", "o1=x", "-f", "n1=y"}));
}

TEST(batch_reader, reads_each_repository_on_its_own) {
    const Json good{{"viewer", {{"login", "ana"}}}, {"rateLimit", rate()},
                    {"r0", repoNode(Json::array({prNode(1)}))}, {"r1", repoNode(Json::array())}};
    Json nullAlias = good;
    nullAlias["r1"] = nullptr;
    Json oddEnums = good;
    oddEnums["r0"] = repoNode(Json::array({prNode(
        1, {{"reviewDecision", "MAYBE"}, {"statusCheckRollup", {{"state", "SLEEPING"}}}, {"mergeable", "CONFLICTING"}})}));
    const Json notFound = Json::array({{{"type", "NOT_FOUND"}, {"path", {"r1"}}, {"message", "Could not resolve"}}});
    // Readable, rate limited, and the pull requests of each repository (-1: failed).
    const std::tuple<const char*, std::string, bool, bool, std::vector<int>> rows[] = {
        {"good", answer(good), true, false, {1, 0}},
        {"null alias with an error", answer(nullAlias, notFound), true, false, {1, -1}},
        {"missing alias", answer(Json{{"r0", repoNode(Json::array())}}), true, false, {0, -1}},
        {"rate limited", answer(nullptr, Json::array({{{"type", "RATE_LIMITED"}}})), true, true, {-1, -1}},
        {"truncated", answer(good).substr(0, 60), false, false, {-1, -1}},
        {"an array", "[]", false, false, {-1, -1}},
        {"unknown enums", answer(oddEnums), true, false, {1, 0}},
    };
    for (const auto& [name, output, readable, rateLimited, prsPerRepo] : rows) {
        const auto got = Graphql::parseBatch(output, 2);
        std::vector<int> counts;
        for (const auto& r : got.repos) counts.push_back(r ? static_cast<int>(r->prs.size()) : -1);
        EXPECT_EQ(std::tie(got.readable, got.rateLimited, counts), std::tie(readable, rateLimited, prsPerRepo)) << name;
    }

    const auto read = Graphql::parseBatch(answer(good), 2);
    EXPECT_EQ(read.viewer, "ana");
    EXPECT_EQ(read.rateLimit, (Graphql::RateLimit{5000, 1, 4990, "2026-11-24T09:41:07Z"}));
    const auto& pr = read.repos[0]->prs[0];
    EXPECT_EQ(std::tie(pr.nodeId, pr.number, pr.branch, pr.headOid, pr.author, pr.checks, pr.review, pr.conflicts),
              std::tuple("PR_1", 1, "feat/1", "a1", "ana", ChecksState::passing, ReviewState::approved, false));
    const auto odd = Graphql::parseBatch(answer(oddEnums), 2).repos[0]->prs[0];
    EXPECT_EQ(std::tie(odd.checks, odd.review, odd.conflicts), std::tuple(std::nullopt, std::nullopt, true));
}

TEST(batch_reader, state_words_map_to_markers) {
    const std::pair<const char*, std::optional<ChecksState>> checks[] = {
        {"SUCCESS", ChecksState::passing}, {"FAILURE", ChecksState::failing}, {"ERROR", ChecksState::failing},
        {"PENDING", ChecksState::running}, {"EXPECTED", ChecksState::running}, {"success", std::nullopt}};
    for (const auto& [word, want] : checks) {
        const Json node = prNode(1, {{"statusCheckRollup", {{"state", word}}}});
        const auto got = Graphql::parseBatch(answer(Json{{"r0", repoNode(Json::array({node}))}}), 1);
        EXPECT_EQ(got.repos[0]->prs[0].checks, want) << word;
    }
    // The deployment's latest status decides; its own state only without one.
    const std::tuple<Json, const char*, std::optional<DeployState>> deploys[] = {
        {Json{{"state", "SUCCESS"}, {"environmentUrl", "https://p.example"}}, "ACTIVE", DeployState::ready},
        {Json{{"state", "IN_PROGRESS"}}, "ACTIVE", DeployState::building},
        {Json{{"state", "QUEUED"}}, "QUEUED", DeployState::building},
        {Json{{"state", "FAILURE"}}, "ACTIVE", DeployState::failed},
        {Json{{"state", "INACTIVE"}}, "INACTIVE", DeployState::inactive},
        {nullptr, "ERROR", DeployState::failed},
        {nullptr, "DESTROYED", DeployState::inactive},
        {nullptr, "SOMETHING_NEW", std::nullopt},
    };
    for (const auto& [status, state, want] : deploys) {
        const Json node{{"environment", "preview"}, {"state", state}, {"commitOid", "a1"},
                        {"ref", {{"name", "feat/1"}}}, {"latestStatus", status}};
        const auto got = Graphql::parseBatch(answer(Json{{"r0", repoNode(Json::array(), Json::array({node}))}}), 1);
        ASSERT_EQ(got.repos[0]->deployments.size(), 1u);
        EXPECT_EQ(got.repos[0]->deployments[0].state, want) << state;
    }
}

TEST(deployment_match, head_commit_first_then_branch_newest_wins) {
    const Deployment oldHead{"preview", "a1", "feat/1", DeployState::inactive, "https://old"};
    const Deployment newHead{"preview", "a1", "feat/1", DeployState::ready, "https://new"};
    const Deployment branchOnly{"preview", "b2", "feat/1", DeployState::building, "https://branch"};
    const Deployment other{"preview", "c3", "main", DeployState::ready, "https://main"};
    using Match = std::optional<Graphql::DeploymentMatch>;
    const Match byHead = Graphql::DeploymentMatch{newHead, false};
    const std::tuple<const char*, std::vector<Deployment>, const char*, const char*, Match> rows[] = {
        {"none", {}, "a1", "feat/1", std::nullopt},
        {"head commit", {other, branchOnly, newHead}, "a1", "feat/1", byHead},
        {"newest of the head", {oldHead, newHead, branchOnly}, "a1", "feat/1", byHead},
        {"head beats a newer branch one", {newHead, branchOnly}, "a1", "feat/1", byHead},
        {"branch is older commit", {other, branchOnly}, "zz", "feat/1", Graphql::DeploymentMatch{branchOnly, true}},
        {"nothing of it", {other}, "zz", "feat/9", std::nullopt},
        {"empty head never matches", {Deployment{"p", "", "x", DeployState::ready, ""}}, "", "y", std::nullopt},
    };
    for (const auto& [name, list, head, branch, want] : rows)
        EXPECT_EQ(Graphql::matchDeployment(list, head, branch), want) << name;
}

TEST(comments_reader, resolves_previews_as_the_plain_fetch_does) {
    const auto comment = [](Json author, std::string body) {
        return Json{{"author", std::move(author)}, {"body", std::move(body)}};
    };
    const auto login = [](const char* l) { return Json{{"login", l}}; };
    const std::tuple<const char*, Json, const char*> rows[] = {
        {"bot link", Json::array({comment(login("vercel[bot]"), "[Visit Preview](https://web-1.vercel.app)")}),
         "https://web-1.vercel.app"},
        {"last body with a link wins",
         Json::array({comment(login("railway-app"), "[Web](https://a.up.railway.app)"),
                      comment(login("netlify"), "[Preview](https://b.netlify.app)"),
                      comment(login("netlify"), "no link")}),
         "https://b.netlify.app"},
        {"people are not bots", Json::array({comment(login("ana"), "[Preview](https://a.vercel.app)")}), ""},
        {"no author is no bot", Json::array({comment(nullptr, "[Preview](https://a.vercel.app)")}), ""},
        {"no comments", Json::array(), ""},
    };
    Json data{{"c99", nullptr}};  // a node that could not be read says nothing
    std::map<std::string, std::string> want;
    for (const auto& [name, comments, link] : rows) {
        data["c" + std::to_string(want.size())] = Json{{"id", name}, {"comments", {{"nodes", comments}}}};
        want[name] = link;
    }
    EXPECT_EQ(Graphql::parseComments(answer(data)), want);
    EXPECT_TRUE(Graphql::parseComments("not json").empty());
}

/// acme/web and acme/api, checks on, nothing fetched yet.
Model webAndApi() { return watching({"acme/web", "acme/api"}); }

const std::vector<std::string> kBoth{"acme/web", "acme/api"};

TEST(extras_queue, one_query_for_every_repository_and_a_failure_stays_alone) {
    Model m = webAndApi();
    EXPECT_EQ(m.refresh(), (Effects{effect::GhPreflight{kPath}, effect::FetchBatch{kBoth, std::nullopt, kPath}}));

    Json data{{"viewer", {{"login", "ana"}}}, {"rateLimit", rate()},
              {"r0", repoNode(Json::array({prNode(1), prNode(2)}))}, {"r1", nullptr}};
    EXPECT_EQ(m.batchFetched(kBoth, answer(data, Json::array({{{"path", {"r1"}}}}))),
              (Effects{effect::FetchComments{{"PR_1", "PR_2"}, kPath}}));
    EXPECT_EQ(std::tie(m.viewer, m.prs[0].checks, m.fetchInFlight),
              std::tuple(std::optional<std::string>("ana"), ChecksState::passing, true));
    EXPECT_EQ(std::tie(m.repos[0].count, m.repos[0].failed, m.repos[1].count, m.repos[1].failed),
              std::tuple(2, false, 0, true));

    // The comments end the refresh, and teach the pattern as a plain fetch's do.
    const Json bot = Json::array({{{"author", {{"login", "vercel"}}}, {"body", "[Preview](https://web-1.vercel.app/)"}}});
    EXPECT_EQ(m.commentsFetched(answer(Json{{"c0", {{"id", "PR_1"}, {"comments", {{"nodes", bot}}}}}})),
              (Effects{written(ConfigFile::repos, "acme/web\t\thttps://web-{number}.vercel.app/\nacme/api\t\n")}));
    EXPECT_EQ(std::tie(m.prs[0].preview, m.prs[0].previewSource, m.prs[1].preview, m.prs[1].previewSource),
              std::tuple("https://web-1.vercel.app/", PreviewSource::comment, "https://web-2.vercel.app/",
                         PreviewSource::detected));
    EXPECT_EQ(std::pair(m.isRefreshing(), m.flash), std::pair(false, std::optional<std::string>()));
}

TEST(extras_queue, comments_only_for_new_or_changed_pull_requests_and_all_every_tenth) {
    Model m = webAndApi();
    const auto round = [&](Json prs) {
        m.refresh();
        Json data{{"rateLimit", rate()}, {"r0", repoNode(prs)}, {"r1", repoNode(Json::array())}};
        const auto effects = m.batchFetched(kBoth, answer(data));
        if (m.fetchInFlight) m.commentsFetched("{}");
        return effects.empty() ? std::vector<std::string>{} : std::get<effect::FetchComments>(effects.back()).ids;
    };
    using Ids = std::vector<std::string>;
    const Json base = Json::array({prNode(1), prNode(2), prNode(3)});
    EXPECT_EQ(round(base), (Ids{"PR_1", "PR_2", "PR_3"}));  // first time: all new
    EXPECT_EQ(round(base), Ids{});                            // nothing changed
    Json changed = base;
    changed[1] = prNode(2, {{"headRefOid", "a2"}});               // new head commit
    changed[2] = prNode(3, {{"updatedAt", "2026-02-02T00:00:00Z"}});  // updated
    changed.push_back(prNode(4));                                   // new
    EXPECT_EQ(round(changed), (Ids{"PR_2", "PR_3", "PR_4"}));
    for (int i = 4; i <= 10; ++i) EXPECT_EQ(round(changed), Ids{}) << "refresh " << i;
    EXPECT_EQ(round(changed), (Ids{"PR_1", "PR_2", "PR_3", "PR_4"}));  // the eleventh: all again
}

TEST(extras_queue, more_than_a_hundred_ids_go_in_several_queries) {
    Model m = webAndApi();
    m.refresh();
    Json web = Json::array(), api = Json::array();
    for (int n = 1; n <= 50; ++n) web.push_back(prNode(n));
    for (int n = 51; n <= 130; ++n) api.push_back(prNode(n));
    const auto ids = [](const Effects& effects) { return std::get<effect::FetchComments>(effects.at(0)).ids.size(); };
    EXPECT_EQ(ids(m.batchFetched(kBoth, answer(Json{{"r0", repoNode(web)}, {"r1", repoNode(api)}}))), 100u);
    EXPECT_EQ(ids(m.commentsFetched("{}")), 30u);
    EXPECT_TRUE(m.commentsFetched("{}").empty());
    EXPECT_FALSE(m.fetchInFlight);
}

TEST(extras_queue, a_query_github_gave_up_on_goes_again_ten_repositories_a_call) {
    const auto batch = [](int from, int to) { return Effects{effect::FetchBatch{slugs(from, to), std::nullopt, kPath}}; };
    Model m = watching(slugs(0, 23));
    EXPECT_EQ(m.refresh().back(), batch(0, 23).back());

    // HTTP 502: nobody failed, the first ten of the list go again.
    EXPECT_EQ(m.apply(msg::BatchFetched{slugs(0, 23), "<html>Unicorn!</html>", false, 502}), batch(0, 10));
    EXPECT_EQ(m.batchLimit, 10);
    EXPECT_TRUE(std::none_of(m.repos.begin(), m.repos.end(), [](const Repo& r) { return r.failed; }));
    EXPECT_EQ(std::tie(m.fetchInFlight, m.flash), std::tuple(true, std::optional<std::string>(Flash::loading)));

    // One repository's failure stays its own; the next ten follow.
    EXPECT_EQ(m.batchFetched(slugs(0, 10), emptyAnswer(10, 3)), batch(10, 20));
    EXPECT_EQ(std::pair(m.repos[3].failed, m.repos[4].failed), std::pair(true, false));

    // A refresh now sends nothing while the call runs, and is not lost: the
    // ten already answered go again, and in the order of the list they come
    // before the three that still wait.
    EXPECT_EQ(m.refresh(), (Effects{effect::GhPreflight{kPath}}));
    EXPECT_EQ(m.batchFetched(slugs(10, 20), emptyAnswer(10)), batch(0, 10));
    EXPECT_EQ(m.batchFetched(slugs(0, 10), emptyAnswer(10)), batch(20, 23));
    EXPECT_FALSE(m.repos[3].failed);
    EXPECT_EQ(m.batchCount, std::nullopt) << "one refresh, however many calls";
    EXPECT_TRUE(m.batchFetched(slugs(20, 23), emptyAnswer(3)).empty());
    EXPECT_EQ(std::tie(m.batchCount, m.flash), std::tuple(std::optional<std::int64_t>(1), std::nullopt));
    EXPECT_FALSE(m.isRefreshing());

    // Later refreshes keep to ten a call; turning the switch off forgets it.
    EXPECT_EQ(m.refresh().back(), batch(0, 10).back());
    m.apply(msg::SetChecks{false});
    EXPECT_EQ(m.batchLimit, std::nullopt);

    // Only a large query is split, and only when GitHub gave up on it: else
    // the repositories asked for fail and keep their rows.
    const std::tuple<int, std::optional<std::int64_t>, bool> rows[] = {
        {23, 502, true}, {11, 504, true}, {23, 500, false}, {23, std::nullopt, false}, {10, 502, false}, {1, 504, false}};
    for (const auto& [repos, http, split] : rows) {
        SCOPED_TRACE(::testing::Message() << repos << " " << http.value_or(0));
        m = watching(slugs(0, repos));
        m.prs = {row(1, 7)};
        m.refresh();
        const auto effects = m.apply(msg::BatchFetched{slugs(0, repos), "<html></html>", false, http});
        EXPECT_EQ(effects, split ? batch(0, 10) : Effects{});
        EXPECT_EQ(m.batchLimit.has_value(), split);
        EXPECT_EQ(std::all_of(m.repos.begin(), m.repos.end(), [](const Repo& r) { return r.failed; }), !split);
        EXPECT_EQ(m.prs.size(), 1u);
        EXPECT_EQ(m.fetchInFlight, split);
    }
    // A call of ten that GitHub also gives up on fails alone; the rest go on.
    m = watching(slugs(0, 15));
    m.refresh();
    m.apply(msg::BatchFetched{slugs(0, 15), "", false, 502});
    EXPECT_EQ(m.apply(msg::BatchFetched{slugs(0, 10), "", false, 504}), batch(10, 15));
    EXPECT_EQ(std::pair(m.repos[9].failed, m.repos[10].failed), std::pair(true, false));
}

TEST(extras_queue, one_query_per_host_one_after_the_other_in_the_order_of_the_list) {
    Model m = watching({"acme/web", "ghe.corp/acme/api", "acme/lib", "ghe.corp/x/y", "other.host/a/b"});
    const auto one = [](std::string login, int number) {
        return answer(Json{{"viewer", {{"login", login}}}, {"rateLimit", rate()},
                           {"r0", repoNode(Json::array({prNode(number)}))}, {"r1", repoNode(Json::array())}});
    };
    const auto batch = [](std::vector<std::string> repos, std::optional<std::string> viewer,
                          std::optional<std::string> host) {
        // "Yours" is asked for with the login, on gh's own host only.
        const std::optional<bool> yours = !host && viewer ? std::optional<bool>(true) : std::nullopt;
        return Effect(effect::FetchBatch{std::move(repos), std::move(viewer), kPath, yours, std::move(host)});
    };

    // Twice: the second refresh asks with the login learned from gh's own host.
    for (int round = 0; round < 2; ++round) {
        const auto viewer = round == 0 ? std::nullopt : std::optional<std::string>("ana");
        const int web = 1 + round * 10, api = 2 + round * 10;  // new pull requests want their comments
        EXPECT_EQ(m.refresh(), (Effects{effect::GhPreflight{kPath}, batch({"acme/web", "acme/lib"}, viewer, std::nullopt)}));
        // Comments go to the host the pull requests live on, before the next host.
        EXPECT_EQ(m.batchFetched({"acme/web", "acme/lib"}, one("ana", web)),
                  (Effects{effect::FetchComments{{"PR_" + std::to_string(web)}, kPath, std::nullopt}}));
        EXPECT_EQ(m.commentsFetched("{}"), (Effects{batch({"ghe.corp/acme/api", "ghe.corp/x/y"}, std::nullopt, "ghe.corp")}));
        EXPECT_EQ(m.batchFetched({"ghe.corp/acme/api", "ghe.corp/x/y"}, one("ana-at-work", api)),
                  (Effects{effect::FetchComments{{"PR_" + std::to_string(api)}, kPath, "ghe.corp"}}));
        EXPECT_EQ(m.commentsFetched("{}"), (Effects{batch({"other.host/a/b"}, std::nullopt, "other.host")}));
        EXPECT_TRUE(m.batchFetched({"other.host/a/b"}, emptyAnswer(1)).empty());
        EXPECT_EQ(m.viewer, "ana") << "another host's login is not the viewer";
        EXPECT_FALSE(m.isRefreshing());
    }
    EXPECT_EQ(m.batchCount, 2);
    EXPECT_EQ(m.prs.size(), 2u);
    EXPECT_EQ(m.prs[1].repo, "ghe.corp/acme/api");
    EXPECT_EQ(m.apply(msg::OpenRepoPulls{2}), (Effects{effect::OpenURL{"https://ghe.corp/acme/api/pulls", ""}}));
}

TEST(extras_queue, unusable_answers_and_the_rate_limit) {
    const Json limited = Json::array({{{"type", "RATE_LIMITED"}, {"message", "API rate limit exceeded"}}});
    const std::string reset = "2026-11-24T09:41:07Z";
    // Whether the repositories failed, the wait, and the rows left of the one there was.
    const std::tuple<const char*, std::string, bool, std::optional<std::string>, std::size_t> rows[] = {
        {"not json", "error connecting to api.github.com", true, std::nullopt, 1},
        {"empty", "", true, std::nullopt, 1},
        {"rate limited", answer(Json{{"rateLimit", rate(0)}}, limited), false, reset, 1},
        {"under a tenth left",
         answer(Json{{"rateLimit", rate(499)}, {"r0", repoNode(Json::array())}, {"r1", repoNode(Json::array())}}), false,
         reset, 0},
    };
    for (const auto& [name, output, failed, wait, left] : rows) {
        SCOPED_TRACE(name);
        Model m = webAndApi();
        m.prs = {row(1, 7)};
        m.refresh();
        EXPECT_EQ(m.batchFetched(kBoth, output), wait ? Effects{effect::WaitUntil{*wait}} : Effects{});
        EXPECT_EQ(std::tie(m.fetchInFlight, m.repos[0].failed, m.repos[0].state, m.rateLimitedUntil),
                  std::tuple(false, failed, RepoState::ok, wait));
        EXPECT_EQ(m.prs.size(), left);
        if (!wait) continue;
        EXPECT_EQ(m.statusLine().substr(m.statusLine().find('|')),
                  "| GitHub's hourly limit is used up; refreshing waits until 09:41 UTC");
        // Neither a refresh nor a tick asks GitHub until the wait is over.
        m.autoRefresh = true;
        EXPECT_EQ(m.refresh(), (Effects{effect::GhPreflight{kPath}}));
        EXPECT_TRUE(m.apply(msg::AutoTick{}).empty());
        EXPECT_EQ(m.apply(msg::RateWaitOver{}), (Effects{effect::FetchBatch{kBoth, std::nullopt, kPath}}));
    }
}

TEST(extras_switch, turning_on_and_off_writes_the_file_and_refetches) {
    Model m = watching(kBoth, false);
    for (auto& r : m.repos) r.state = RepoState::ok;
    EXPECT_TRUE(m.apply(msg::SetChecks{false}).empty());  // off while off: no file is created
    EXPECT_EQ(m.apply(msg::SetChecks{true}),
              (Effects{written(ConfigFile::extras, "checks\t1\n"), effect::FetchBatch{kBoth, std::nullopt, kPath}}));
    m.yours = true;
    const Json mine = Json::array({prNode(5, {{"repository", {{"nameWithOwner", "other/lib"}}}})});
    m.batchFetched(kBoth, answer(Json{{"viewer", {{"login", "ana"}}}, {"r0", repoNode(Json::array({prNode(1)}))},
                                      {"r1", repoNode(Json::array())}, {"yours", {{"nodes", mine}}}}));
    m.commentsFetched("{}");
    ASSERT_TRUE(m.yourPrs);
    // Off: the file keeps the choice of "Yours", whose switch is then inert.
    EXPECT_EQ(m.apply(msg::SetChecks{false}),
              (Effects{written(ConfigFile::extras, "checks\t0\nyours\t1\n"), effect::FetchPrs{"acme/web", kPath}}));
    EXPECT_TRUE(m.apply(msg::SetYours{false}).empty());
    // Nothing of the extras is left in the model's JSON.
    const std::string json = toJson(m).dump();
    for (const char* key : {"\"checks\"", "viewer", "reviewPrs", "yourPrs", "nodeId", "headOid", "batchCount"})
        EXPECT_EQ(json.find(key), std::string::npos) << key;
}

TEST(extras_rows, every_heading_stays_and_capped_groups_say_how_many_more) {
    const auto model = [](std::vector<int> perRepo, int review) {
        Model m = watching(slugs(0, static_cast<int>(perRepo.size())));
        for (std::size_t i = 0; i < perRepo.size(); ++i)
            for (int n = 1; n <= perRepo[i]; ++n) m.prs.push_back(row(m.repos[i].id, n));
        if (review > 0) m.reviewPrs.emplace();
        for (int n = 1; n <= review; ++n) m.reviewPrs->push_back(row(reviewGroupId, n));
        return m;
    };
    const std::tuple<std::vector<int>, int, const char*> rows[] = {
        {{0, 2}, 0, "repo-1:0 repo-2:2"},                       // an empty group keeps its heading
        {{45}, 0, "repo-1:40+5"},                               // at most 40 in a group
        {{40, 40}, 0, "repo-1:40 repo-2:10+30"},                // 50 in all
        {{3}, 2, "repo-0:2 repo-1:3"},                          // the review group on top
        {{40, 5}, 20, "repo-0:20 repo-1:30+10 repo-2:0+5"},     // whose rows count too
        {{50, 0, 1}, 0, "repo-1:40+10 repo-2:0 repo-3:1"},      // headings beyond the cap
    };
    for (const auto& [perRepo, review, want] : rows) EXPECT_EQ(shape(model(perRepo, review).listRows()), want);

    // With 60 groups of one, every heading is there.
    const auto many = model(std::vector<int>(60, 1), 0).listRows();
    EXPECT_EQ(std::count_if(many.begin(), many.end(), [](const ListRow& r) { return r.isHeader(); }), 60);
    EXPECT_EQ(many.back().id(), "more-60");
}

TEST(extras_rows, deployment_state_and_its_address_on_the_row) {
    Model m = webAndApi();
    m.repos[0].pattern = "https://web-{number}.example.dev";
    m.refresh();
    Json prs = Json::array({prNode(1), prNode(2, {{"headRefOid", "b1"}}), prNode(3, {{"headRefOid", "c1"}})});
    Json deployments = Json::array({
        {{"environment", "preview"}, {"state", "ACTIVE"}, {"commitOid", "a1"}, {"ref", {{"name", "feat/1"}}},
         {"latestStatus", {{"state", "SUCCESS"}, {"environmentUrl", "https://deploy-1.example.dev"}}}},
        {{"environment", "preview"}, {"state", "ACTIVE"}, {"commitOid", "old"}, {"ref", {{"name", "feat/2"}}},
         {"latestStatus", {{"state", "FAILURE"}}}},
    });
    m.batchFetched(kBoth, answer(Json{{"r0", repoNode(prs, deployments)}, {"r1", repoNode(Json::array())}}));
    using Row = std::tuple<std::optional<DeployState>, std::optional<bool>, std::string, std::optional<PreviewSource>>;
    const Row rows[] = {
        {DeployState::ready, false, "https://deploy-1.example.dev", PreviewSource::deployment},
        {DeployState::failed, true, "https://web-2.example.dev", PreviewSource::pattern},  // by branch, no address
        {std::nullopt, std::nullopt, "https://web-3.example.dev", PreviewSource::pattern},
    };
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        const PR& pr = m.prs[i];
        EXPECT_EQ(Row(pr.deploy, pr.deployOlder, pr.preview, pr.previewSource), rows[i]) << "row " << i;
    }
}

TEST(extras_rows, review_requests_come_from_anywhere_and_open_like_any_row) {
    Model m = webAndApi();
    m.viewer = "ana";
    m.refresh();
    const Json mine = prNode(1, {{"repository", {{"nameWithOwner", "acme/web"}}}});
    const Json elsewhere =
        prNode(8, {{"repository", {{"nameWithOwner", "other/lib"}}}, {"url", "https://github.com/other/lib/pull/8"}});
    m.batchFetched(kBoth,
                   answer(Json{{"r0", repoNode(Json::array({prNode(1)}))}, {"r1", repoNode(Json::array())},
                               {"review", {{"nodes", Json::array({mine, elsewhere, Json::object()})}}}}));
    ASSERT_EQ(m.reviewPrs.value_or(std::vector<PR>{}).size(), 2u);
    const auto rows = m.listRows();
    EXPECT_EQ(std::tie(std::get<Repo>(rows[0].item).name, std::get<Repo>(rows[0].item).count),
              std::tuple("Needs your review", 2));
    // Ids differ from the same pull request's row in its own group, and are unique.
    std::set<std::string> ids;
    for (const auto& r : rows) EXPECT_TRUE(ids.insert(r.id()).second) << r.id();
    const PR& other = (*m.reviewPrs)[1];
    EXPECT_EQ(other.repo, "other/lib");
    EXPECT_EQ(m.apply(msg::OpenPr{other.id}), (Effects{effect::OpenURL{"https://github.com/other/lib/pull/8", ""}}));
    EXPECT_EQ(m.apply(msg::OpenRepoPulls{1}), (Effects{effect::OpenURL{"https://github.com/acme/web/pulls", ""}}));
    EXPECT_EQ(m.apply(msg::OpenRepoPulls{reviewGroupId}),
              (Effects{effect::OpenURL{"https://github.com/pulls/review-requested", ""}}));
}

}  // namespace
}  // namespace velmar
