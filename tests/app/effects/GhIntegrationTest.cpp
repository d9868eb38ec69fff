// The real gh, run by the real runner, against the fake GitHub server: the
// answers as gh left them, and from boot to a finished fetch queue with the
// core's update and the program's files in a scratch home.
#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>
#include <filesystem>
#include <functional>

#include "EffectsTestSupport.h"
#include "PrivateBus.h"
#include "Json.h"
#include "Model.h"

namespace velmar {
namespace {

using testing::FakeGitHub;
using testing::RunnerHarness;

const char* fixture = R"JSON({
  "token": "good-token", "login": "octo", "owned": ["octo/one", "octo/two"], "shared": ["acme/web", "octo/one"],
  "repos": {
    "acme/web": [
      {"number": 12, "title": "Add login", "author": "alice", "branch": "feat/login", "oid": "c12",
       "checks": "SUCCESS", "review": "APPROVED",
       "comments": [{"author": "railway-app", "body": "Deployed!\n[Web](https://web-pr-12.up.railway.app)"},
                    {"author": "bob", "body": "[Web](https://not-a-bot.example)"},
                    {"author": null, "body": "ghost"}]},
      {"number": 13, "title": "WIP", "author": "carol", "branch": "wip", "draft": true, "checks": "FAILURE",
       "mergeable": "CONFLICTING", "updated": "UPDATED13"}],
    "acme/api": [{"number": 3, "title": "Rate limits", "author": "dave", "branch": "rl", "checks": "PENDING",
                  "review": "REVIEW_REQUIRED"}],
    "acme/we b;touch pwned$(id)": [{"number": 1, "title": "T", "author": "a", "branch": "b", "url": "u"}],
    "octo/side": [{"number": 5, "title": "Mine", "author": "octo", "branch": "m", "checks": "SUCCESS",
                   "updated": "2026-01-01T00:00:00Z"}],
    "octo/tools": [{"number": 2, "title": "Also mine", "author": "octo", "branch": "t", "checks": "SUCCESS",
                    "updated": "2026-02-01T00:00:00Z"}]
  },
  "deployments": {"acme/web": [
    {"environment": "preview", "state": "ACTIVE", "commitOid": "c12", "ref": {"name": "feat/login"},
     "latestStatus": {"state": "SUCCESS", "environmentUrl": "https://deploy-12.example.dev"}},
    {"environment": "preview", "state": "ACTIVE", "commitOid": "old", "ref": {"name": "wip"},
     "latestStatus": {"state": "IN_PROGRESS", "environmentUrl": null}}]},
  "review_requested": [["acme/api", 3], ["other/lib", 8]]
})JSON";

class gh_against_fake_github : public ::testing::Test {
protected:
    static void SetUpTestSuite() { started = (server = std::make_unique<FakeGitHub>())->start(fixture, why); }
    static void TearDownTestSuite() { server.reset(); }
    void SetUp() override {
        if (!started)
            GTEST_SKIP() << why;
        server->exportEnvironment("good-token");
    }
    static inline std::unique_ptr<FakeGitHub> server;
    static inline std::string why;
    static inline bool started = false;
};

TEST_F(gh_against_fake_github, suggestions_checks_and_failures_come_back_as_gh_left_them) {
    const std::string path = "/usr/bin:/bin", slug = "acme/we b;touch pwned$(id)", good = "good-token";
    const auto owned = SuggestionSource::owned, shared = SuggestionSource::shared;
    using effect::FetchSuggestions, msg::SuggestionsFetched, effect::GhPreflight, msg::GhChecked;
    const std::vector<std::tuple<std::string, Effect, Msg>> rows{  // token, effect, reply
        {good, FetchSuggestions{owned, path}, SuggestionsFetched{owned, "octo/one\nocto/two\n", true}},
        {good, FetchSuggestions{shared, path}, SuggestionsFetched{shared, "acme/web\nocto/one\n", true}},
        {good, GhPreflight{path}, GhChecked{0}},
        {"bad-token", GhPreflight{path}, GhChecked{1}},
        {good, GhPreflight{"/nonexistent"}, GhChecked{127}},
        {"bad-token", FetchSuggestions{owned, path}, SuggestionsFetched{owned, "", false}},
        {good, effect::FetchPrs{"acme/nope", path}, msg::PrsFetched{"acme/nope\n", false}},
        {good, effect::FetchPrs{slug, path}, msg::PrsFetched{slug + "\n1\tT\ta\tb\tfalse\tu\t\n", true}},
    };
    RunnerHarness harness;
    for (const auto& [token, effect, reply] : rows) {
        server->exportEnvironment(token);
        EXPECT_EQ(harness.perform(effect), std::vector<Msg>{reply}) << token;
    }
    for (const auto& entry : std::filesystem::directory_iterator("."))
        EXPECT_FALSE(entry.path().filename().string().starts_with("pwned"));
}

TEST_F(gh_against_fake_github, a_query_that_githubs_schema_rejects_is_refused_as_github_refuses_it) {
    const std::vector<std::pair<const char*, bool>> rows{  // query, accepted
        {"query Probe { viewer { login } }", true},
        {"query Probe { viewer { loginName } }", false},
        {"query Probe { repository(owner: \"a\") { name } }", false},  // a required argument missing
        {"query Probe($o: String!) { viewer { login } }", false},      // a variable never used
    };
    for (const auto& [query, accepted] : rows) {
        QProcess gh;
        gh.start("gh", {"api", "graphql", "-f", QStringLiteral("query=") + query});
        ASSERT_TRUE(gh.waitForFinished(30000)) << query;
        const QByteArray out = gh.readAllStandardOutput() + gh.readAllStandardError();
        EXPECT_EQ(!out.contains("invalid query"), accepted) << query << "\n" << out.toStdString();
    }
}

// The least of a Store: owns the model, runs update, performs the effects.
// Links it would open are kept instead, so no browser starts.
struct MiniStore : QObject {
    MiniStore() : runner(this, [this](Msg msg) { send(msg); }) {}
    void send(const Msg& msg) {
        auto [next, effects] = update(model, msg);
        model = std::move(next);
        for (const auto& effect : effects) {
            if (auto* open = std::get_if<effect::OpenURL>(&effect)) opened.push_back(open->url);
            else runner.perform(effect);
        }
    }
    /// Starts as the shell does, with `extras` as the extras file when given.
    void boot(const std::string& extras = "") {
        if (!extras.empty()) send(msg::FileRead{ConfigFile::extras, extras});
        send(msg::Boot{});
    }
    /// Waits until everything is read, gh known good, no fetch left, and `also` holds.
    bool waitIdle(const std::function<bool()>& also = [] { return true; }) {
        return testing::waitUntil([&] {
            return model.reposLoaded && model.pathResolved && !model.fetchInFlight && model.gh == GhStatus::ok &&
                   std::all_of(model.repos.begin(), model.repos.end(),
                               [](const Repo& r) { return r.state == RepoState::ok; }) &&
                   also();
        }, 60);
    }
    /// "name count" per heading, " failed" after a failed one.
    std::vector<std::string> headings() const {
        std::vector<std::string> out;
        for (const auto& r : model.repos) out.push_back(r.name + " " + std::to_string(r.count) + (r.failed ? " failed" : ""));
        return out;
    }
    Model model;
    EffectRunner runner;
    std::vector<std::string> opened;
};

// A pull request's marks and preview, on one line.
std::string marks(const PR& pr) {
    const auto text = [](const auto& value) { return value ? std::string(jsonText(*value)) : std::string("-"); };
    return pr.repo + "#" + std::to_string(pr.number) + " " + text(pr.checks) + " " + text(pr.review) +
           (pr.conflicts.value_or(false) ? " conflicts" : "") + " " + text(pr.deploy) +
           (pr.deployOlder.value_or(false) ? " older" : "") + " " + pr.preview;
}

std::vector<std::string> sortedRows(const Model& m, const std::function<std::string(const PR&)>& row) {
    std::vector<std::string> rows;
    for (const auto& pr : m.prs) rows.push_back(row(pr));
    std::sort(rows.begin(), rows.end());
    return rows;
}

const std::vector<std::string> threeHeadings{"acme/web 2", "acme/gone 0 failed", "acme/api 1"};

TEST_F(gh_against_fake_github, end_to_end_boot_fetches_every_repository_and_saves_the_learned_pattern) {
    testing::ScratchHome home("acme/web\t\nacme/gone\t\nacme/api\thttps://api-{number}.test\n");
    MiniStore store;
    store.boot();
    ASSERT_TRUE(store.waitIdle([&] {
        return store.model.suggestions.size() == 3 &&
               testing::readFile(home.config("repos.tsv")).find("{number}.up") != std::string::npos;
    }));
    EXPECT_EQ(testing::readFile(home.config("repos.tsv")),
              "acme/web\t\thttps://web-pr-{number}.up.railway.app\nacme/gone\t\nacme/api\thttps://api-{number}.test\n");
    EXPECT_EQ(store.headings(), threeHeadings);
    EXPECT_EQ(sortedRows(store.model, [](const PR& pr) {
                  return pr.repo + "#" + std::to_string(pr.number) + "|" + pr.title + "|" + pr.author + "|" +
                         pr.branch + "|" + (pr.isDraft ? "draft|" : "") + pr.url + "|" + pr.preview;
              }),
              (std::vector<std::string>{
                  "acme/api#3|Rate limits|dave|rl|https://github.com/acme/api/pull/3|https://api-3.test",
                  "acme/web#12|Add login|alice|feat/login|https://github.com/acme/web/pull/12|"
                  "https://web-pr-12.up.railway.app",
                  "acme/web#13|WIP|carol|wip|draft|https://github.com/acme/web/pull/13|"
                  "https://web-pr-13.up.railway.app"}));
}

// The fake answers as any host: 127.0.0.1 stands for an Enterprise server
// beside gh's own (localhost), asked in a query of its own.
TEST_F(gh_against_fake_github, with_checks_on_one_query_per_host_shows_states_and_a_missing_repository_fails_alone) {
    const std::string own = "localhost:" + std::to_string(server->port());
    const std::string other = "127.0.0.1:" + std::to_string(server->port());
    testing::ScratchHome home("acme/web\t\nacme/gone\t\n" + other + "/acme/api\t\n");
    MiniStore store;
    const Model& m = store.model;
    const std::string batches = server->batchesLog(), comments = server->commentsLog();
    store.boot("checks\t1\n");
    ASSERT_TRUE(store.waitIdle([&] { return m.viewer.has_value(); }));
    EXPECT_EQ(store.headings(), (std::vector<std::string>{"acme/web 2", "acme/gone 0 failed", other + "/acme/api 1"}));
    EXPECT_EQ(sortedRows(m, marks),
              (std::vector<std::string>{
                  other + "/acme/api#3 running review_required - ",
                  // The bot's comment comes before the deployment's own address.
                  "acme/web#12 passing approved ready https://web-pr-12.up.railway.app",
                  "acme/web#13 failing - conflicts building older https://web-pr-13.up.railway.app"}));

    // The second refresh searches the review requests with the login it learned, and asks for the
    // comments of the changed pull request alone.
    std::string changed = fixture;
    changed.replace(changed.find("UPDATED13"), 9, "UPDATED13b");
    server->setFixture(changed);
    store.send(msg::Refresh{});
    ASSERT_TRUE(store.waitIdle([&] { return m.reviewPrs.has_value(); }));
    server->setFixture(fixture);
    EXPECT_EQ(server->batchesLog().substr(batches.size()), own + " 2\n" + other + " 1\n" + own + " 2\n" + other + " 1\n");
    EXPECT_EQ(server->commentsLog().substr(comments.size()),
              "PR_acme/web_12 PR_acme/web_13\nPR_acme/api_3\nPR_acme/web_13\n");
    ASSERT_EQ(m.reviewPrs->size(), 1u);  // other/lib is not in the fake GitHub
    EXPECT_EQ(marks(m.reviewPrs->front()), "acme/api#3 running review_required - ");
}

TEST_F(gh_against_fake_github, notifications_of_a_changed_github_reach_the_desktop_and_an_action_opens_the_link) {
    PrivateBus bus;
    FakeService notifications(VELMAR_FAKE_NOTIFICATIONS, bus.address, {"--caps", "actions,body"});
    testing::ScratchHome home("acme/web\t\nacme/api\t\n", {{"DBUS_SESSION_BUS_ADDRESS", bus.address.toStdString()}});
    const auto withRows = [](const std::string& rows, const std::string& review) {
        std::string f = fixture;
        const std::string last = "\"updated\": \"UPDATED13\"}";
        f.replace(f.find(last), last.size(), last + ", " + rows);
        f.insert(f.find("[[\"acme/api\", 3]") + 1, review);
        return f;
    };
    const std::string mine = R"({"number": 14, "title": "Faster <login> & co", "author": "octo", "branch": "fast", )";
    server->setFixture(withRows(mine + R"("checks": "PENDING"})", ""));

    MiniStore store;
    const Model& m = store.model;
    store.boot("checks\t1\nnotify\t1\nnotify_new\t1\nnotify_checks\t1\nnotify_review\t1\n");
    // The first answer is the baseline; the second brings the review list, the baseline of its own.
    ASSERT_TRUE(store.waitIdle([&] { return m.viewer.has_value(); }));
    store.send(msg::Refresh{});
    ASSERT_TRUE(store.waitIdle([&] { return m.seen && m.seen->review; }));

    server->setFixture(withRows(mine + R"("checks": "FAILURE"}, )"
                                       R"({"number": 15, "title": "New one", "author": "erin", "branch": "new"})",
                                "[\"acme/web\", 12], "));
    store.send(msg::Refresh{});
    ASSERT_TRUE(store.waitIdle([&] { return m.notices.has_value(); })) << toJson(m).dump();
    std::vector<QJsonObject> calls;
    for (int i = 0; i < 3; ++i) calls.push_back(notifications.nextCall());
    server->setFixture(fixture);
    std::vector<std::string> summaries;
    for (const auto& call : calls) summaries.push_back(call["summary"].toString().toStdString());
    EXPECT_EQ(summaries, (std::vector<std::string>{"acme/web #12 \u00b7 review requested",
                                                    "acme/web #14 \u00b7 checks failed",
                                                    "acme/web #15 \u00b7 new pull request"}));
    EXPECT_EQ(calls[1]["body"], "Faster <login> & co");
    EXPECT_EQ(calls[1]["actions"], (QJsonArray{"default", "Open pull request", "preview", "Open preview"}));

    // The user clicks the second: its pull request opens.
    notifications.send("action 2 default");
    ASSERT_TRUE(testing::waitUntil([&] { return !store.opened.empty(); }, 10));
    EXPECT_EQ(store.opened, std::vector<std::string>{"https://github.com/acme/web/pull/14"});
}

TEST_F(gh_against_fake_github, with_checks_on_a_query_too_large_for_github_goes_again_ten_repositories_a_call) {
    Json large = *parseJson(fixture);
    large["max_batch"] = 10;
    std::string reposFile = "acme/web\t\nacme/gone\t\nacme/api\t\n";
    std::vector<std::string> want = threeHeadings;
    for (int i = 0; i < 10; ++i) {
        const std::string slug = "acme/r" + std::to_string(i);
        large["repos"][slug] = Json::array({{{"number", 1}, {"title", "T"}, {"author", "a"}, {"branch", "b"}}});
        reposFile += slug + "\t\n";
        want.push_back(slug + " 1");
    }
    server->setFixture(large.dump());
    testing::ScratchHome home(reposFile);
    const std::string before = server->batchesLog();
    MiniStore store;
    store.boot("checks\t1\n");
    ASSERT_TRUE(store.waitIdle([&] { return store.model.viewer.has_value(); }));
    EXPECT_EQ(store.headings(), want);
    EXPECT_EQ(store.model.prs.size(), 13u);
    const std::string host = "localhost:" + std::to_string(server->port());
    EXPECT_EQ(server->batchesLog().substr(before.size()), host + " 13\n" + host + " 10\n" + host + " 3\n");

    // The next refresh asks ten at a time from the start.
    store.send(msg::Refresh{});
    ASSERT_TRUE(store.waitIdle([&] { return store.model.batchCount == 2; }));
    server->setFixture(fixture);
    EXPECT_EQ(server->batchesLog().substr(before.size()),
              host + " 13\n" + host + " 10\n" + host + " 3\n" + host + " 10\n" + host + " 3\n");
    EXPECT_EQ(store.headings(), want);
}

TEST_F(gh_against_fake_github, yours_finds_the_viewers_pull_requests_anywhere_and_puts_the_blocked_first) {
    testing::ScratchHome home("acme/api\t\n");
    MiniStore store;
    const Model& m = store.model;
    const auto yours = [&] {
        std::string out;
        for (const auto& pr : *m.yourPrs)
            out += pr.repo + "#" + std::to_string(pr.number) + (isBlocked(pr) ? " blocked" : "") + "; ";
        return out;
    };
    store.boot("checks\t1\n");
    // The first query learns the login; the search goes with the next one, and
    // GitHub's schema (checked by the fake server) refuses the whole query if
    // the search does not fit it.
    ASSERT_TRUE(store.waitIdle([&] { return m.viewer.has_value(); }));
    store.send(msg::Refresh{});
    ASSERT_TRUE(store.waitIdle([&] { return m.yourPrs.has_value(); }));
    EXPECT_EQ(yours(), "octo/tools#2; octo/side#5; ");  // neither repository is watched
    EXPECT_EQ(m.yoursBlocked(), 0);

    std::string failing = fixture;
    failing.replace(failing.find("SUCCESS", failing.find("\"Mine\"")), 7, "FAILURE");
    server->setFixture(failing);
    store.send(msg::Refresh{});
    ASSERT_TRUE(store.waitIdle([&] { return m.yoursBlocked() == 1; }));
    server->setFixture(fixture);
    EXPECT_EQ(yours(), "octo/side#5 blocked; octo/tools#2; ");
    // Below the review requests, above the watched repositories.
    std::string headings;
    for (const auto& row : m.listRows())
        if (row.isHeader()) headings += std::get<Repo>(row.item).name + "; ";
    EXPECT_EQ(headings, "Needs your review; Yours; acme/api; ");
}

}  // namespace
}  // namespace velmar
