// The fetch queue: answers merged into the flat list of pull requests, learned
// patterns saved, and the flash cleared only when the last repository is in.
// The headless transcripts replay refreshes, failed runs and stale answers.
#include <limits>

#include <gtest/gtest.h>

#include "CoreTest.h"
#include "Formats.h"

namespace velmar {
namespace {

using namespace test;

// A bot comment "[Web](https://web-pr-12.example.app/)" as the fetch command encodes it.
const std::string kComment12 = "W1dlYl0oaHR0cHM6Ly93ZWItcHItMTIuZXhhbXBsZS5hcHAvKQ==";

std::string line(int number, std::string_view comment = "") {
    return std::to_string(number) + "\tTitle\tal\tfeat/" + std::to_string(number) +
           "\tfalse\thttps://github.com/x/pull/" + std::to_string(number) +
           (comment.empty() ? "" : "\t" + std::string(comment)) + "\n";
}

/// Three watched repositories, the first one being fetched.
Model fetching() {
    Model m = watching({"acme/web", "acme/api", "acme/docs"}, false);
    m.repos[0] = Repo{1, "acme/web", "", RepoState::loading, 1, false, ""};
    m.repos[2] = Repo{3, "acme/docs", "", RepoState::ok, 0, true, ""};
    m.fetchInFlight = true;
    return m;
}

TEST(fetch_queue, answer_replaces_rows_at_the_end_and_learns_a_pattern) {
    Model m = fetching();
    m.prs = {row(1, 99), row(2, 1)};
    const std::string out = "acme/web\n" + line(12, kComment12) + line(13);
    auto [next, effects] = update(m, msg::PrsFetched{out, true});
    ASSERT_EQ(next.prs.size(), 3u);
    EXPECT_EQ(next.prs[0], row(2, 1));
    EXPECT_EQ(std::tie(next.prs[1].id, next.prs[1].repo, next.prs[1].preview, next.prs[1].previewSource),
              std::tuple(100012, "acme/web", "https://web-pr-12.example.app/", PreviewSource::comment));
    // The pattern learned from row 12 already serves row 13 of the same answer.
    EXPECT_EQ(std::tie(next.prs[2].preview, next.prs[2].previewSource),
              std::tuple("https://web-pr-13.example.app/", PreviewSource::detected));
    EXPECT_EQ(next.repos[0], (Repo{1, "acme/web", "", RepoState::ok, 2, false,
                                   "https://web-pr-{number}.example.app/"}));
    const Effect save = effect::WriteFile{ConfigFile::repos, "/home/u/.config/velmar/repos.tsv",
                                          Formats::serializeRepos(next.repos)};
    EXPECT_EQ(effects, (Effects{save, effect::FetchPrs{"acme/api", kPath}}));
    EXPECT_EQ(next.flash, std::string(Flash::loading)) << "until the last answer";
}

TEST(fetch_queue, the_largest_number_gives_a_wrapped_id_not_an_overflow) {
    const std::string out = "acme/web\n" + line(1).replace(0, 1, "9223372036854775807");
    const Model next = update(fetching(), msg::PrsFetched{out, true}).first;
    ASSERT_EQ(next.prs.size(), 1u);
    EXPECT_EQ(next.prs[0].id, std::numeric_limits<std::int64_t>::min() + 99999);
}

TEST(fetch_queue, a_name_listed_twice_gives_the_answer_to_the_copy_that_is_loading) {
    Model m = fetching();
    m.repos[0].state = RepoState::ok;
    m.repos[1] = Repo{2, "acme/web", "", RepoState::loading, 0, false, ""};
    const Model next = update(m, msg::PrsFetched{"acme/web\n" + line(7), true}).first;
    EXPECT_EQ(next.repos[0], m.repos[0]);
    EXPECT_EQ(next.repos[1], (Repo{2, "acme/web", "", RepoState::ok, 1, false, ""}));
    EXPECT_FALSE(next.isRefreshing());
}

TEST(fetch_queue, a_failed_spawn_keeps_the_rows_and_the_flash_waits_for_the_last_answer) {
    Model m = fetching();
    m.prs = {row(1, 5)};
    auto [next, effects] = update(m, msg::PrsSpawnFailed{});
    EXPECT_EQ(next.prs, m.prs);
    EXPECT_EQ(next.repos[0], (Repo{1, "acme/web", "", RepoState::ok, 1, true, ""}));
    EXPECT_EQ(effects, (Effects{effect::FetchPrs{"acme/api", kPath}}));

    for (const Msg& answer : {Msg{msg::PrsSpawnFailed{}}, Msg{msg::PrsFetched{"acme/api\n", true}}}) {
        m = next;
        EXPECT_EQ(m.flash, std::string(Flash::loading));
        m.apply(answer);
        EXPECT_EQ(std::tie(m.flash, m.fetchInFlight), std::tuple(std::nullopt, false));
    }
}

}  // namespace
}  // namespace velmar
