// The real gh, run by the real runner, against the fake GitHub server; the
// answers are handed to the core as the application would.
#include <gtest/gtest.h>

#include <filesystem>

#include "EffectsTestSupport.h"
#include "Formats.h"
#include "Model.h"

namespace velmar {
namespace {

using testing::FakeGitHub;
using testing::RunnerHarness;

const char* fixture = R"JSON({
  "token": "good-token", "login": "octo",
  "repos": {
    "acme/web": [
      {"number": 12, "title": "Add login", "author": "alice", "branch": "feat/login",
       "url": "https://github.com/acme/web/pull/12",
       "comments": [{"author": "railway-app", "body": "Deployed!\n[Web](https://web-pr-12.up.railway.app)"},
                    {"author": "bob", "body": "[Web](https://not-a-bot.example)"},
                    {"author": null, "body": "ghost"}]},
      {"number": 13, "title": "WIP\ttabs", "author": "carol", "branch": "wip", "draft": true,
       "url": "https://github.com/acme/web/pull/13", "comments": []}
    ]
  },
  "owned": ["octo/one", "octo/two"],
  "shared": ["acme/web"]
})JSON";

class gh_against_fake_github : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        server = new FakeGitHub;
        if (!server->start(fixture, why)) {
            delete server;
            server = nullptr;
        }
    }
    static void TearDownTestSuite() {
        delete server;
        server = nullptr;
    }
    void SetUp() override {
        if (server == nullptr)
            GTEST_SKIP() << why;
        server->exportEnvironment("good-token");
    }
    static inline FakeGitHub* server = nullptr;
    static inline std::string why;
    const std::string path = "/usr/bin:/bin";
};

TEST_F(gh_against_fake_github, pull_requests_reach_the_core_as_rows_and_a_learned_pattern) {
    // The core's own way to a fetch: a home, the repos file, the search path.
    Model model;
    for (const Msg& m : {Msg(msg::HomeResolved{"/nowhere"}),
                         Msg(msg::FileRead{ConfigFile::repos, "acme/web\t\n"})})
        model = update(model, m).first;
    auto [ready, effects] = update(model, msg::PathResolved{path});
    const auto fetch = std::find_if(effects.begin(), effects.end(), [](const Effect& e) {
        return std::holds_alternative<effect::FetchPrs>(e);
    });
    ASSERT_NE(fetch, effects.end());
    EXPECT_EQ(*fetch, Effect(effect::FetchPrs{"acme/web", path}));

    RunnerHarness harness;
    const auto replies = harness.perform(*fetch);
    ASSERT_EQ(replies.size(), 1u);
    const auto& fetched = std::get<msg::PrsFetched>(replies[0]);
    EXPECT_TRUE(fetched.ok);
    const auto parsed = Formats::parsePrOutput(fetched.output);
    EXPECT_EQ(parsed.slug, "acme/web");
    ASSERT_EQ(parsed.rows.size(), 2u);
    EXPECT_EQ(parsed.rows[0].commentPreview, "https://web-pr-12.up.railway.app");

    auto [after, writes] = update(ready, replies[0]);
    ASSERT_EQ(after.prs.size(), 2u);
    EXPECT_EQ(after.prs[0].id, after.repos[0].id * 100000 + 12);
    EXPECT_EQ(after.prs[0].author, "alice");
    EXPECT_EQ(after.prs[0].preview, "https://web-pr-12.up.railway.app");
    EXPECT_TRUE(after.prs[1].isDraft);
    EXPECT_EQ(after.prs[1].preview, "https://web-pr-13.up.railway.app");
    EXPECT_EQ(after.repos[0].detectedPattern, "https://web-pr-{number}.up.railway.app");
    EXPECT_FALSE(after.repos[0].failed);
    EXPECT_EQ(writes.size(), 1u);
}

TEST_F(gh_against_fake_github, suggestions_checks_and_failures_come_back_as_gh_left_them) {
    struct Row {
        const char* behaviour;
        std::string token;
        Effect effect;
        Msg reply;
    };
    const std::string slug = "acme/we b;touch pwned$(id)";
    const std::vector<Row> rows{
        {"owned repositories", "good-token", effect::FetchSuggestions{SuggestionSource::owned, path},
         msg::SuggestionsFetched{SuggestionSource::owned, "octo/one\nocto/two\n", true}},
        {"shared repositories", "good-token", effect::FetchSuggestions{SuggestionSource::shared, path},
         msg::SuggestionsFetched{SuggestionSource::shared, "acme/web\n", true}},
        {"signed in", "good-token", effect::GhPreflight{path}, msg::GhChecked{0}},
        {"token refused", "bad-token", effect::GhPreflight{path}, msg::GhChecked{1}},
        {"gh not on the path", "good-token", effect::GhPreflight{"/nonexistent"}, msg::GhChecked{127}},
        {"refused listing", "bad-token", effect::FetchSuggestions{SuggestionSource::owned, path},
         msg::SuggestionsFetched{SuggestionSource::owned, "", false}},
        {"missing repository", "good-token", effect::FetchPrs{"acme/nope", path},
         msg::PrsFetched{"acme/nope\n", false}},
        {"slug with shell metacharacters", "good-token", effect::FetchPrs{slug, path},
         msg::PrsFetched{slug + "\n", false}},
    };
    RunnerHarness harness;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.behaviour);
        server->exportEnvironment(row.token);
        const auto replies = harness.perform(row.effect);
        ASSERT_EQ(replies.size(), 1u);
        EXPECT_EQ(replies[0], row.reply);
    }
    // gh asked for exactly the repository named by the slug, metacharacters and all.
    const auto requests = server->requests();
    EXPECT_NE(std::find_if(requests.begin(), requests.end(),
                           [](const std::string& r) {
                               return r.find(R"JSON("owner": "acme", "repo": "we b;touch pwned$(id)")JSON") !=
                                      std::string::npos;
                           }),
              requests.end());
    for (const auto& entry : std::filesystem::directory_iterator("."))
        EXPECT_FALSE(entry.path().filename().string().starts_with("pwned"));
}

}  // namespace
}  // namespace velmar
