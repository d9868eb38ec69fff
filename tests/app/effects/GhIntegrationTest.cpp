// The real gh, run by the real runner, against the fake GitHub server: the
// answers as gh left them, and from boot to a finished fetch queue with the
// core's update and the program's files in a scratch home.
#include <gtest/gtest.h>

#include <QProcess>
#include <filesystem>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

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
    /// Everything read, gh known good, and no fetch left.
    bool idle() const {
        return model.reposLoaded && model.pathResolved && !model.fetchInFlight && model.gh == GhStatus::ok &&
               std::all_of(model.repos.begin(), model.repos.end(),
                           [](const Repo& r) { return r.state == RepoState::ok; });
    }
    Model model;
    EffectRunner runner;
    std::vector<std::string> opened;
};

TEST_F(gh_against_fake_github, end_to_end_boot_fetches_every_repository_and_saves_the_learned_pattern) {
    testing::Scratch home;
    const std::string reposFile = home.path(".config/velmar/repos.tsv");
    testing::writeFile(reposFile, "acme/web\t\nacme/gone\t\nacme/api\thttps://api-{number}.test\n");
    testing::EnvGuard env({{"VELMAR_HOME", home.path()}, {"SHELL", "/bin/sh"}});
    MiniStore store;
    store.send(msg::Boot{});
    const Model& m = store.model;
    ASSERT_TRUE(testing::waitUntil([&] {
        return m.reposLoaded && m.pathResolved && !m.fetchInFlight && m.gh == GhStatus::ok &&
               m.suggestions.size() == 3 &&
               std::all_of(m.repos.begin(), m.repos.end(), [](const Repo& r) { return r.state == RepoState::ok; }) &&
               testing::readFile(reposFile).find("{number}.up") != std::string::npos;
    }, 60));
    EXPECT_EQ(testing::readFile(reposFile),
              "acme/web\t\thttps://web-pr-{number}.up.railway.app\nacme/gone\t\nacme/api\thttps://api-{number}.test\n");
    std::vector<std::string> repos, prs;
    for (const auto& r : m.repos)
        repos.push_back(r.name + " " + std::to_string(r.count) + (r.failed ? " failed" : ""));
    for (const auto& pr : m.prs)
        prs.push_back(pr.repo + "#" + std::to_string(pr.number) + "|" + pr.title + "|" + pr.author + "|" +
                      pr.branch + "|" + (pr.isDraft ? "draft|" : "") + pr.url + "|" + pr.preview);
    std::sort(prs.begin(), prs.end());
    EXPECT_EQ(repos, (std::vector<std::string>{"acme/web 2", "acme/gone 0 failed", "acme/api 1"}));
    EXPECT_EQ(prs, (std::vector<std::string>{
                       "acme/api#3|Rate limits|dave|rl|https://github.com/acme/api/pull/3|https://api-3.test",
                       "acme/web#12|Add login|alice|feat/login|https://github.com/acme/web/pull/12|"
                       "https://web-pr-12.up.railway.app",
                       "acme/web#13|WIP|carol|wip|draft|https://github.com/acme/web/pull/13|"
                       "https://web-pr-13.up.railway.app"}));
}

TEST_F(gh_against_fake_github, with_checks_on_one_query_shows_states_and_a_missing_repository_fails_alone) {
    testing::Scratch home;
    testing::writeFile(home.path(".config/velmar/repos.tsv"), "acme/web\t\nacme/gone\t\nacme/api\t\n");
    testing::EnvGuard env({{"VELMAR_HOME", home.path()}, {"SHELL", "/bin/sh"}});
    MiniStore store;
    const Model& m = store.model;
    const auto idle = [&] { return store.idle(); };
    const std::string before = server->commentsLog();
    store.send(msg::FileRead{ConfigFile::extras, "checks\t1\n"});  // as the shell hands it in at start
    store.send(msg::Boot{});
    ASSERT_TRUE(testing::waitUntil([&] { return idle() && m.viewer; }, 60));

    std::vector<std::string> repos, rows;
    for (const auto& r : m.repos)
        repos.push_back(r.name + " " + std::to_string(r.count) + (r.failed ? " failed" : ""));
    const auto describe = [](const PR& pr) {
        return pr.repo + "#" + std::to_string(pr.number) + " " +
               (pr.checks ? std::string(jsonText(*pr.checks)) : "-") + " " +
               (pr.review ? std::string(jsonText(*pr.review)) : "-") + (pr.conflicts.value_or(false) ? " conflicts" : "") +
               " " + (pr.deploy ? std::string(jsonText(*pr.deploy)) : "-") + (pr.deployOlder.value_or(false) ? " older" : "") +
               " " + pr.preview;
    };
    for (const auto& pr : m.prs) rows.push_back(describe(pr));
    std::sort(rows.begin(), rows.end());
    EXPECT_EQ(repos, (std::vector<std::string>{"acme/web 2", "acme/gone 0 failed", "acme/api 1"}));
    EXPECT_EQ(rows, (std::vector<std::string>{
                        "acme/api#3 running review_required - ",
                        // The bot's comment comes before the deployment's own address.
                        "acme/web#12 passing approved ready https://web-pr-12.up.railway.app",
                        "acme/web#13 failing - conflicts building older https://web-pr-13.up.railway.app"}));

    // The second refresh searches the review requests with the login it learned, and asks for the
    // comments of the changed pull request alone.
    std::string changed = fixture;
    changed.replace(changed.find("UPDATED13"), 9, "UPDATED13b");
    server->setFixture(changed);
    store.send(msg::Refresh{});
    ASSERT_TRUE(testing::waitUntil([&] { return idle() && m.reviewPrs; }, 60));
    server->setFixture(fixture);
    const std::string log = server->commentsLog().substr(before.size());
    EXPECT_EQ(log, "PR_acme/web_12 PR_acme/web_13 PR_acme/api_3\nPR_acme/web_13\n");
    ASSERT_EQ(m.reviewPrs->size(), 1u);  // other/lib is not in the fake GitHub
    EXPECT_EQ(describe(m.reviewPrs->front()), "acme/api#3 running review_required - ");
}

TEST_F(gh_against_fake_github, notifications_of_a_changed_github_reach_the_desktop_and_an_action_opens_the_link) {
    PrivateBus bus;
    FakeService notifications(VELMAR_FAKE_NOTIFICATIONS, bus.address, {"--caps", "actions,body"});
    testing::Scratch home;
    testing::writeFile(home.path(".config/velmar/repos.tsv"), "acme/web\t\nacme/api\t\n");
    testing::EnvGuard env({{"VELMAR_HOME", home.path()}, {"SHELL", "/bin/sh"},
                           {"DBUS_SESSION_BUS_ADDRESS", bus.address.toStdString()}});
    const auto withRows = [](const std::string& rows, const std::string& review) {
        std::string f = fixture;
        const std::string last = "\"updated\": \"UPDATED13\"}";
        f.replace(f.find(last), last.size(), last + ", " + rows);
        f.insert(f.find("[[\"acme/api\", 3]") + 1, review);
        return f;
    };
    const std::string mineRunning =
        R"({"number": 14, "title": "Faster <login> & co", "author": "octo", "branch": "fast", "checks": "PENDING"})";
    const std::string mineFailed =
        R"({"number": 14, "title": "Faster <login> & co", "author": "octo", "branch": "fast", "checks": "FAILURE"}, )"
        R"({"number": 15, "title": "New one", "author": "erin", "branch": "new"})";
    server->setFixture(withRows(mineRunning, ""));

    MiniStore store;
    const Model& m = store.model;
    const auto refreshed = [&] {
        return m.reposLoaded && m.pathResolved && !m.fetchInFlight && m.gh == GhStatus::ok &&
               std::all_of(m.repos.begin(), m.repos.end(), [](const Repo& r) { return r.state == RepoState::ok; });
    };
    store.send(msg::FileRead{ConfigFile::extras, "checks\t1\nnotify\t1\nnotify_new\t1\nnotify_checks\t1\nnotify_review\t1\n"});
    store.send(msg::Boot{});
    // The first answer is the baseline; the second brings the review list, the baseline of its own.
    ASSERT_TRUE(testing::waitUntil([&] { return refreshed() && m.viewer; }, 60));
    store.send(msg::Refresh{});
    ASSERT_TRUE(testing::waitUntil([&] { return refreshed() && m.seen && m.seen->review; }, 60));

    server->setFixture(withRows(mineFailed, "[\"acme/web\", 12], "));
    store.send(msg::Refresh{});
    ASSERT_TRUE(testing::waitUntil([&] { return refreshed() && m.notices; }, 60)) << toJson(m).dump();
    std::vector<QJsonObject> calls;
    for (int i = 0; i < 3; ++i) calls.push_back(QJsonDocument::fromJson(notifications.nextLine()).object());
    server->setFixture(fixture);
    std::vector<std::string> summaries;
    for (const auto& call : calls) summaries.push_back(call["summary"].toString().toStdString());
    EXPECT_EQ(summaries, (std::vector<std::string>{"acme/web #12 \u00b7 review requested",
                                                    "acme/web #14 \u00b7 checks failed",
                                                    "acme/web #15 \u00b7 new pull request"}));
    const auto text = [](const QJsonObject& o) { return QJsonDocument(o).toJson(QJsonDocument::Compact).toStdString(); };
    EXPECT_EQ(text(calls[1]), text(QJsonObject{{"call", "Notify"}, {"app", "Velmar"}, {"replaces", 0}, {"icon", "velmar"},
                                     {"summary", "acme/web #14 \u00b7 checks failed"},
                                     {"body", "Faster <login> & co"},
                                     {"actions", QJsonArray{"default", "Open pull request", "preview", "Open preview"}},
                                     {"hints", QJsonObject{{"desktop-entry", "velmar"},
                                                           {"urgency", QJsonObject{{"byte", 1}}}}},
                                     {"timeout", -1}}));

    // The user clicks the second: its pull request opens.
    notifications.send("action 2 default");
    ASSERT_TRUE(testing::waitUntil([&] { return !store.opened.empty(); }, 10));
    EXPECT_EQ(store.opened, std::vector<std::string>{"https://github.com/acme/web/pull/14"});
}

/// Boots a store on `reposFile`'s lines with checks on and waits until every repository is in.
void bootWithChecks(MiniStore& store, testing::Scratch& home, const std::string& reposFile) {
    testing::writeFile(home.path(".config/velmar/repos.tsv"), reposFile);
    store.send(msg::FileRead{ConfigFile::extras, "checks\t1\n"});
    store.send(msg::Boot{});
}

bool idle(const Model& m) {
    return m.reposLoaded && m.pathResolved && !m.fetchInFlight && m.gh == GhStatus::ok && !m.repos.empty() &&
           std::all_of(m.repos.begin(), m.repos.end(), [](const Repo& r) { return r.state == RepoState::ok; });
}

std::vector<std::string> headings(const Model& m) {
    std::vector<std::string> out;
    for (const auto& r : m.repos) out.push_back(r.name + " " + std::to_string(r.count) + (r.failed ? " failed" : ""));
    return out;
}

TEST_F(gh_against_fake_github, with_checks_on_a_query_too_large_for_github_goes_again_ten_repositories_a_call) {
    Json large = *parseJson(fixture);
    large["max_batch"] = 10;
    std::string reposFile = "acme/web\t\nacme/gone\t\nacme/api\t\n";
    std::vector<std::string> want{"acme/web 2", "acme/gone 0 failed", "acme/api 1"};
    for (int i = 0; i < 10; ++i) {
        const std::string slug = "acme/r" + std::to_string(i);
        large["repos"][slug] = Json::array({{{"number", 1}, {"title", "T"}, {"author", "a"}, {"branch", "b"}}});
        reposFile += slug + "\t\n";
        want.push_back(slug + " 1");
    }
    server->setFixture(large.dump());
    testing::Scratch home;
    testing::EnvGuard env({{"VELMAR_HOME", home.path()}, {"SHELL", "/bin/sh"}});
    const std::string before = server->batchesLog();
    MiniStore store;
    bootWithChecks(store, home, reposFile);
    const Model& m = store.model;
    ASSERT_TRUE(testing::waitUntil([&] { return idle(m) && m.viewer; }, 60));
    EXPECT_EQ(headings(m), want);
    EXPECT_EQ(m.prs.size(), 13u);
    const std::string host = "localhost:" + std::to_string(server->port());
    EXPECT_EQ(server->batchesLog().substr(before.size()), host + " 13\n" + host + " 10\n" + host + " 3\n");

    // The next refresh asks ten at a time from the start.
    store.send(msg::Refresh{});
    ASSERT_TRUE(testing::waitUntil([&] { return idle(m) && m.batchCount == 2; }, 60));
    server->setFixture(fixture);
    EXPECT_EQ(server->batchesLog().substr(before.size()),
              host + " 13\n" + host + " 10\n" + host + " 3\n" + host + " 10\n" + host + " 3\n");
    EXPECT_EQ(headings(m), want);
}

TEST_F(gh_against_fake_github, with_checks_on_a_repository_on_another_host_is_asked_in_a_query_of_its_own) {
    // The fake answers as any host: 127.0.0.1 stands for an Enterprise server beside gh's own (localhost).
    const std::string other = "127.0.0.1:" + std::to_string(server->port());
    testing::Scratch home;
    testing::EnvGuard env({{"VELMAR_HOME", home.path()}, {"SHELL", "/bin/sh"}});
    const std::string batches = server->batchesLog(), comments = server->commentsLog();
    MiniStore store;
    bootWithChecks(store, home, "acme/web\t\n" + other + "/acme/api\t\nacme/gone\t\n");
    const Model& m = store.model;
    ASSERT_TRUE(testing::waitUntil([&] { return idle(m) && m.viewer; }, 60));
    EXPECT_EQ(headings(m), (std::vector<std::string>{"acme/web 2", other + "/acme/api 1", "acme/gone 0 failed"}));
    const auto api = std::find_if(m.prs.begin(), m.prs.end(), [&](const PR& p) { return p.repo == other + "/acme/api"; });
    ASSERT_NE(api, m.prs.end());
    EXPECT_EQ(api->checks, ChecksState::running);
    EXPECT_EQ(server->batchesLog().substr(batches.size()),
              "localhost:" + std::to_string(server->port()) + " 2\n" + other + " 1\n");
    EXPECT_EQ(server->commentsLog().substr(comments.size()), "PR_acme/web_12 PR_acme/web_13\nPR_acme/api_3\n");
}

TEST_F(gh_against_fake_github, yours_finds_the_viewers_pull_requests_anywhere_and_puts_the_blocked_first) {
    testing::Scratch home;
    testing::writeFile(home.path(".config/velmar/repos.tsv"), "acme/api\t\n");
    testing::EnvGuard env({{"VELMAR_HOME", home.path()}, {"SHELL", "/bin/sh"}});
    MiniStore store;
    const Model& m = store.model;
    const auto idle = [&] { return store.idle(); };
    const auto yours = [&] {
        std::string out;
        for (const auto& pr : *m.yourPrs)
            out += pr.repo + "#" + std::to_string(pr.number) + (isBlocked(pr) ? " blocked" : "") + "; ";
        return out;
    };
    store.send(msg::FileRead{ConfigFile::extras, "checks\t1\n"});
    store.send(msg::Boot{});
    // The first query learns the login; the search goes with the next one, and
    // GitHub's schema (checked by the fake server) refuses the whole query if
    // the search does not fit it.
    ASSERT_TRUE(testing::waitUntil([&] { return idle() && m.viewer; }, 60));
    store.send(msg::Refresh{});
    ASSERT_TRUE(testing::waitUntil([&] { return idle() && m.yourPrs; }, 60));
    EXPECT_EQ(yours(), "octo/tools#2; octo/side#5; ");  // neither repository is watched
    EXPECT_EQ(m.yoursBlocked(), 0);

    std::string failing = fixture;
    failing.replace(failing.find("SUCCESS", failing.find("\"Mine\"")), 7, "FAILURE");
    server->setFixture(failing);
    store.send(msg::Refresh{});
    ASSERT_TRUE(testing::waitUntil([&] { return idle() && m.yoursBlocked() == 1; }, 60));
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
