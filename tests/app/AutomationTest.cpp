// Reading the automation variables: delays, the replay array, and the names
// of further snapshot files.
#include <gtest/gtest.h>

#include <climits>

#include "DebugEnv.h"
#include "Snapshot.h"

using namespace velmar;

TEST(debug_env, a_delay_is_a_whole_number_or_not_set) {
    const std::vector<std::pair<const char*, std::optional<double>>> rows = {
        {nullptr, std::nullopt}, {"", std::nullopt},   {"2", 2.0},
        {"0.2", 0.2},            {"1e1", 10.0},        {"-3", -3.0},
        {"2s", std::nullopt},    {" 2", std::nullopt}, {"nan", std::nullopt},
        {"abc", std::nullopt},
    };
    for (auto [text, expected] : rows)
        EXPECT_EQ(DebugEnv::seconds(text), expected) << (text ? text : "(unset)");
    EXPECT_EQ(DebugEnv::seconds("inf"), std::numeric_limits<double>::infinity());
}

TEST(debug_env, timer_delays_start_at_once_for_the_past_and_saturate) {
    const std::vector<std::pair<double, int>> rows = {
        {-0.3, 0}, {0, 0}, {0.2, 200}, {4, 4000}, {8.5, 8500},
        {1e12, INT_MAX}, {std::numeric_limits<double>::infinity(), INT_MAX},
    };
    for (auto [seconds, ms] : rows) EXPECT_EQ(DebugEnv::timerMilliseconds(seconds), ms) << seconds;
}

TEST(debug_send, the_array_decodes_whole_or_not_at_all) {
    struct Row {
        const char* json;
        std::optional<std::vector<Msg>> expected;
    };
    const std::vector<Row> rows = {
        {R"([])", std::vector<Msg>{}},
        {R"([{"msg":"navigate","screen":"manage"},{"msg":"refresh"}])",
         std::vector<Msg>{msg::Navigate{Screen::manage}, msg::Refresh{}}},
        {R"([{"msg":"refresh"},{"msg":"nope"}])", std::nullopt},
        {R"([{"msg":"set_auto"}])", std::nullopt},
        {R"({"msg":"refresh"})", std::nullopt},
        {R"([{"msg":"refresh"})", std::nullopt},
        {"", std::nullopt},
    };
    for (const Row& row : rows) EXPECT_EQ(DebugEnv::decodeMessages(row.json), row.expected) << row.json;
}

TEST(snapshot, further_windows_are_numbered_beside_the_first) {
    const std::vector<std::pair<QString, QString>> rows = {
        {"a.png", "a-1.png"},
        {"/tmp/out/shot.png", "/tmp/out/shot-1.png"},
        {"/tmp/noext", "/tmp/noext-1.png"},
        {"/tmp/x.y/z.PNG", "/tmp/x.y/z-1.png"},
    };
    for (const auto& [path, expected] : rows) EXPECT_EQ(Snapshot::numberedPath(path, 1), expected);
    EXPECT_EQ(Snapshot::numberedPath("a.png", 12), "a-12.png");
}
