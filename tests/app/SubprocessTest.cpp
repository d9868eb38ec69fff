// Child processes: environment, standard streams, status, output repair,
// draining, the time limit and the one completion.
#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>
#include <thread>

#include "EffectsTestSupport.h"
#include "Subprocess.h"

namespace velmar {
namespace {

using testing::Scratch;

// Waits on a condition variable, not the event loop: Subprocess needs none.
struct Outcome {
    std::mutex lock;
    std::condition_variable changed;
    int calls = 0;
    std::optional<Subprocess::Result> result;
    std::thread::id thread;

    Subprocess::Completion completion() {
        return [this](std::optional<Subprocess::Result> r) {
            std::lock_guard guard(lock);
            ++calls;
            result = std::move(r);
            thread = std::this_thread::get_id();
            changed.notify_all();
        };
    }
    bool wait(double seconds = 30) {
        std::unique_lock held(lock);
        return changed.wait_for(held, std::chrono::duration<double>(seconds),
                                [&] { return calls > 0; });
    }
};

struct Row {
    const char* behaviour;
    std::string script;
    std::optional<std::string> path;
    bool capture;
    std::optional<double> timeout;
    std::int32_t status;
    std::optional<std::string> output;   // exact standard output
    std::size_t outputSize = 0;          // when no exact output is given
};

TEST(subprocess, reports_status_and_output_of_the_child) {
    const std::string inherited = qgetenv("PATH").toStdString();
    qputenv("VELMAR_PROBE", "kept");
    const std::vector<Row> rows{
        {"exit code and output", "printf out; exit 3", std::nullopt, true, std::nullopt, 3, "out"},
        {"empty path keeps PATH", "printf %s \"$PATH\"", "", true, std::nullopt, 0, inherited},
        {"path replaces PATH", "printf %s \"$PATH\"", "/x:/y", true, std::nullopt, 0, "/x:/y"},
        {"only PATH changes", "printf %s \"$VELMAR_PROBE\"", "/bin", true, std::nullopt, 0, "kept"},
        {"stdin is empty", "cat; printf done", std::nullopt, true, std::nullopt, 0, "done"},
        {"stderr is lost", "echo err >&2; printf out", std::nullopt, true, std::nullopt, 0, "out"},
        {"uncaptured output is empty", "printf out", std::nullopt, false, std::nullopt, 0, ""},
        {"invalid UTF-8 repaired", "printf 'a\\377b'; exit 1", std::nullopt, true, std::nullopt, 1,
         "a\xEF\xBF\xBD" "b"},
        {"signal number as status", "kill -KILL $$", std::nullopt, true, std::nullopt, 9, ""},
        {"time limit sends SIGTERM", "sleep 30", std::nullopt, true, 0.3, 15, ""},
        {"time limit reaches the shell's children", "sleep 30; printf never", std::nullopt, true, 0.3,
         15, ""},
        {"limit after the end does nothing", "printf quick", std::nullopt, true, 0.2, 0, "quick"},
        {"grandchild holding the pipe is waited for", "(sleep 1; printf late) & printf early",
         std::nullopt, true, std::nullopt, 0, "earlylate"},
        {"20 MB drained while running", "head -c 20971520 /dev/zero | tr '\\0' x", std::nullopt, true,
         std::nullopt, 0, std::nullopt, 20971520},
    };
    Scratch scratch;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.behaviour);
        testing::writeFile(scratch.path("child.sh"), row.script);
        Outcome outcome;
        Subprocess::run("/bin/sh", {scratch.path("child.sh")}, row.path, row.capture, row.timeout,
                        outcome.completion());
        ASSERT_TRUE(outcome.wait());
        ASSERT_TRUE(outcome.result.has_value());
        EXPECT_EQ(outcome.result->status, row.status);
        if (row.output)
            EXPECT_EQ(outcome.result->stdout, *row.output);
        else
            EXPECT_EQ(outcome.result->stdout.size(), row.outputSize);
        EXPECT_NE(outcome.thread, std::this_thread::get_id());
    }
    qunsetenv("VELMAR_PROBE");
}

TEST(subprocess, a_child_that_cannot_start_is_answered_before_run_returns) {
    Scratch scratch;
    testing::writeFile(scratch.path("not-executable"), "#!/bin/sh\n");
    for (const std::string& program : {scratch.path("missing"), scratch.path("not-executable"),
                                       scratch.path()}) {
        SCOPED_TRACE(program);
        Outcome outcome;
        Subprocess::run(program, {}, std::nullopt, true, 1.0, outcome.completion());
        EXPECT_EQ(outcome.calls, 1);
        EXPECT_FALSE(outcome.result.has_value());
        EXPECT_EQ(outcome.thread, std::this_thread::get_id());
    }
}

TEST(subprocess, arguments_reach_the_child_literally) {
    Outcome outcome;
    Subprocess::run("/bin/sh", {"-c", "printf '%s|' \"$0\" \"$@\"", "zero", "a b", "$(id)", ";", ""},
                    std::nullopt, true, std::nullopt, outcome.completion());
    ASSERT_TRUE(outcome.wait());
    EXPECT_EQ(outcome.result->stdout, "zero|a b|$(id)|;||");
}

}  // namespace
}  // namespace velmar
