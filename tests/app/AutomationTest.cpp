// Reading the automation variables: delays, the replay array, and the names
// of further snapshot files.
#include <gtest/gtest.h>

#include <climits>

#include "DebugEnv.h"
#include "Snapshot.h"

using namespace velmar;

TEST(debug_env, delays_are_whole_numbers_and_timers_start_at_once_for_the_past_and_saturate) {
    const std::vector<std::pair<const char*, std::optional<double>>> rows = {
        {nullptr, std::nullopt}, {"", std::nullopt},    {"0.2", 0.2},         {"1e1", 10.0},
        {"2s", std::nullopt},    {" 2", std::nullopt},  {"nan", std::nullopt}, {"abc", std::nullopt},
    };
    for (auto [text, expected] : rows)
        EXPECT_EQ(DebugEnv::seconds(text), expected) << (text ? text : "(unset)");
    EXPECT_EQ(DebugEnv::seconds("inf"), std::numeric_limits<double>::infinity());

    const std::vector<std::pair<double, int>> timers = {
        {-0.3, 0}, {0, 0}, {0.0001, 1}, {8.5, 8500}, {1e12, INT_MAX},
        {std::numeric_limits<double>::infinity(), INT_MAX},
    };
    for (auto [seconds, ms] : timers) EXPECT_EQ(DebugEnv::timerMilliseconds(seconds), ms) << seconds;
}

TEST(debug_send, the_array_decodes_whole_or_not_at_all) {
    const std::vector<std::pair<const char*, std::optional<std::vector<Msg>>>> rows = {
        {R"([])", std::vector<Msg>{}},
        {R"([{"msg":"navigate","screen":"manage"},{"msg":"refresh"}])",
         std::vector<Msg>{msg::Navigate{Screen::manage}, msg::Refresh{}}},
        {R"([{"msg":"refresh"},{"msg":"nope"}])", std::nullopt},
        // Numbers read as in a headless script: by their digits, not a rounded double.
        {R"([{"msg":"open_pr","id":2e3}])", std::vector<Msg>{msg::OpenPr{2000}}},
        {R"([{"msg":"open_pr","id":-9223372036854775809}])", std::nullopt},
        {R"({"msg":"refresh"})", std::nullopt},
        {"", std::nullopt},
    };
    for (const auto& [json, expected] : rows) EXPECT_EQ(DebugEnv::decodeMessages(json), expected) << json;
}

TEST(snapshot, further_windows_are_numbered_beside_the_first) {
    const std::vector<std::pair<QString, QString>> rows = {
        {"/tmp/out/shot.png", "/tmp/out/shot-1.png"},
        {"/tmp/noext", "/tmp/noext-1.png"},
        {"/tmp/x.y/z.PNG", "/tmp/x.y/z-1.png"},
    };
    for (const auto& [path, expected] : rows) EXPECT_EQ(Snapshot::numberedPath(path, 1), expected);
    EXPECT_EQ(Snapshot::numberedPath("a.png", 12), "a-12.png");
}
