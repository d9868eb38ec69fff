// Child processes: environment, standard streams, status, output repair,
// draining, the time limit and the one completion.
#include <gtest/gtest.h>

#include <future>
#include <thread>

#include "EffectsTestSupport.h"
#include "Subprocess.h"

namespace velmar {
namespace {

// Waits on a future, not the event loop: Subprocess needs none. A second
// completion would set the promise twice and end the test program.
struct Outcome {
    std::promise<std::optional<Subprocess::Result>> promise;
    std::future<std::optional<Subprocess::Result>> future = promise.get_future();
    std::thread::id thread;
    Subprocess::Completion completion() {
        return [this](std::optional<Subprocess::Result> r) {
            thread = std::this_thread::get_id();
            promise.set_value(std::move(r));
        };
    }
};

TEST(subprocess, reports_status_and_output_of_the_child) {
    const std::string inherited = qgetenv("PATH").toStdString();
    testing::EnvGuard env({{"VELMAR_PROBE", "kept"}});
    struct Row {
        std::vector<std::string> arguments;  // after "/bin/sh -c"
        std::int32_t status;
        std::string output;  // or its size, as "<n> bytes"
        std::optional<std::string> path = std::nullopt;
        std::optional<double> timeout = std::nullopt;
        bool capture = true;
    };
    const std::vector<Row> rows{
        {{"cat; echo err >&2; printf out; exit 3"}, 3, "out"},
        {{"printf %s \"$PATH\""}, 0, inherited, ""},
        {{"printf '%s %s' \"$PATH\" \"$VELMAR_PROBE\""}, 0, "/x:/y kept", "/x:/y"},
        {{"printf out"}, 0, "", std::nullopt, std::nullopt, false},
        {{"printf '%s|' \"$0\" \"$@\"", "zero", "a b", "$(id)", ";", ""}, 0, "zero|a b|$(id)|;||"},
        {{"printf 'a\\377b'; exit 1"}, 1, "a\xEF\xBF\xBD" "b"},
        {{"kill -KILL $$"}, 9, ""},
        // SIGTERM reaches the child's whole group: what it started ends with it.
        {{"(sleep 1; printf survived) & exec sleep 60"}, 15, "", std::nullopt, 0.3},
        {{"set -- $(cat /proc/$$/stat); [ \"$6\" = \"$$\" ] && printf own-session"}, 0, "own-session"},
        {{"printf quick"}, 0, "quick", std::nullopt, 0.2},
        {{"(sleep 1; printf late) & printf early"}, 0, "earlylate"},
        {{"head -c 20971520 /dev/zero | tr '\\0' x"}, 0, "20971520 bytes"},
        // Past the cap the child's group is killed and the output cut.
        {{"head -c 41943040 /dev/zero | tr '\\0' x"}, 9, "33554432 bytes"},
        {{"trap '' TERM; while :; do printf %065536d 0; done"}, 9, "33554432 bytes"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.arguments[0]);
        std::vector<std::string> arguments{"-c"};
        arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
        Outcome outcome;
        Subprocess::run("/bin/sh", arguments, row.path, row.capture, row.timeout, outcome.completion());
        ASSERT_EQ(outcome.future.wait_for(std::chrono::seconds(30)), std::future_status::ready);
        const auto result = outcome.future.get();
        ASSERT_TRUE(result.has_value());
        EXPECT_EQ(result->status, row.status);
        const std::string& out = result->stdout;
        EXPECT_EQ(out.size() > 1000 ? std::to_string(out.size()) + " bytes" : out, row.output);
        EXPECT_NE(outcome.thread, std::this_thread::get_id());
    }
}

TEST(subprocess, a_child_that_cannot_start_is_answered_before_run_returns) {
    testing::Scratch scratch;
    testing::writeFile(scratch.path("not-executable"), "#!/bin/sh\n");
    for (const std::string& program : {scratch.path("missing"), scratch.path("not-executable"), scratch.path()}) {
        Outcome outcome;
        Subprocess::run(program, {}, std::nullopt, true, 1.0, outcome.completion());
        ASSERT_EQ(outcome.future.wait_for(std::chrono::seconds(0)), std::future_status::ready) << program;
        EXPECT_FALSE(outcome.future.get().has_value());
        EXPECT_EQ(outcome.thread, std::this_thread::get_id());
    }
}

}  // namespace
}  // namespace velmar
