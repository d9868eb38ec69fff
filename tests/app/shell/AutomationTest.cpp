// Reading the automation variables: delays, the replay array, and the names
// of further snapshot files.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>

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

TEST(debug_env, the_start_delay_is_the_click_delay_else_one_after_the_replay_else_five) {
    struct Row {
        const char* click;
        const char* send;
        double start;
    };
    const Row table[] = {
        {nullptr, nullptr, 5}, {nullptr, "2", 3}, {"2", "10", 2}, {"x", "2", 3}, {"", "", 5}, {"0", nullptr, 0},
    };
    for (const Row& row : table) EXPECT_EQ(DebugEnv::startDelay(row.click, row.send), row.start);
}

TEST(debug_env, click_points_keep_the_pieces_of_exactly_two_numbers) {
    using Points = std::vector<std::pair<double, double>>;
    const std::vector<std::pair<const char*, Points>> rows = {
        {nullptr, {}},
        {"", {}},
        // The middle piece is no number, the last has a blank after its comma.
        {"10,20;abc;30, 40", {{10, 20}, {30, 40}}},
        {";;5,6;;", {{5, 6}}},
        {"1,2,3;4;\t7 ,\t8 ", {{7, 8}}},
        {"1,,2", {{1, 2}}},
        {"1,x,2", {{1, 2}}},
        {"1e1,-2.5", {{10, -2.5}}},
        {"1 2,3", {}},
    };
    for (const auto& [text, want] : rows) EXPECT_EQ(DebugEnv::clickPoints(text), want) << (text ? text : "(unset)");
    const auto odd = DebugEnv::clickPoints("inf,nan");
    ASSERT_EQ(odd.size(), 1u);
    EXPECT_TRUE(std::isinf(odd[0].first));
    EXPECT_TRUE(std::isnan(odd[0].second));
}

TEST(debug_env, a_drag_needs_exactly_four_numbers_and_a_key_sixteen_bits) {
    using Drag = std::optional<std::array<double, 4>>;
    const std::vector<std::pair<const char*, Drag>> drags = {
        {nullptr, std::nullopt},
        {"1,2,3", std::nullopt},
        {"1,2,3,4,5", std::nullopt},
        {"10, 20 ,30,\t40", std::array<double, 4>{10, 20, 30, 40}},
        {"10,20;30,40", std::nullopt},
        {"1,2,x,3,4", std::array<double, 4>{1, 2, 3, 4}},
    };
    for (const auto& [text, want] : drags) EXPECT_EQ(DebugEnv::dragPoints(text), want) << (text ? text : "(unset)");

    const std::vector<std::pair<const char*, std::optional<int>>> keys = {
        {nullptr, std::nullopt}, {"", std::nullopt},       {"53", 53},          {"0", 0},
        {"65535", 65535},        {"65536", std::nullopt},  {"-1", std::nullopt}, {"5.3", std::nullopt},
        {" 53", std::nullopt},   {"999999", std::nullopt}, {"00053", 53},
    };
    for (const auto& [text, want] : keys) EXPECT_EQ(DebugEnv::keyCode(text), want) << (text ? text : "(unset)");
}

TEST(debug_env, log_integers_cut_the_fraction_and_survive_what_is_no_integer) {
    const double inf = std::numeric_limits<double>::infinity();
    const std::vector<std::pair<double, std::string>> rows = {
        {12.9, "12"},       {-12.9, "-12"}, {-0.5, "0"}, {0, "0"},
        {1e300, "9223372036854775807"}, {-1e300, "-9223372036854775808"},
        {inf, "inf"},       {-inf, "-inf"}, {std::nan(""), "nan"},
    };
    for (const auto& [value, text] : rows) EXPECT_EQ(DebugEnv::logInteger(value), text) << value;
}
