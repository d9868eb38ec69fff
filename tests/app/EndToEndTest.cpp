// From boot to a finished fetch queue: the core's update, the real runner,
// the real gh and a login shell, against the fake GitHub server, with the
// program's files in a scratch home.
#include <gtest/gtest.h>

#include "EffectsTestSupport.h"
#include "Model.h"

namespace velmar {
namespace {

using testing::Scratch;

// The least of a Store: owns the model, runs update, performs the effects.
class MiniStore : public QObject {
public:
    MiniStore() : runner(this, [this](Msg msg) { send(msg); }) {}
    void send(const Msg& msg) {
        auto [next, effects] = update(model, msg);
        model = std::move(next);
        for (const auto& effect : effects)
            runner.perform(effect);
    }
    Model model;
    EffectRunner runner;
};

const char* fixture = R"JSON({
  "token": "t", "login": "octo",
  "repos": {
    "acme/web": [
      {"number": 12, "title": "Login", "author": "alice", "branch": "login",
       "comments": [{"author": "railway-app", "body": "[Web](https://web-pr-12.up.railway.app)"}]},
      {"number": 14, "title": "Logout", "author": "bob", "branch": "logout", "comments": []}],
    "acme/api": [{"number": 3, "title": "Rate limits", "author": "carol", "branch": "rl"}]
  },
  "owned": ["octo/dots"], "shared": ["acme/web", "acme/api"]
})JSON";

TEST(end_to_end, boot_fetches_every_repository_and_saves_the_learned_pattern) {
    testing::FakeGitHub server;
    std::string why;
    if (!server.start(fixture, why))
        GTEST_SKIP() << why;
    server.exportEnvironment("t");
    Scratch home;
    const std::string reposFile = home.path(".config/velmar/repos.tsv");
    testing::writeFile(reposFile, "acme/web\t\nacme/gone\t\nacme/api\thttps://api-{number}.test\n");
    const QByteArray saved[2] = {qgetenv("VELMAR_HOME"), qgetenv("SHELL")};
    qputenv("VELMAR_HOME", QByteArray::fromStdString(home.path()));
    qputenv("SHELL", "/bin/sh");

    MiniStore store;
    store.send(msg::Boot{});
    const auto finished = [&] {
        const Model& m = store.model;
        return m.reposLoaded && m.pathResolved && !m.fetchInFlight && m.gh == GhStatus::ok &&
               m.suggestions.size() == 3 &&
               std::all_of(m.repos.begin(), m.repos.end(),
                           [](const Repo& r) { return r.state == RepoState::ok; }) &&
               testing::readFile(reposFile).find("{number}.up") != std::string::npos;
    };
    const bool done = testing::waitUntil(finished, 60);
    qputenv("VELMAR_HOME", saved[0]);
    qputenv("SHELL", saved[1]);
    ASSERT_TRUE(done);

    const Model& m = store.model;
    ASSERT_EQ(m.repos.size(), 3u);
    EXPECT_EQ(testing::readFile(reposFile),
              "acme/web\t\thttps://web-pr-{number}.up.railway.app\n"
              "acme/gone\t\n"
              "acme/api\thttps://api-{number}.test\n");
    struct Expected {
        std::int64_t count;
        bool failed;
    };
    const Expected expected[3] = {{2, false}, {0, true}, {1, false}};
    for (std::size_t i = 0; i < 3; ++i) {
        SCOPED_TRACE(m.repos[i].name);
        EXPECT_EQ(m.repos[i].count, expected[i].count);
        EXPECT_EQ(m.repos[i].failed, expected[i].failed);
    }
    std::vector<std::string> previews;
    for (const auto& pr : m.prs)
        previews.push_back(pr.preview);
    std::sort(previews.begin(), previews.end());
    EXPECT_EQ(previews, (std::vector<std::string>{"https://api-3.test", "https://web-pr-12.up.railway.app",
                                                  "https://web-pr-14.up.railway.app"}));
    EXPECT_TRUE(m.path.has_value());
}

}  // namespace
}  // namespace velmar
