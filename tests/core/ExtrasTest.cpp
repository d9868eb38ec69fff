// Checks, reviews and deployments: the batched query's command line and
// reader, the deployment match, the choice of which pull requests need their
// comments again, the list rows with the extras, and the switch off leaving
// every recorded transcript as it was.
#include <filesystem>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "Graphql.h"
#include "Headless.h"
#include "Json.h"
#include "Model.h"

namespace velmar {
namespace {

using Graphql::Deployment;

const std::string kPath = "/usr/bin";

Json prNode(int number, std::string_view oid = "a1", std::string_view updated = "2026-01-01T00:00:00Z") {
    return Json{{"id", "PR_" + std::to_string(number)},
                {"number", number},
                {"title", "Title " + std::to_string(number)},
                {"url", "https://github.com/acme/web/pull/" + std::to_string(number)},
                {"headRefName", "feat/" + std::to_string(number)},
                {"headRefOid", oid},
                {"isDraft", false},
                {"updatedAt", updated},
                {"author", {{"login", "ana"}}},
                {"reviewDecision", "APPROVED"},
                {"mergeable", "MERGEABLE"},
                {"statusCheckRollup", {{"state", "SUCCESS"}}}};
}

Json repoNode(Json prs, Json deployments = Json::array()) {
    return Json{{"pullRequests", {{"nodes", std::move(prs)}}},
                {"deployments", {{"nodes", std::move(deployments)}}}};
}

Json rate(int remaining = 4990) {
    return Json{{"limit", 5000}, {"cost", 1}, {"remaining", remaining}, {"resetAt", "2026-11-24T09:41:07Z"}};
}

std::string answer(Json data, Json errors = nullptr) {
    Json root{{"data", std::move(data)}};
    if (!errors.is_null()) root["errors"] = std::move(errors);
    return root.dump();
}

/// Two watched repositories, switched on, nothing fetched yet.
Model switchedOn() {
    Model m;
    m.home = "/home/u";
    m.path = kPath;
    m.pathResolved = m.reposLoaded = m.settingsLoaded = true;
    m.checks = true;
    m.repos = {Repo{1, "acme/web", "", RepoState::queued, 0, false, ""},
               Repo{2, "acme/api", "", RepoState::queued, 0, false, ""}};
    m.nextRepoId = 3;
    return m;
}

/// Runs the messages in order; gives the model and the last step's effects.
std::pair<Model, Effects> steps(Model m, std::initializer_list<Msg> msgs) {
    Effects last;
    for (const auto& msg : msgs) last = m.apply(msg);
    return {std::move(m), std::move(last)};
}

TEST(extras_file, reads_and_writes_the_switch) {
    const std::pair<const char*, bool> rows[] = {
        {"", false}, {"checks\t1\n", true}, {"checks\t0\n", false}, {"checks\ttrue\n", false},
        {"checks\t1\r\nchecks\t0\n", false}, {"checks\t0\nchecks\t1", true}, {"  checks \t 1 \n", true},
        {"other\t1\n", false}, {"checks\n", false},
    };
    for (const auto& [text, on] : rows) EXPECT_EQ(Graphql::parseExtras(text).checks, on) << text;
    for (bool on : {false, true})
        EXPECT_EQ(Graphql::parseExtras(Graphql::serializeExtras({on})).checks, on);
    EXPECT_EQ(Graphql::serializeExtras({true}), "checks\t1\n");
}

TEST(batch_command, slugs_and_login_travel_as_variables_only) {
    const std::vector<std::string> repos{"acme/web", "o'; rm -rf ~/x\"$(id)", "solo"};
    const struct {
        std::optional<std::string> viewer;
        bool withReview;
    } rows[] = {{std::nullopt, false}, {"", false}, {"ana", true}};
    for (const auto& row : rows) {
        const auto args = Graphql::batchArguments(repos, row.viewer);
        ASSERT_GE(args.size(), 4u);
        EXPECT_EQ(std::vector<std::string>(args.begin(), args.begin() + 3),
                  (std::vector<std::string>{"api", "graphql", "-f"}));
        const std::string& query = args[3];
        EXPECT_EQ(query, "query=" + Graphql::batchQuery(3, row.withReview));
        for (const char* secret : {"acme", "rm -rf", "solo", "ana"})
            EXPECT_EQ(query.find(secret), std::string::npos) << secret;
        std::vector<std::string> values(args.begin() + 4, args.end());
        std::vector<std::string> expected{"-f", "o0=acme", "-f", "n0=web", "-f", "o1=o'; rm -rf ~",
                                          "-f", "n1=x\"$(id)", "-f", "o2=solo", "-f", "n2="};
        if (row.withReview) expected.insert(expected.end(), {"-f", "q=" + Graphql::reviewSearch("ana")});
        EXPECT_EQ(values, expected);
        EXPECT_EQ(query.find("review:") != std::string::npos, row.withReview);
        EXPECT_NE(query.find("r2: repository(owner: $o2, name: $n2)"), std::string::npos);
        EXPECT_EQ(query.find("r3:"), std::string::npos);
    }
    EXPECT_EQ(Graphql::reviewSearch("ana"), "is:pr is:open archived:false review-requested:ana");
    // GraphQL refuses an unused fragment: each is there only when something spreads it.
    const std::tuple<std::size_t, bool, bool, bool> fragments[] = {
        {0, false, false, false}, {0, true, true, false}, {1, false, true, true}, {2, true, true, true}};
    for (const auto& [count, review, hasP, hasR] : fragments) {
        const std::string q = Graphql::batchQuery(count, review);
        EXPECT_EQ(q.find("fragment P ") != std::string::npos, hasP) << q;
        EXPECT_EQ(q.find("fragment R ") != std::string::npos, hasR) << q;
    }
}

TEST(batch_reader, reads_each_repository_on_its_own) {
    std::string fifty;
    {
        Json data{{"viewer", {{"login", "ana"}}}, {"rateLimit", rate()}};
        for (int r = 0; r < 20; ++r) {
            Json prs = Json::array();
            for (int n = 1; n <= 50; ++n) prs.push_back(prNode(n));
            data["r" + std::to_string(r)] = repoNode(prs);
        }
        fifty = answer(data);
    }
    const Json good{{"viewer", {{"login", "ana"}}}, {"rateLimit", rate()},
                    {"r0", repoNode(Json::array({prNode(1)}))}, {"r1", repoNode(Json::array())}};
    Json nullAlias = good;
    nullAlias["r1"] = nullptr;
    Json oddEnums = good;
    oddEnums["r0"]["pullRequests"]["nodes"][0]["reviewDecision"] = "MAYBE";
    oddEnums["r0"]["pullRequests"]["nodes"][0]["statusCheckRollup"]["state"] = "SLEEPING";
    oddEnums["r0"]["pullRequests"]["nodes"][0]["mergeable"] = "CONFLICTING";
    const Json notFound = Json::array({{{"type", "NOT_FOUND"}, {"path", {"r1"}}, {"message", "Could not resolve"}}});

    const struct {
        const char* name;
        std::string output;
        std::size_t count;
        bool readable;
        std::vector<int> prsPerRepo;  // -1: failed
        bool rateLimited;
    } rows[] = {
        {"good", answer(good), 2, true, {1, 0}, false},
        {"null alias with an error", answer(nullAlias, notFound), 2, true, {1, -1}, false},
        {"missing alias", answer(Json{{"r0", repoNode(Json::array())}}), 2, true, {0, -1}, false},
        {"rate limited", answer(nullptr, Json::array({{{"type", "RATE_LIMITED"}, {"message", "limit"}}})), 2,
         true, {-1, -1}, true},
        {"not json", "gh: Not Found (HTTP 404)", 2, false, {-1, -1}, false},
        {"truncated", answer(good).substr(0, 60), 2, false, {-1, -1}, false},
        {"empty", "", 2, false, {-1, -1}, false},
        {"an array", "[]", 2, false, {-1, -1}, false},
        {"unknown enums", answer(oddEnums), 2, true, {1, 0}, false},
        {"fifty by twenty", fifty, 20, true, std::vector<int>(20, 50), false},
    };
    for (const auto& row : rows) {
        const auto got = Graphql::parseBatch(row.output, row.count);
        EXPECT_EQ(got.readable, row.readable) << row.name;
        EXPECT_EQ(got.rateLimited, row.rateLimited) << row.name;
        ASSERT_EQ(got.repos.size(), row.count) << row.name;
        for (std::size_t i = 0; i < row.count; ++i) {
            const int n = got.repos[i] ? static_cast<int>(got.repos[i]->prs.size()) : -1;
            EXPECT_EQ(n, row.prsPerRepo[i]) << row.name << " r" << i;
        }
    }

    const auto good1 = Graphql::parseBatch(answer(good), 2);
    EXPECT_EQ(good1.viewer, "ana");
    EXPECT_EQ(good1.rateLimit, (Graphql::RateLimit{5000, 1, 4990, "2026-11-24T09:41:07Z"}));
    const auto& pr = good1.repos[0]->prs[0];
    EXPECT_EQ(std::tie(pr.nodeId, pr.number, pr.branch, pr.headOid, pr.author),
              std::tuple("PR_1", 1, "feat/1", "a1", "ana"));
    EXPECT_EQ(std::tie(pr.checks, pr.review, pr.conflicts),
              std::tuple(ChecksState::passing, ReviewState::approved, false));
    const auto odd = Graphql::parseBatch(answer(oddEnums), 2).repos[0]->prs[0];
    EXPECT_EQ(std::tie(odd.checks, odd.review, odd.conflicts), std::tuple(std::nullopt, std::nullopt, true));
}

TEST(batch_reader, state_words_map_to_markers) {
    const std::pair<const char*, std::optional<ChecksState>> checks[] = {
        {"SUCCESS", ChecksState::passing}, {"FAILURE", ChecksState::failing}, {"ERROR", ChecksState::failing},
        {"PENDING", ChecksState::running}, {"EXPECTED", ChecksState::running}, {"success", std::nullopt}};
    for (const auto& [word, want] : checks) {
        Json node = prNode(1);
        node["statusCheckRollup"]["state"] = word;
        const auto got = Graphql::parseBatch(answer(Json{{"r0", repoNode(Json::array({node}))}}), 1);
        EXPECT_EQ(got.repos[0]->prs[0].checks, want) << word;
    }
    // The deployment's latest status decides; its own state only without one.
    const struct {
        Json status;
        const char* state;
        std::optional<DeployState> want;
    } deploys[] = {
        {Json{{"state", "SUCCESS"}, {"environmentUrl", "https://p.example"}}, "ACTIVE", DeployState::ready},
        {Json{{"state", "IN_PROGRESS"}}, "ACTIVE", DeployState::building},
        {Json{{"state", "QUEUED"}}, "QUEUED", DeployState::building},
        {Json{{"state", "FAILURE"}}, "ACTIVE", DeployState::failed},
        {Json{{"state", "INACTIVE"}}, "INACTIVE", DeployState::inactive},
        {nullptr, "ERROR", DeployState::failed},
        {nullptr, "DESTROYED", DeployState::inactive},
        {nullptr, "SOMETHING_NEW", std::nullopt},
    };
    for (const auto& d : deploys) {
        Json node{{"environment", "preview"}, {"state", d.state}, {"commitOid", "a1"},
                  {"ref", {{"name", "feat/1"}}}, {"latestStatus", d.status}};
        const auto got = Graphql::parseBatch(answer(Json{{"r0", repoNode(Json::array(), Json::array({node}))}}), 1);
        ASSERT_EQ(got.repos[0]->deployments.size(), 1u);
        EXPECT_EQ(got.repos[0]->deployments[0].state, d.want) << d.state;
    }
}

TEST(deployment_match, head_commit_first_then_branch_newest_wins) {
    const Deployment oldHead{"preview", "a1", "feat/1", DeployState::inactive, "https://old"};
    const Deployment newHead{"preview", "a1", "feat/1", DeployState::ready, "https://new"};
    const Deployment branchOnly{"preview", "b2", "feat/1", DeployState::building, "https://branch"};
    const Deployment other{"preview", "c3", "main", DeployState::ready, "https://main"};
    const struct {
        const char* name;
        std::vector<Deployment> list;
        const char* head;
        const char* branch;
        std::optional<Graphql::DeploymentMatch> want;
    } rows[] = {
        {"none", {}, "a1", "feat/1", std::nullopt},
        {"head commit", {other, branchOnly, newHead}, "a1", "feat/1", Graphql::DeploymentMatch{newHead, false}},
        {"newest of the head", {oldHead, newHead, branchOnly}, "a1", "feat/1", Graphql::DeploymentMatch{newHead, false}},
        {"head beats a newer branch one", {newHead, branchOnly}, "a1", "feat/1", Graphql::DeploymentMatch{newHead, false}},
        {"branch is older commit", {other, branchOnly}, "zz", "feat/1", Graphql::DeploymentMatch{branchOnly, true}},
        {"nothing of it", {other}, "zz", "feat/9", std::nullopt},
        {"empty head never matches", {Deployment{"p", "", "x", DeployState::ready, ""}}, "", "y", std::nullopt},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Graphql::matchDeployment(row.list, row.head, row.branch), row.want) << row.name;
}

TEST(comments_reader, resolves_previews_as_the_plain_fetch_does) {
    const auto comment = [](Json author, std::string body) {
        return Json{{"author", std::move(author)}, {"body", std::move(body)}};
    };
    const auto login = [](const char* l) { return Json{{"login", l}}; };
    const struct {
        const char* name;
        Json comments;
        const char* want;
    } rows[] = {
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
    Json data = Json::object();
    int i = 0;
    for (const auto& row : rows)
        data["c" + std::to_string(i++)] = Json{{"id", row.name}, {"comments", {{"nodes", row.comments}}}};
    data["c99"] = nullptr;  // a node that could not be read says nothing
    const auto got = Graphql::parseComments(answer(data));
    EXPECT_EQ(got.size(), std::size(rows));
    for (const auto& row : rows) {
        ASSERT_TRUE(got.count(row.name)) << row.name;
        EXPECT_EQ(got.at(row.name), row.want) << row.name;
    }
    EXPECT_TRUE(Graphql::parseComments("not json").empty());
}

TEST(extras_queue, one_query_for_every_repository_and_a_failure_stays_alone) {
    Model m = switchedOn();
    auto effects = m.refresh();
    ASSERT_EQ(effects.size(), 2u);
    EXPECT_EQ(effects[1], Effect(effect::FetchBatch{{"acme/web", "acme/api"}, std::nullopt, kPath}));
    EXPECT_TRUE(m.fetchInFlight);
    // A refresh during the query sends nothing more.
    EXPECT_EQ(m.refresh().size(), 1u);

    Json data{{"viewer", {{"login", "ana"}}}, {"rateLimit", rate()},
              {"r0", repoNode(Json::array({prNode(1), prNode(2)}))}, {"r1", nullptr}};
    effects = m.batchFetched({"acme/web", "acme/api"}, answer(data, Json::array({{{"path", {"r1"}}}})));
    EXPECT_EQ(effects, (Effects{effect::FetchComments{{"PR_1", "PR_2"}, kPath}}));
    EXPECT_EQ(m.viewer, "ana");
    EXPECT_EQ(std::tie(m.repos[0].count, m.repos[0].failed, m.repos[1].count, m.repos[1].failed),
              std::tuple(2, false, 0, true));
    EXPECT_EQ(m.prs[0].checks, ChecksState::passing);
    EXPECT_TRUE(m.fetchInFlight);  // the comments are part of the refresh

    Json comments{{"c0", {{"id", "PR_1"}, {"comments", {{"nodes", Json::array({{{"author", {{"login", "vercel"}}},
                                                                                 {"body", "[Preview](https://web-1.vercel.app/)"}}})}}}}}};
    effects = m.commentsFetched(answer(comments));
    EXPECT_FALSE(m.fetchInFlight);
    EXPECT_EQ(m.prs[0].preview, "https://web-1.vercel.app/");
    EXPECT_EQ(m.prs[0].previewSource, PreviewSource::comment);
    EXPECT_FALSE(m.isRefreshing());
    EXPECT_FALSE(m.flash);

    // The next refresh asks with the login, so the review search is included,
    // and the viewer's own pull requests, on unless switched off.
    effects = m.refresh();
    EXPECT_EQ(effects[1], Effect(effect::FetchBatch{{"acme/web", "acme/api"}, "ana", kPath, true}));
}

TEST(extras_queue, comments_only_for_new_or_changed_pull_requests_and_all_every_tenth) {
    Model m = switchedOn();
    const auto round = [&](Json prs) {
        m.refresh();
        Json data{{"rateLimit", rate()}, {"r0", repoNode(prs)}, {"r1", repoNode(Json::array())}};
        auto effects = m.batchFetched({"acme/web", "acme/api"}, answer(data));
        std::vector<std::string> ids;
        if (!effects.empty())
            if (auto* c = std::get_if<effect::FetchComments>(&effects.back())) ids = c->ids;
        if (m.fetchInFlight) m.commentsFetched("{}");
        return ids;
    };
    using Ids = std::vector<std::string>;
    const Json base = Json::array({prNode(1), prNode(2), prNode(3)});
    EXPECT_EQ(round(base), (Ids{"PR_1", "PR_2", "PR_3"}));  // first time: all new
    EXPECT_EQ(round(base), Ids{});                            // nothing changed
    Json changed = base;
    changed[1] = prNode(2, "a2");                                   // new head commit
    changed[2] = prNode(3, "a1", "2026-02-02T00:00:00Z");           // updated
    changed.push_back(prNode(4));                                   // new
    EXPECT_EQ(round(changed), (Ids{"PR_2", "PR_3", "PR_4"}));
    for (int i = 4; i <= 10; ++i) EXPECT_EQ(round(changed), Ids{}) << "refresh " << i;
    EXPECT_EQ(round(changed), (Ids{"PR_1", "PR_2", "PR_3", "PR_4"}));  // the eleventh: all again
}

TEST(extras_queue, more_than_a_hundred_ids_go_in_several_queries) {
    Model m = switchedOn();
    m.refresh();
    Json prs = Json::array();
    for (int n = 1; n <= 50; ++n) prs.push_back(prNode(n));
    Json data{{"r0", repoNode(prs)}, {"r1", repoNode(prs)}};
    data["r1"]["pullRequests"]["nodes"] = Json::array();
    for (int n = 51; n <= 130; ++n) data["r1"]["pullRequests"]["nodes"].push_back(prNode(n));
    auto effects = m.batchFetched({"acme/web", "acme/api"}, answer(data));
    ASSERT_EQ(effects.size(), 1u);
    EXPECT_EQ(std::get<effect::FetchComments>(effects[0]).ids.size(), 100u);
    effects = m.commentsFetched("{}");
    ASSERT_EQ(effects.size(), 1u);
    EXPECT_EQ(std::get<effect::FetchComments>(effects[0]).ids.size(), 30u);
    EXPECT_TRUE(m.commentsFetched("{}").empty());
    EXPECT_FALSE(m.fetchInFlight);
}

/// `count` watched repositories "o/r0", "o/r1", ..., switched on, nothing fetched yet.
Model watching(int count) {
    Model m = switchedOn();
    m.repos.clear();
    for (int i = 0; i < count; ++i)
        m.repos.push_back(Repo{i + 1, "o/r" + std::to_string(i), "", RepoState::queued, 0, false, ""});
    m.nextRepoId = count + 1;
    return m;
}

std::vector<std::string> slugs(int from, int to) {
    std::vector<std::string> out;
    for (int i = from; i < to; ++i) out.push_back("o/r" + std::to_string(i));
    return out;
}

/// An answer with no pull requests for each of `count` aliases, `failing` null.
std::string emptyAnswer(std::size_t count, std::optional<std::size_t> failing = std::nullopt) {
    Json data{{"rateLimit", rate()}};
    for (std::size_t i = 0; i < count; ++i)
        data["r" + std::to_string(i)] = i == failing ? Json(nullptr) : repoNode(Json::array());
    return answer(data);
}

TEST(extras_queue, a_query_github_gave_up_on_goes_again_ten_repositories_a_call) {
    Model m = watching(23);
    auto effects = m.refresh();
    ASSERT_EQ(effects.size(), 2u);
    EXPECT_EQ(std::get<effect::FetchBatch>(effects[1]).repos, slugs(0, 23));

    // HTTP 502: nobody failed, the first ten of the list go again.
    effects = m.apply(msg::BatchFetched{slugs(0, 23), "<html>Unicorn!</html>", false, 502});
    EXPECT_EQ(effects, (Effects{effect::FetchBatch{slugs(0, 10), std::nullopt, kPath}}));
    EXPECT_EQ(m.batchLimit, 10);
    EXPECT_TRUE(std::none_of(m.repos.begin(), m.repos.end(), [](const Repo& r) { return r.failed; }));
    EXPECT_TRUE(m.fetchInFlight);
    EXPECT_EQ(m.flash, std::string(Flash::loading));

    // One repository's failure stays its own; the next ten follow.
    effects = m.batchFetched(slugs(0, 10), emptyAnswer(10, 3));
    EXPECT_EQ(effects, (Effects{effect::FetchBatch{slugs(10, 20), std::nullopt, kPath}}));
    EXPECT_TRUE(m.repos[3].failed);
    EXPECT_FALSE(m.repos[4].failed);

    // A refresh now sends nothing while the call runs, and is not lost: the
    // ten already answered go again, and in the order of the list they come
    // before the three that still wait.
    EXPECT_EQ(m.refresh(), (Effects{effect::GhPreflight{kPath}}));
    effects = m.batchFetched(slugs(10, 20), emptyAnswer(10));
    EXPECT_EQ(effects, (Effects{effect::FetchBatch{slugs(0, 10), std::nullopt, kPath}}));
    effects = m.batchFetched(slugs(0, 10), emptyAnswer(10));
    EXPECT_EQ(effects, (Effects{effect::FetchBatch{slugs(20, 23), std::nullopt, kPath}}));
    EXPECT_FALSE(m.repos[3].failed);
    EXPECT_EQ(m.batchCount, std::nullopt) << "one refresh, however many calls";
    EXPECT_TRUE(m.batchFetched(slugs(20, 23), emptyAnswer(3)).empty());
    EXPECT_EQ(m.batchCount, 1);
    EXPECT_FALSE(m.isRefreshing());
    EXPECT_FALSE(m.flash);

    // Later refreshes keep to ten a call; turning the switch off forgets it.
    effects = m.refresh();
    EXPECT_EQ(std::get<effect::FetchBatch>(effects[1]).repos, slugs(0, 10));
    m.apply(msg::SetChecks{false});
    EXPECT_EQ(m.batchLimit, std::nullopt);
}

TEST(extras_queue, only_a_large_query_that_github_gave_up_on_is_split) {
    const struct {
        const char* name;
        int repos;
        std::optional<std::int64_t> http;
        bool split;
    } rows[] = {
        {"502 of 23", 23, 502, true},   {"504 of 11", 11, 504, true},
        {"500 of 23", 23, 500, false},  {"no status, 23", 23, std::nullopt, false},
        {"502 of 10", 10, 502, false},  {"504 of 1", 1, 504, false},
    };
    for (const auto& row : rows) {
        Model m = watching(row.repos);
        m.prs = {PR{.id = prId(1, 7), .repoId = 1, .repo = "o/r0", .number = 7}};
        m.refresh();
        const auto effects = m.apply(msg::BatchFetched{slugs(0, row.repos), "<html></html>", false, row.http});
        EXPECT_EQ(m.batchLimit.has_value(), row.split) << row.name;
        if (row.split) {
            ASSERT_EQ(effects.size(), 1u) << row.name;
            EXPECT_EQ(std::get<effect::FetchBatch>(effects[0]).repos, slugs(0, 10)) << row.name;
        } else {
            // Not about the size: the repositories asked for fail and keep their rows.
            EXPECT_TRUE(effects.empty()) << row.name;
            EXPECT_TRUE(std::all_of(m.repos.begin(), m.repos.end(),
                                    [](const Repo& r) { return r.failed && r.state == RepoState::ok; }))
                << row.name;
            EXPECT_EQ(m.prs.size(), 1u) << row.name;
            EXPECT_FALSE(m.fetchInFlight) << row.name;
        }
    }
    // A call of ten that GitHub also gives up on fails alone; the rest go on.
    Model m = watching(15);
    m.refresh();
    m.apply(msg::BatchFetched{slugs(0, 15), "", false, 502});
    const auto effects = m.apply(msg::BatchFetched{slugs(0, 10), "", false, 504});
    EXPECT_EQ(effects, (Effects{effect::FetchBatch{slugs(10, 15), std::nullopt, kPath}}));
    EXPECT_TRUE(m.repos[9].failed);
    EXPECT_FALSE(m.repos[10].failed);
}

TEST(batch_command, a_host_in_the_slug_points_gh_at_it) {
    const std::pair<const char*, std::optional<std::string>> hosts[] = {
        {"acme/web", std::nullopt},         {"ghe.corp/acme/web", "ghe.corp"},
        {"localhost:8443/a/b", "localhost:8443"}, {"a/b/c/d", std::nullopt},
        {"/acme/web", std::nullopt},        {"h//web", std::nullopt},
        {"h/acme/", std::nullopt},          {"solo", std::nullopt},
        {"acme/web/", std::nullopt},
    };
    for (const auto& [slug, host] : hosts) EXPECT_EQ(Graphql::hostOf(slug), host) << slug;

    // The host is not asked for as part of the name: the call goes to it.
    const auto args = Graphql::batchArguments({"ghe.corp/acme/web", "ghe.corp/x/y"}, std::nullopt);
    EXPECT_EQ(args, (std::vector<std::string>{"api", "graphql", "-f", "query=" + Graphql::batchQuery(2, false), "-f",
                                              "o0=acme", "-f", "n0=web", "-f", "o1=x", "-f", "n1=y"}));
}

TEST(extras_queue, one_query_per_host_one_after_the_other_in_the_order_of_the_list) {
    Model m = switchedOn();
    m.repos.clear();
    m.nextRepoId = 1;
    for (const char* slug : {"acme/web", "ghe.corp/acme/api", "acme/lib", "ghe.corp/x/y", "other.host/a/b"})
        m.repos.push_back(Repo{m.nextRepoId++, slug, "", RepoState::queued, 0, false, ""});
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
        auto effects = m.refresh();
        ASSERT_EQ(effects.size(), 2u);
        EXPECT_EQ(effects[1], batch({"acme/web", "acme/lib"}, viewer, std::nullopt));
        effects = m.batchFetched({"acme/web", "acme/lib"}, one("ana", web));
        // Comments go to the host the pull requests live on, before the next host.
        EXPECT_EQ(effects, (Effects{effect::FetchComments{{"PR_" + std::to_string(web)}, kPath, std::nullopt}}));
        EXPECT_EQ(m.commentsFetched("{}"), (Effects{batch({"ghe.corp/acme/api", "ghe.corp/x/y"}, std::nullopt,
                                                         "ghe.corp")}));
        effects = m.batchFetched({"ghe.corp/acme/api", "ghe.corp/x/y"}, one("ana-at-work", api));
        EXPECT_EQ(effects, (Effects{effect::FetchComments{{"PR_" + std::to_string(api)}, kPath, "ghe.corp"}}));
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
    const struct {
        const char* name;
        std::string output;
        bool failed;
        std::optional<std::string> waitUntil;
    } rows[] = {
        {"not json", "error connecting to api.github.com", true, std::nullopt},
        {"empty", "", true, std::nullopt},
        {"rate limited", answer(Json{{"rateLimit", rate(0)}}, limited), false, "2026-11-24T09:41:07Z"},
        {"under a tenth left",
         answer(Json{{"rateLimit", rate(499)}, {"r0", repoNode(Json::array())}, {"r1", repoNode(Json::array())}}),
         false, "2026-11-24T09:41:07Z"},
    };
    for (const auto& row : rows) {
        Model m = switchedOn();
        m.prs = {PR{.id = 100007, .repoId = 1, .repo = "acme/web", .number = 7}};
        m.refresh();
        const auto effects = m.batchFetched({"acme/web", "acme/api"}, row.output);
        EXPECT_FALSE(m.fetchInFlight) << row.name;
        EXPECT_EQ(m.repos[0].failed, row.failed) << row.name;
        EXPECT_EQ(m.repos[0].state, RepoState::ok) << row.name;
        EXPECT_EQ(m.rateLimitedUntil, row.waitUntil) << row.name;
        if (row.waitUntil) {
            EXPECT_NE(std::find(effects.begin(), effects.end(), Effect(effect::WaitUntil{*row.waitUntil})),
                      effects.end()) << row.name;
            EXPECT_EQ(m.statusLine().substr(m.statusLine().find('|')),
                      "| GitHub's hourly limit is used up; refreshing waits until 09:41 UTC") << row.name;
            // Neither a refresh nor a tick asks GitHub until the wait is over.
            m.autoRefresh = true;
            EXPECT_EQ(m.refresh(), (Effects{effect::GhPreflight{kPath}})) << row.name;
            EXPECT_TRUE(m.apply(msg::AutoTick{}).empty()) << row.name;
            auto after = m.apply(msg::RateWaitOver{});
            ASSERT_EQ(after.size(), 1u) << row.name;
            EXPECT_TRUE(std::holds_alternative<effect::FetchBatch>(after[0])) << row.name;
        } else if (row.failed) {
            EXPECT_EQ(m.prs.size(), 1u) << row.name << ": old rows stay";
        }
    }
}

TEST(extras_switch, turning_on_and_off_writes_the_file_and_refetches) {
    Model m = switchedOn();
    m.checks.reset();
    for (auto& r : m.repos) r.state = RepoState::ok;
    const auto file = [](const char* text) {
        return Effect(effect::WriteFile{ConfigFile::extras, "/home/u/.config/velmar/extras.tsv", text});
    };
    EXPECT_TRUE(m.apply(msg::SetChecks{false}).empty());  // off while off: no file is created
    EXPECT_EQ(m.apply(msg::SetChecks{true}),
              (Effects{file("checks\t1\n"), effect::FetchBatch{{"acme/web", "acme/api"}, std::nullopt, kPath}}));
    m.batchFetched({"acme/web", "acme/api"},
                   answer(Json{{"viewer", {{"login", "ana"}}}, {"r0", repoNode(Json::array({prNode(1)}))},
                               {"r1", repoNode(Json::array())}}));
    m.commentsFetched("{}");
    EXPECT_EQ(m.apply(msg::SetChecks{false}),
              (Effects{file("checks\t0\n"), effect::FetchPrs{"acme/web", kPath}}));
    // Nothing of the extras is left in the model's JSON.
    const std::string json = toJson(m).dump();
    for (const char* key : {"\"checks\"", "viewer", "reviewPrs", "nodeId", "headOid", "batchCount"})
        EXPECT_EQ(json.find(key), std::string::npos) << key;
}

PR row(std::int64_t repoId, std::int64_t number) {
    return PR{.id = prId(repoId, number), .repoId = repoId, .number = number};
}

TEST(extras_rows, every_heading_stays_and_capped_groups_say_how_many_more) {
    const auto describe = [](const std::vector<ListRow>& rows) {
        std::string out;
        std::string last;
        int run = 0;
        const auto flush = [&] {
            if (run) out += "pr*" + std::to_string(run) + " ";
            run = 0;
        };
        for (const auto& r : rows) {
            if (std::holds_alternative<PR>(r.item)) {
                ++run;
                continue;
            }
            flush();
            out += r.id() + " ";
            if (auto* m = std::get_if<MoreRow>(&r.item)) out += "(" + std::to_string(m->more) + ") ";
        }
        flush();
        return out;
    };
    const auto model = [](std::vector<int> perRepo, int review) {
        Model m;
        m.checks = true;
        for (std::size_t i = 0; i < perRepo.size(); ++i) {
            const auto id = static_cast<std::int64_t>(i + 1);
            m.repos.push_back(Repo{id, "o/r" + std::to_string(id), "", RepoState::ok, perRepo[i], false, ""});
            for (int n = 1; n <= perRepo[i]; ++n) m.prs.push_back(row(id, n));
        }
        if (review > 0) {
            m.reviewPrs.emplace();
            for (int n = 1; n <= review; ++n) m.reviewPrs->push_back(row(reviewGroupId, n));
        }
        return m;
    };
    const struct {
        const char* name;
        std::vector<int> perRepo;
        int review;
        const char* want;
    } rows[] = {
        {"empty group keeps its heading", {0, 2}, 0, "repo-1 repo-2 pr*2 "},
        {"45 in one group", {45}, 0, "repo-1 pr*40 more-1 (5) "},
        {"two of 40", {40, 40}, 0, "repo-1 pr*40 repo-2 pr*10 more-2 (30) "},
        {"review group on top", {3}, 2, "repo-0 pr*2 repo-1 pr*3 "},
        {"review rows count too", {40, 5}, 20, "repo-0 pr*20 repo-1 pr*30 more-1 (10) repo-2 more-2 (5) "},
        {"headings beyond the cap", {50, 0, 1}, 0, "repo-1 pr*40 more-1 (10) repo-2 repo-3 pr*1 "},
    };
    for (const auto& r : rows) EXPECT_EQ(describe(model(r.perRepo, r.review).listRows()), r.want) << r.name;

    // With 60 groups of one, every heading is there.
    Model many = model(std::vector<int>(60, 1), 0);
    const auto rowsOfMany = many.listRows();
    EXPECT_EQ(std::count_if(rowsOfMany.begin(), rowsOfMany.end(), [](const ListRow& r) { return r.isHeader(); }), 60);
    EXPECT_EQ(rowsOfMany.back().id(), "more-60");
}

TEST(extras_rows, deployment_state_and_its_address_on_the_row) {
    Model m = switchedOn();
    m.repos[0].pattern = "https://web-{number}.example.dev";
    m.refresh();
    Json prs = Json::array({prNode(1, "a1"), prNode(2, "b1"), prNode(3, "c1")});
    Json deployments = Json::array({
        {{"environment", "preview"}, {"state", "ACTIVE"}, {"commitOid", "a1"}, {"ref", {{"name", "feat/1"}}},
         {"latestStatus", {{"state", "SUCCESS"}, {"environmentUrl", "https://deploy-1.example.dev"}}}},
        {{"environment", "preview"}, {"state", "ACTIVE"}, {"commitOid", "old"}, {"ref", {{"name", "feat/2"}}},
         {"latestStatus", {{"state", "FAILURE"}}}},
    });
    m.batchFetched({"acme/web", "acme/api"}, answer(Json{{"r0", repoNode(prs, deployments)}, {"r1", repoNode(Json::array())}}));
    const struct {
        int index;
        std::optional<DeployState> deploy;
        std::optional<bool> older;
        const char* preview;
        PreviewSource source;
    } rows[] = {
        {0, DeployState::ready, false, "https://deploy-1.example.dev", PreviewSource::deployment},
        {1, DeployState::failed, true, "https://web-2.example.dev", PreviewSource::pattern},
        {2, std::nullopt, std::nullopt, "https://web-3.example.dev", PreviewSource::pattern},
    };
    for (const auto& r : rows) {
        const PR& pr = m.prs[static_cast<std::size_t>(r.index)];
        EXPECT_EQ(std::tie(pr.deploy, pr.deployOlder, pr.preview, pr.previewSource),
                  std::tie(r.deploy, r.older, r.preview, r.source)) << "row " << r.index;
    }
}

TEST(extras_rows, review_requests_come_from_anywhere_and_open_like_any_row) {
    Model m = switchedOn();
    m.viewer = "ana";
    m.refresh();
    Json mine = prNode(1);
    mine["repository"] = {{"nameWithOwner", "acme/web"}};
    Json elsewhere = prNode(8);
    elsewhere["repository"] = {{"nameWithOwner", "other/lib"}};
    elsewhere["url"] = "https://github.com/other/lib/pull/8";
    m.batchFetched({"acme/web", "acme/api"},
                   answer(Json{{"r0", repoNode(Json::array({prNode(1)}))}, {"r1", repoNode(Json::array())},
                               {"review", {{"nodes", Json::array({mine, elsewhere, Json::object()})}}}}));
    ASSERT_TRUE(m.reviewPrs);
    ASSERT_EQ(m.reviewPrs->size(), 2u);
    const auto rows = m.listRows();
    EXPECT_EQ(std::get<Repo>(rows[0].item).name, "Needs your review");
    EXPECT_EQ(std::get<Repo>(rows[0].item).count, 2);
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

// Every recorded transcript, replayed after an extras file that says off,
// gives the same lines: effects, statuses and the final model.
TEST(extras_switch, off_leaves_every_transcript_unchanged) {
    namespace fs = std::filesystem;
    const fs::path dir = fs::path(VELMAR_TEST_DATA) / "headless";
    const auto replay = [](const std::string& first, const std::string& script) {
        std::vector<std::string> lines{first};
        std::istringstream in(script);
        for (std::string line; std::getline(in, line);) lines.push_back(line);
        return Headless::run(lines);
    };
    int scripts = 0;
    for (const auto& entry : fs::directory_iterator(dir)) {
        if (entry.path().extension() != ".in") continue;
        std::ifstream file(entry.path(), std::ios::binary);
        std::ostringstream text;
        text << file.rdbuf();
        auto padded = replay("# padding", text.str());
        auto off = replay(R"({"msg":"file_read","file":"extras","contents":"checks\t0\n"})", text.str());
        ASSERT_FALSE(off.empty());
        EXPECT_EQ(off.front(), R"({"effects":[],"msg":{"contents":"checks\t0\n","file":"extras","msg":"file_read"},)"
                               R"("status":"0 open PRs across 0 repos | Loading...","step":1})");
        off.erase(off.begin());
        EXPECT_EQ(off, padded) << entry.path();
        ++scripts;
    }
    EXPECT_GT(scripts, 5);
}

}  // namespace
}  // namespace velmar
