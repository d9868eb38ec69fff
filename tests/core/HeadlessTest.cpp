// The headless driver against golden transcripts: every tests/data/headless/NAME.in
// is replayed and compared byte for byte with NAME.out. To re-record on purpose,
// run with VELMAR_RECORD=1 and review the diff.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>

#include "CoreTest.h"
#include "Headless.h"

namespace fs = std::filesystem;

namespace {

const fs::path goldenDir = fs::path(VELMAR_TEST_DATA) / "headless";

std::string readFile(const fs::path& p) { return velmar::test::testData("headless/" + p.filename().string()); }

/// Replays a script split as the program's entry does: lines end at "\n", and a
/// last line without one still counts. `first` goes before it when given.
std::vector<std::string> replay(const std::string& script, std::optional<std::string> first = std::nullopt) {
    std::vector<std::string> lines;
    if (first) lines.push_back(*first);
    std::istringstream in(script);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return velmar::Headless::run(lines);
}

std::vector<std::string> scriptNames() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(goldenDir))
        if (entry.path().extension() == ".in") names.push_back(entry.path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace

class headless_golden : public testing::TestWithParam<std::string> {};

TEST_P(headless_golden, transcript_matches) {
    const fs::path in = goldenDir / (GetParam() + ".in");
    const fs::path out = goldenDir / (GetParam() + ".out");
    std::string actual;
    for (const auto& line : replay(readFile(in))) actual += line + "\n";
    if (const char* v = std::getenv("VELMAR_RECORD"); v && std::string(v) == "1") {
        std::ofstream(out, std::ios::binary) << actual;
        GTEST_SKIP() << "recorded " << out;
    }
    ASSERT_TRUE(fs::exists(out)) << out << " is missing; record it with VELMAR_RECORD=1";
    EXPECT_EQ(actual, readFile(out)) << "replaying " << in;
}

// After an extras file that says off, every script gives the same lines:
// effects, statuses and the final model.
TEST_P(headless_golden, extras_off_changes_nothing) {
    const std::string script = readFile(goldenDir / (GetParam() + ".in"));
    auto off = replay(script, R"({"msg":"file_read","file":"extras","contents":"checks\t0\n"})");
    ASSERT_FALSE(off.empty());
    EXPECT_EQ(off.front(), R"({"effects":[],"msg":{"contents":"checks\t0\n","file":"extras","msg":"file_read"},)"
                           R"("status":"0 open PRs across 0 repos | Loading...","step":1})");
    off.erase(off.begin());
    EXPECT_EQ(off, replay(script, "# padding"));
}

INSTANTIATE_TEST_SUITE_P(scripts, headless_golden, testing::ValuesIn(scriptNames()),
                         [](const auto& info) { return info.param; });

// Blank lines, comments and numbering are replayed by driver_edges; these rows are not.
TEST(headless, blank_with_cr_skipped_and_comment_mark_inside_a_message_is_not_a_comment) {
    EXPECT_EQ(velmar::Headless::run({"\u3000\r", "  # x"}).size(), 1u);
    const auto out = velmar::Headless::run({"{\"msg\":\"#\"}"});
    ASSERT_EQ(out.size(), 2u);
    EXPECT_EQ(out[0], R"({"error":"unknown msg '#'","line":1})");
}
