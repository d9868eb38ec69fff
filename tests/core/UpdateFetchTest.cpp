// The fetch queue: one fetch at a time in list order, answers merged into the
// flat list of pull requests, learned patterns saved, and the flash cleared
// only when the last repository is in.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Formats.h"
#include "Json.h"
#include "Model.h"

namespace velmar {
namespace {

const std::string kHome = "/home/u";
const std::string kPath = "/usr/bin";

std::string base64(std::string_view in) {
    static constexpr char abc[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    std::size_t i = 0;
    for (; i + 2 < in.size(); i += 3) {
        const unsigned v = (unsigned char)in[i] << 16 | (unsigned char)in[i + 1] << 8 |
                           (unsigned char)in[i + 2];
        out += {abc[v >> 18], abc[v >> 12 & 63], abc[v >> 6 & 63], abc[v & 63]};
    }
    if (i + 1 == in.size()) {
        const unsigned v = (unsigned char)in[i] << 16;
        out += {abc[v >> 18], abc[v >> 12 & 63], '=', '='};
    } else if (i + 2 == in.size()) {
        const unsigned v = (unsigned char)in[i] << 16 | (unsigned char)in[i + 1] << 8;
        out += {abc[v >> 18], abc[v >> 12 & 63], abc[v >> 6 & 63], '='};
    }
    return out;
}

/// One output line as gh prints it; a non-empty preview becomes a bot comment.
std::string row(int number, std::string_view branch, std::string_view preview = "") {
    std::string line = std::to_string(number) + "\tTitle " + std::to_string(number) + "\tal\t" +
                       std::string(branch) + "\tfalse\thttps://github.com/x/pull/" +
                       std::to_string(number);
    if (!preview.empty()) line += "\t" + base64("[Web](" + std::string(preview) + ")");
    return line + "\n";
}

Repo repo(std::int64_t id, std::string name, RepoState state = RepoState::ok) {
    Repo r;
    r.id = id;
    r.name = std::move(name);
    r.state = state;
    return r;
}

/// Three watched repositories with the first one being fetched.
Model fetching() {
    Model m;
    m.home = kHome;
    m.path = kPath;
    m.pathResolved = true;
    m.reposLoaded = m.settingsLoaded = true;
    m.repos = {repo(1, "acme/web", RepoState::loading), repo(2, "acme/api", RepoState::queued),
               repo(3, "acme/docs", RepoState::queued)};
    m.nextRepoId = 4;
    m.fetchInFlight = true;
    return m;
}

Effect reposWrite(const Model& m) {
    return effect::WriteFile{ConfigFile::repos, configPath(ConfigFile::repos, kHome),
                             Formats::serializeRepos(m.repos)};
}

TEST(fetch_queue, start_next_picks_the_first_queued_only_when_allowed) {
    Model idle = fetching();
    idle.fetchInFlight = false;
    idle.repos[0].state = RepoState::ok;
    Model noPath = idle;
    noPath.pathResolved = false;
    Model allOk = idle;
    allOk.repos[1].state = allOk.repos[2].state = RepoState::ok;
    struct Case {
        const char* name;
        Model start;
        Effects effects;
        bool inFlight;
    } cases[] = {
        {"idle with a queue", idle, {effect::FetchPrs{"acme/api", kPath}}, true},
        {"path unresolved", noPath, {}, false},
        {"fetch in flight", fetching(), {}, true},
        {"nothing queued", allOk, {}, false},
    };
    for (auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.start.startNext(), c.effects);
        EXPECT_EQ(c.start.fetchInFlight, c.inFlight);
    }
    EXPECT_EQ(cases[0].start.repos[1].state, RepoState::loading);
}

TEST(fetch_queue, refresh_during_fetch_requeues_the_rest_and_waits) {
    Model m = fetching();
    m.repos[1].state = RepoState::ok;
    m.repos[1].failed = true;
    m.repos[0].failed = true;
    auto [next, effects] = update(m, msg::Refresh{});
    EXPECT_EQ(effects, (Effects{effect::GhPreflight{kPath}}));
    EXPECT_EQ(next.repos[0].state, RepoState::loading);  // its answer is on the way
    EXPECT_EQ(next.repos[1].state, RepoState::queued);
    EXPECT_FALSE(next.repos[0].failed);
    EXPECT_FALSE(next.repos[1].failed);

    // The answer then hands over to the first queued repository.
    std::tie(next, effects) = update(next, msg::PrsFetched{"acme/web\n", true});
    EXPECT_EQ(effects, (Effects{effect::FetchPrs{"acme/api", kPath}}));
}

TEST(fetch_queue, refresh_without_repositories_says_so) {
    Model m;
    auto [unresolved, e1] = update(m, msg::Refresh{});
    EXPECT_EQ(e1, Effects{});
    EXPECT_EQ(unresolved.flash, std::string(Flash::noRepos));
    m.pathResolved = true;
    auto [resolved, e2] = update(m, msg::Refresh{});
    EXPECT_EQ(e2, (Effects{effect::GhPreflight{std::nullopt}}));
}

TEST(fetch_queue, answer_replaces_rows_at_the_end_with_stable_ids) {
    Model m = fetching();
    PR other;
    other.id = 200001;
    other.repoId = 2;
    PR stale;
    stale.id = 100099;
    stale.repoId = 1;
    m.prs = {stale, other};

    const std::string out = "acme/web\n" + row(12, "feat/x", "https://web-pr-12.example.app/") + row(13, "fix");
    auto [next, effects] = update(m, msg::PrsFetched{out, true});
    ASSERT_EQ(next.prs.size(), 3u);
    EXPECT_EQ(next.prs[0], other);
    EXPECT_EQ(next.prs[1].id, 100012);
    EXPECT_EQ(next.prs[1].repo, "acme/web");
    EXPECT_EQ(next.prs[1].branch, "feat/x");
    EXPECT_EQ(next.prs[1].preview, "https://web-pr-12.example.app/");
    EXPECT_EQ(next.prs[1].previewSource, PreviewSource::comment);
    // The learned pattern already serves the row without a comment.
    EXPECT_EQ(next.prs[2].id, 100013);
    EXPECT_EQ(next.prs[2].preview, "https://web-pr-13.example.app/");
    EXPECT_EQ(next.prs[2].previewSource, PreviewSource::detected);
    EXPECT_EQ(next.repos[0].detectedPattern, "https://web-pr-{number}.example.app/");
    EXPECT_EQ(next.repos[0].count, 2);
    EXPECT_EQ(next.repos[0].state, RepoState::ok);
    // The learned pattern is saved before the next fetch goes out.
    EXPECT_EQ(effects, (Effects{reposWrite(next), effect::FetchPrs{"acme/api", kPath}}));

    // The same pattern learned again is not saved again, and ids stay.
    Model again = next;
    again.repos[0].state = RepoState::loading;
    again.repos[1].state = RepoState::queued;
    again.fetchInFlight = true;
    auto [after, e2] = update(again, msg::PrsFetched{out, true});
    EXPECT_EQ(e2, (Effects{effect::FetchPrs{"acme/api", kPath}}));
    EXPECT_EQ(after.prs[1].id, 100012);
}

TEST(fetch_queue, answers_that_change_little) {
    Model withRows = fetching();
    PR old;
    old.id = 100005;
    old.repoId = 1;
    withRows.prs = {old};
    withRows.repos[0].count = 1;
    struct Case {
        const char* name;
        Msg msg;
        std::vector<PR> prs;
        std::int64_t count;
        bool failed;
    } cases[] = {
        {"failed gh run with only the slug empties the rows", msg::PrsFetched{"acme/web\n", false}, {}, 0, true},
        {"spawn failure keeps the rows", msg::PrsSpawnFailed{}, {old}, 1, true},
        {"answer for a removed repository is dropped", msg::PrsFetched{"gone/repo\n" + row(1, "b"), true},
         {old}, 1, false},
    };
    for (auto& c : cases) {
        SCOPED_TRACE(c.name);
        auto [next, effects] = update(withRows, c.msg);
        EXPECT_EQ(next.prs, c.prs);
        EXPECT_EQ(next.repos[0].count, c.count);
        EXPECT_EQ(next.repos[0].failed, c.failed);
        EXPECT_EQ(effects, (Effects{effect::FetchPrs{"acme/api", kPath}}));
        EXPECT_TRUE(next.fetchInFlight);
    }
}

TEST(fetch_queue, flash_survives_until_the_last_answer) {
    for (bool spawnFails : {false, true}) {
        SCOPED_TRACE(spawnFails ? "spawn failures" : "answers");
        Model m = fetching();
        const std::vector<std::string> slugs{"acme/web", "acme/api", "acme/docs"};
        for (std::size_t i = 0; i < slugs.size(); ++i) {
            EXPECT_EQ(m.flash, std::string(Flash::loading)) << i;
            Msg answer = spawnFails ? Msg{msg::PrsSpawnFailed{}} : Msg{msg::PrsFetched{slugs[i] + "\n", true}};
            m = update(m, answer).first;
        }
        EXPECT_EQ(m.flash, std::nullopt);
        EXPECT_FALSE(m.fetchInFlight);
    }
}

}  // namespace
}  // namespace velmar
