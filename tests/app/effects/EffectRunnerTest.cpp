// The effect runner against the file system and stub programs: files,
// command lines, time limits, the search path probe and the hand-over of
// replies to the main thread.
#include <gtest/gtest.h>

#include <pwd.h>
#include <signal.h>
#include <unistd.h>

#include <QTest>
#include <filesystem>
#include <thread>

#include "EffectsTestSupport.h"
#include "Env.h"
#include "FileStore.h"
#include "Subprocess.h"

namespace velmar {
namespace {

using testing::RunnerHarness;
using testing::Scratch;
using Replies = std::vector<Msg>;

TEST(effect_runner, extract_path_takes_the_text_between_the_markers) {
    const std::vector<std::pair<std::string, std::string>> rows{
        {"__VELMAR_PATH__ /a b __VELMAR_END__", " /a b "},
        {"__VELMAR_PATH__/a__VELMAR_END__x__VELMAR_PATH__/b__VELMAR_END__", "/a"},
        {"__VELMAR_PATH__/usr/bin", ""},
        {"__VELMAR_END__/a__VELMAR_PATH__/b", ""},
        {"__VELMAR_PATH__usr:bin__VELMAR_END__", ""},
    };
    for (const auto& [output, expected] : rows)
        EXPECT_EQ(EffectRunner::extractPath(output), expected) << output;
}

TEST(effect_runner, files_are_read_and_written_in_order) {
    Scratch scratch;
    const std::string missingFolder = scratch.path("a/b/.config/velmar/repos.tsv"), old = scratch.path("old.tsv");
    const std::string underAFile = scratch.path("plain/repos.tsv");
    testing::writeFile(scratch.path("plain"), "a regular file, not a folder");
    testing::writeFile(scratch.path("latin1.tsv"), "caf\xE9\n");
    testing::writeFile(old, "old\n");
    using effect::ReadFile, effect::WriteFile, msg::FileRead, msg::FileWritten;
    const auto repos = ConfigFile::repos, settings = ConfigFile::settings;
    const std::vector<std::pair<Effect, Msg>> rows{
        {WriteFile{repos, missingFolder, "o/r\t\n"}, FileWritten{repos, true}},
        {ReadFile{repos, missingFolder}, FileRead{repos, "o/r\t\n"}},
        {WriteFile{settings, underAFile, "x"}, FileWritten{settings, false}},
        {ReadFile{repos, underAFile}, FileRead{repos, std::nullopt}},
        {ReadFile{ConfigFile::window, scratch.path("latin1.tsv")}, FileRead{ConfigFile::window, std::nullopt}},
        {ReadFile{repos, scratch.path()}, FileRead{repos, std::nullopt}},
        {WriteFile{settings, old, "new\n"}, FileWritten{settings, true}},
        {ReadFile{settings, old}, FileRead{settings, "new\n"}},
    };
    // All performed at once: the serial queue keeps each read behind the write before it.
    RunnerHarness harness;
    Replies expected;
    for (const auto& [effect, reply] : rows) {
        harness.runner->perform(effect);
        expected.push_back(reply);
    }
    ASSERT_TRUE(testing::waitUntil([&] { return harness.received.size() == rows.size(); }));
    EXPECT_EQ(harness.received, expected);
    // The atomic write leaves no temporary file behind.
    const std::filesystem::directory_iterator folder(scratch.path("a/b/.config/velmar"));
    EXPECT_EQ(std::distance(folder, {}), 1);
}

// gh's own answers are checked against the fake server; here, how it is called.
TEST(effect_runner, commands_are_answered_from_the_child) {
    Scratch scratch;
    const std::string args = scratch.path("args"), nowhere = scratch.path("empty");
    const std::string gh = scratch.stub("gh", "printf '%s\\n' \"$@\" > " + args + "; printf 'x\\ty\\n'; exit 4");
    struct Row {
        Effect effect;
        Msg reply;
        std::string ghArguments;  // the start of them; the jq program is left out
    };
    const std::vector<Row> rows{
        {effect::FetchPrs{"o/r", gh}, msg::PrsFetched{"o/r\nx\ty\n", false},
         "pr\nlist\n--repo\no/r\n--state\nopen\n--limit\n50\n--json\n"
         "number,title,author,headRefName,isDraft,url,comments\n--jq\n"},
        {effect::FetchPrs{"o/r", nowhere}, msg::PrsFetched{"o/r\n", false}, ""},
        {effect::FetchSuggestions{SuggestionSource::shared, gh}, msg::SuggestionsFetched{SuggestionSource::shared, "x\ty\n", false},
         "api\n--method\nGET\nuser/repos\n-f\naffiliation=collaborator,organization_member\n-f\n"
         "per_page=100\n--jq\n.[].full_name\n"},
        {effect::FetchSuggestions{SuggestionSource::owned, gh}, msg::SuggestionsFetched{SuggestionSource::owned, "x\ty\n", false},
         "repo\nlist\n--limit\n100\n--json\nnameWithOwner\n--jq\n.[].nameWithOwner\n"},
        {effect::GhPreflight{gh}, msg::GhChecked{4}, "auth\nstatus\n"},
        {effect::BrewProbe{scratch.stub("brew", "exit 0")}, msg::BrewProbed{true}, ""},
        {effect::BrewProbe{nowhere}, msg::BrewProbed{false}, ""},
    };
    RunnerHarness harness;
    for (const auto& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.effect));
        std::filesystem::remove(args);
        EXPECT_EQ(harness.perform(row.effect), Replies{row.reply});
        EXPECT_TRUE(testing::readFile(args).starts_with(row.ghArguments)) << testing::readFile(args);
    }
}

TEST(effect_runner, children_past_their_time_limit_are_answered_once) {
    Scratch scratch, escaping;
    const std::string pidFile = scratch.path("escaped.pid"), loginShell = scratch.path("login");
    const std::string hangs = scratch.stub("gh", "exec /bin/sleep 60");
    // A descendant in a session of its own keeps the output open past SIGTERM.
    const std::string escapes = escaping.stub(
        "gh", "/usr/bin/setsid /bin/sh -c 'echo $$ > " + pidFile + "; exec /bin/sleep 60' & exec /bin/sleep 60");
    const auto owned = SuggestionSource::owned;
    const std::vector<std::tuple<std::string, Effect, Msg>> rows{  // the login shell's script, effect, reply
        {"", effect::FetchPrs{"o/r", hangs}, msg::PrsFetched{"o/r\n", false}},
        {"", effect::GhPreflight{hangs}, msg::GhChecked{15}},
        {"", effect::FetchSuggestions{owned, escapes}, msg::SuggestionsFetched{owned, "", false}},
        {"printf 'hello\\n__VELMAR_PATH__/opt/x:/bin__VELMAR_END__bye'; exit 3", effect::ResolvePath{},
         msg::PathResolved{"/opt/x:/bin"}},
        {"[ \"$1 $2 $3\" = '-l -i -c' ] && eval \"$4\"", effect::ResolvePath{},
         msg::PathResolved{qgetenv("PATH").toStdString()}},
        {"printf nothing", effect::ResolvePath{}, msg::PathResolved{""}},
        {"trap '' TERM; sleep 3; sleep 3", effect::ResolvePath{}, msg::PathResolved{""}},
    };
    testing::EnvGuard env({{"SHELL", loginShell}});
    RunnerHarness harness(EffectRunner::Limits{0.3, 0.5, 0.3, 0.8});
    for (const auto& [shell, effect, reply] : rows) {
        testing::writeFile(loginShell, "#!/bin/sh\n" + shell + "\n", true);
        EXPECT_EQ(harness.perform(effect, 1, 10), Replies{reply}) << shell;
    }
    ::kill(std::stoi(testing::readFile(pidFile)), SIGKILL);
    // Whichever came second, the child's answer or the watchdog, said nothing.
    ASSERT_TRUE(testing::drainReplies(15));
    EXPECT_EQ(harness.received.size(), rows.size());
}

TEST(effect_runner, home_and_login_shell_follow_the_environment_when_set_and_not_empty) {
    using Home = std::optional<std::string>;
    const std::vector<std::tuple<Home, Home, std::string>> rows{
        {std::nullopt, "/home/u", "/home/u"},
        {"", "/home/u", "/home/u"},
        {"/tmp/v", "/home/u", "/tmp/v"},
        {"", "", ::getpwuid(::getuid())->pw_dir},  // the password database
    };
    RunnerHarness harness;
    for (const auto& [velmarHome, home, expected] : rows) {
        testing::EnvGuard env({{"VELMAR_HOME", velmarHome}, {"HOME", home}});
        EXPECT_EQ(harness.perform(effect::ResolveHome{}), Replies{msg::HomeResolved{expected}});
    }
    // The login shell asked for PATH: SHELL unless unset or empty.
    for (const auto& [shell, expected] : std::vector<std::pair<std::optional<std::string>, std::string>>{
             {std::nullopt, "/bin/zsh"}, {"", "/bin/zsh"}, {"/bin/bash", "/bin/bash"}}) {
        testing::EnvGuard env({{"SHELL", shell}});
        EXPECT_EQ(Env::loginShell(), expected);
    }
}

TEST(effect_runner, replies_are_queued_in_order_and_dropped_once_the_runner_is_gone) {
    RunnerHarness harness;
    harness.runner->reply(msg::GhChecked{1});
    std::thread([&] {
        for (int i = 2; i <= 50; ++i)
            harness.runner->reply(msg::GhChecked{i});
    }).join();
    harness.runner->perform(effect::ResolveHome{});
    EXPECT_TRUE(harness.received.empty()) << "a reply was delivered synchronously";
    ASSERT_TRUE(testing::waitUntil([&] { return harness.received.size() == 51; }));
    for (int i = 1; i <= 50; ++i)
        EXPECT_EQ(harness.received[static_cast<std::size_t>(i) - 1], Msg(msg::GhChecked{i}));

    Scratch scratch;
    const std::string done = scratch.path("done");
    harness.runner->perform(effect::GhPreflight{scratch.stub("gh", "/bin/sleep 0.3; : > " + done)});
    harness.runner->reply(msg::GhChecked{99});
    harness.runner.reset();
    ASSERT_TRUE(testing::waitUntil([&] { return std::filesystem::exists(done); }));
    ASSERT_TRUE(testing::drainReplies());
    EXPECT_EQ(harness.received.size(), 51u);
}

// Alive and not a zombie waiting to be reaped.
bool alive(const std::string& pid) {
    const std::string stat = testing::readFile("/proc/" + pid + "/stat");
    const auto close = stat.rfind(')');
    return close != std::string::npos && close + 2 < stat.size() && stat[close + 2] != 'Z';
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    for (std::size_t end; (end = text.find('\n', start)) != std::string::npos; start = end + 1)
        lines.push_back(text.substr(start, end - start));
    return lines;
}

TEST(effect_runner, a_hung_gh_is_one_process_at_most_and_ends_with_its_limit) {
    Scratch scratch;
    const std::string pids = scratch.path("pids");
    // Not the last command, so neither shell can replace itself with sleep.
    const std::string gh = scratch.stub("gh", "echo $$ >> " + pids + "; /bin/sleep 1000; exit 0");
    struct Row {
        const char* what;
        Effect effect;
        Msg stopped;
    };
    const std::vector<Row> rows{
        {"preflight", effect::GhPreflight{gh}, msg::GhChecked{15}},
        {"pull requests", effect::FetchPrs{"o/r", gh}, msg::PrsFetched{"o/r\n", false}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        std::filesystem::remove(pids);
        RunnerHarness harness(EffectRunner::Limits{1.0, 1.0, 10, 11});
        // The first-run screen asks again while the first check still hangs.
        const int asks = std::holds_alternative<effect::GhPreflight>(row.effect) ? 5 : 1;
        for (int i = 0; i < asks; ++i)
            harness.runner->perform(row.effect);
        std::size_t mostAlive = 0;
        const auto liveGh = [&] {
            std::size_t n = 0;
            for (const auto& pid : linesOf(testing::readFile(pids)))
                n += alive(pid) ? 1 : 0;
            mostAlive = std::max(mostAlive, n);
            return n;
        };
        ASSERT_TRUE(testing::waitUntil([&] { return liveGh() == 1; }, 10));
        ASSERT_TRUE(testing::waitUntil([&] { liveGh(); return !harness.received.empty(); }, 10));
        EXPECT_EQ(harness.received, Replies{row.stopped});
        EXPECT_TRUE(testing::waitUntil([&] { return liveGh() == 0; }, 5)) << "gh outlived its limit";
        EXPECT_EQ(mostAlive, 1u);
        EXPECT_EQ(linesOf(testing::readFile(pids)).size(), 1u);
        // Once it is gone, the next check starts afresh.
        harness.runner->perform(row.effect);
        ASSERT_TRUE(testing::waitUntil([&] { return linesOf(testing::readFile(pids)).size() == 2; }, 10));
        Subprocess::endAll(1.0);
        EXPECT_TRUE(testing::waitUntil([&] { return liveGh() == 0; }, 5)) << "quitting left gh running";
    }
}

TEST(effect_runner, a_file_that_could_not_be_read_is_kept_once_before_a_save) {
    struct Row {
        const char* what;
        std::optional<std::string> before;  // absent: no file
        std::optional<std::string> olderKeep;
        std::optional<std::string> keptAfter;  // absent: no keep beside
    };
    const std::string latin1 = "acme/caf\xE9\t\n", big(FileStore::maxFileSize + 1, 'a');
    const std::vector<Row> rows{
        {"not UTF-8", latin1, std::nullopt, latin1},
        {"too large", big, std::nullopt, big},
        {"an older keep stays", latin1, "first\n", "first\n"},
        {"readable", "o/r\t\n", std::nullopt, std::nullopt},
        {"missing", std::nullopt, std::nullopt, std::nullopt},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        Scratch scratch;
        const std::string path = scratch.path("repos.tsv"), keep = path + ".unreadable";
        if (row.before)
            testing::writeFile(path, *row.before);
        if (row.olderKeep)
            testing::writeFile(keep, *row.olderKeep);
        RunnerHarness harness;
        QStringList kept;
        QObject::connect(harness.runner.get(), &EffectRunner::unreadableKept,
                         [&](const QString& name) { kept << name; });
        const Replies written{msg::FileWritten{ConfigFile::repos, true}};
        for (const char* contents : {"new/one\t\n", "new/two\t\n"})
            EXPECT_EQ(harness.perform(effect::WriteFile{ConfigFile::repos, path, contents}), written);
        EXPECT_EQ(testing::readFile(path), "new/two\t\n");
        EXPECT_EQ(std::filesystem::exists(keep), row.keptAfter.has_value());
        if (row.keptAfter)
            EXPECT_EQ(testing::readFile(keep), *row.keptAfter);
        const bool keptNow = row.keptAfter.has_value() && !row.olderKeep.has_value();
        EXPECT_EQ(kept, keptNow ? QStringList{"repos.tsv"} : QStringList{});
    }
}

}  // namespace
}  // namespace velmar
