// The headless driver against golden transcripts: every tests/data/headless/NAME.in
// is replayed and compared byte for byte with NAME.out. To re-record on purpose,
// run with VELMAR_RECORD=1 and review the diff.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "Headless.h"

namespace fs = std::filesystem;

namespace {

const fs::path goldenDir = fs::path(VELMAR_TEST_DATA) / "headless";

std::string readFile(const fs::path& p) {
    std::ifstream in(p, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

// The same splitting as the program's entry: lines end at "\n", and a last
// line without one still counts.
std::vector<std::string> splitLines(const std::string& data) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < data.size()) {
        std::size_t end = data.find('\n', start);
        if (end == std::string::npos) end = data.size();
        lines.push_back(data.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

std::string transcript(const std::vector<std::string>& lines) {
    std::string out;
    for (const auto& line : velmar::Headless::run(lines)) out += line + "\n";
    return out;
}

std::vector<std::string> scriptNames() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(goldenDir))
        if (entry.path().extension() == ".in") names.push_back(entry.path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

bool recording() {
    const char* v = std::getenv("VELMAR_RECORD");
    return v && std::string(v) == "1";
}

}  // namespace

class headless_golden : public testing::TestWithParam<std::string> {};

TEST_P(headless_golden, transcript_matches) {
    const fs::path in = goldenDir / (GetParam() + ".in");
    const fs::path out = goldenDir / (GetParam() + ".out");
    std::string actual = transcript(splitLines(readFile(in)));
    if (recording()) {
        std::ofstream(out, std::ios::binary) << actual;
        GTEST_SKIP() << "recorded " << out;
    }
    ASSERT_TRUE(fs::exists(out)) << out << " is missing; record it with VELMAR_RECORD=1";
    EXPECT_EQ(actual, readFile(out)) << "replaying " << in;
}

INSTANTIATE_TEST_SUITE_P(scripts, headless_golden, testing::ValuesIn(scriptNames()),
                         [](const auto& info) { return info.param; });

TEST(headless, output_lines_and_numbering) {
    struct Row {
        const char* what;
        std::vector<std::string> in;
        std::vector<std::string> firstLines;  // before the Final line
    };
    const Row rows[] = {
        {"empty input", {}, {}},
        {"only blanks and comments", {"", " \t", "# {\"msg\":\"boot\"}", "\u3000\r", "  # x"}, {}},
        {"numbers count skipped lines",
         {"# c", "", "{\"msg\":\"nope\"}", "x", "{\"msg\":\"set_auto\"}"},
         {R"({"error":"unknown msg 'nope'","line":3})",
          R"({"error":"not valid JSON: unexpected character at byte 1","line":4})",
          R"({"error":"missing field 'on'","line":5})"}},
        {"a comment mark inside a message is not a comment", {"{\"msg\":\"#\"}"},
         {R"({"error":"unknown msg '#'","line":1})"}},
    };
    for (const auto& r : rows) {
        auto out = velmar::Headless::run(r.in);
        ASSERT_EQ(out.size(), r.firstLines.size() + 1) << r.what;
        for (std::size_t i = 0; i < r.firstLines.size(); ++i) EXPECT_EQ(out[i], r.firstLines[i]) << r.what;
        EXPECT_EQ(out.back().rfind(R"({"model":{"addOpen":false,)", 0), 0u) << r.what;
    }
}
