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

#include "CommandLines.h"
#include "EffectsTestSupport.h"

namespace velmar {
namespace {

using testing::RunnerHarness;
using testing::Scratch;

TEST(effect_runner, extract_path_takes_the_text_between_the_markers) {
    const std::vector<std::pair<std::string, std::string>> rows{
        {"motd\n__VELMAR_PATH__/usr/bin:/bin__VELMAR_END__trailing", "/usr/bin:/bin"},
        {"__VELMAR_PATH__ /a b __VELMAR_END__", " /a b "},
        {"__VELMAR_PATH__/a__VELMAR_END__x__VELMAR_PATH__/b__VELMAR_END__", "/a"},
        {"__VELMAR_PATH__/usr/bin", ""},
        {"__VELMAR_END__/a__VELMAR_PATH__/b", ""},
        {"__VELMAR_PATH____VELMAR_END__", ""},
        {"__VELMAR_PATH__usr:bin__VELMAR_END__", ""},
        {"", ""},
    };
    for (const auto& [output, expected] : rows)
        EXPECT_EQ(EffectRunner::extractPath(output), expected) << output;
}

TEST(effect_runner, the_pull_request_script_is_stored_literally) {
    EXPECT_EQ(CommandLines::pullRequests.size(), 340u);
    EXPECT_TRUE(CommandLines::pullRequests.starts_with(R"(printf "%s\n" "$1"; gh pr list --repo "$1")"));
}

TEST(effect_runner, files_are_read_and_written_in_order) {
    Scratch scratch;
    const std::string missingFolder = scratch.path("a/b/.config/velmar/repos.tsv");
    const std::string underAFile = scratch.path("plain/repos.tsv");
    testing::writeFile(scratch.path("plain"), "a regular file, not a folder");
    testing::writeFile(scratch.path("latin1.tsv"), "caf\xE9\n");
    testing::writeFile(scratch.path("old.tsv"), "old\n");
    using effect::ReadFile, effect::WriteFile;
    using msg::FileRead, msg::FileWritten;
    const auto repos = ConfigFile::repos;
    const std::vector<std::pair<Effect, Msg>> rows{
        {WriteFile{repos, missingFolder, "o/r\t\n"}, FileWritten{repos, true}},
        {ReadFile{repos, missingFolder}, FileRead{repos, "o/r\t\n"}},
        {WriteFile{repos, underAFile, "x"}, FileWritten{repos, false}},
        {ReadFile{repos, underAFile}, FileRead{repos, std::nullopt}},
        {ReadFile{ConfigFile::window, scratch.path("latin1.tsv")}, FileRead{ConfigFile::window, std::nullopt}},
        {ReadFile{repos, scratch.path("nothing.tsv")}, FileRead{repos, std::nullopt}},
        {ReadFile{repos, scratch.path()}, FileRead{repos, std::nullopt}},
        {WriteFile{ConfigFile::settings, scratch.path("old.tsv"), "new\n"}, FileWritten{ConfigFile::settings, true}},
        {ReadFile{ConfigFile::settings, scratch.path("old.tsv")}, FileRead{ConfigFile::settings, "new\n"}},
    };
    // All performed at once: the serial queue must keep each read behind the
    // write before it.
    RunnerHarness harness;
    for (const auto& row : rows)
        harness.runner->perform(row.first);
    ASSERT_TRUE(testing::waitUntil([&] { return harness.received.size() == rows.size(); }));
    for (std::size_t i = 0; i < rows.size(); ++i)
        EXPECT_EQ(harness.received[i], rows[i].second) << "row " << i;
    // The atomic write leaves no temporary file behind.
    std::size_t entries = 0;
    for ([[maybe_unused]] const auto& e : std::filesystem::directory_iterator(scratch.path("a/b/.config/velmar")))
        ++entries;
    EXPECT_EQ(entries, 1u);
}

TEST(effect_runner, commands_are_answered_from_the_child) {
    Scratch scratch;
    const std::string args = scratch.path("args");
    // Records its arguments one per line, so a test can tell how gh was called.
    const std::string record = "printf '%s\\n' \"$@\" > " + args + "\n";
    const std::string ok = scratch.stub("gh", record + "printf '1\\tT\\ta\\tb\\tfalse\\tu\\t\\n'");
    Scratch failing;
    const std::string fails = failing.stub("gh", "exit 4");
    Scratch brew;
    const std::string withBrew = brew.stub("brew", "exit 0");
    const std::string nowhere = scratch.path("empty");
    const std::string slug = "o/r; touch " + scratch.path("pwned") + " $(id) `id` \"";

    struct Row {
        const char* behaviour;
        Effect effect;
        Msg reply;
        std::string ghArguments;  // empty: not checked
    };
    const std::vector<Row> rows{
        {"rows with the slug line", effect::FetchPrs{"o/r", ok},
         msg::PrsFetched{"o/r\n1\tT\ta\tb\tfalse\tu\t\n", true},
         "pr\nlist\n--repo\no/r\n--state\nopen\n--limit\n50\n--json\n"
         "number,title,author,headRefName,isDraft,url,comments\n--jq\n"},
        {"a slug is one literal argument", effect::FetchPrs{slug, ok},
         msg::PrsFetched{slug + "\n1\tT\ta\tb\tfalse\tu\t\n", true},
         "pr\nlist\n--repo\n" + slug + "\n--state\n"},
        {"failing gh keeps the slug line", effect::FetchPrs{"o/r", fails}, msg::PrsFetched{"o/r\n", false}, ""},
        {"gh not found", effect::FetchPrs{"o/r", nowhere}, msg::PrsFetched{"o/r\n", false}, ""},
        {"owned suggestions", effect::FetchSuggestions{SuggestionSource::owned, ok},
         msg::SuggestionsFetched{SuggestionSource::owned, "1\tT\ta\tb\tfalse\tu\t\n", true},
         "repo\nlist\n--limit\n100\n--json\nnameWithOwner\n--jq\n.[].nameWithOwner\n"},
        {"shared suggestions", effect::FetchSuggestions{SuggestionSource::shared, ok},
         msg::SuggestionsFetched{SuggestionSource::shared, "1\tT\ta\tb\tfalse\tu\t\n", true},
         "api\n--method\nGET\nuser/repos\n-f\naffiliation=collaborator,organization_member\n-f\n"
         "per_page=100\n--jq\n.[].full_name\n"},
        {"failed suggestions", effect::FetchSuggestions{SuggestionSource::shared, fails},
         msg::SuggestionsFetched{SuggestionSource::shared, "", false}, ""},
        {"gh checked", effect::GhPreflight{ok}, msg::GhChecked{0}, "auth\nstatus\n"},
        {"gh refused", effect::GhPreflight{fails}, msg::GhChecked{4}, ""},
        {"gh missing", effect::GhPreflight{nowhere}, msg::GhChecked{127}, ""},
        {"brew found", effect::BrewProbe{withBrew}, msg::BrewProbed{true}, ""},
        {"brew missing", effect::BrewProbe{nowhere}, msg::BrewProbed{false}, ""},
    };
    RunnerHarness harness;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.behaviour);
        std::filesystem::remove(args);
        const auto replies = harness.perform(row.effect);
        ASSERT_EQ(replies.size(), 1u);
        EXPECT_EQ(replies[0], row.reply);
        if (!row.ghArguments.empty()) {
            const std::string seen = testing::readFile(args);
            // The jq program is long; its presence is checked by the script's size.
            EXPECT_TRUE(seen.starts_with(row.ghArguments)) << seen;
        }
    }
    EXPECT_FALSE(std::filesystem::exists(scratch.path("pwned")));
}

TEST(effect_runner, a_hanging_gh_is_bounded_and_answered_as_failed) {
    Scratch scratch;
    const std::string pidFile = scratch.path("escaped.pid");
    const std::string hangs = scratch.stub("gh", "exec /bin/sleep 60");
    Scratch escaping;
    // A descendant in a session of its own keeps the output open past SIGTERM.
    const std::string escapes = escaping.stub(
        "gh", "/usr/bin/setsid /bin/sh -c 'echo $$ > " + pidFile + "; exec /bin/sleep 60' & exec /bin/sleep 60");
    const std::vector<std::pair<Effect, Msg>> rows{
        {effect::FetchPrs{"o/r", hangs}, msg::PrsFetched{"o/r\n", false}},
        {effect::FetchPrs{"o/r", escapes}, msg::PrsFetched{"o/r\n", false}},
        {effect::GhPreflight{hangs}, msg::GhChecked{15}},
        {effect::FetchSuggestions{SuggestionSource::owned, escapes},
         msg::SuggestionsFetched{SuggestionSource::owned, "", false}},
    };
    RunnerHarness harness(EffectRunner::Limits{0.3, 0.5, 10, 11});
    for (const auto& [effect, reply] : rows) {
        const auto replies = harness.perform(effect, 1, 10);
        ASSERT_EQ(replies.size(), 1u);
        EXPECT_EQ(replies[0], reply);
        if (std::filesystem::exists(pidFile)) {
            ::kill(std::stoi(testing::readFile(pidFile)), SIGKILL);
            std::filesystem::remove(pidFile);
        }
    }
    // Whichever came second, the child's answer or the watchdog, said nothing.
    QTest::qWait(1000);
    EXPECT_EQ(harness.received.size(), rows.size());
}

TEST(effect_runner, resolve_path_answers_once_from_the_login_shell_or_the_watchdog) {
    Scratch scratch;
    const std::string loginShell = scratch.path("bin/login");
    struct Row {
        const char* behaviour;
        std::string shell;
        std::string path;
    };
    const std::vector<Row> rows{
        {"markers among noise", "printf 'hello\\n__VELMAR_PATH__/opt/x:/bin__VELMAR_END__bye'; exit 3",
         "/opt/x:/bin"},
        {"arguments are -l -i -c and the line",
         "[ \"$1 $2 $3\" = '-l -i -c' ] && eval \"$4\"", qgetenv("PATH").toStdString()},
        {"no markers", "printf nothing", ""},
        {"survives SIGTERM", "trap '' TERM; sleep 3; sleep 3", ""},
    };
    const QByteArray savedShell = qgetenv("SHELL");
    RunnerHarness harness(EffectRunner::Limits{30, 2, 0.3, 0.8});
    for (const auto& row : rows) {
        SCOPED_TRACE(row.behaviour);
        testing::writeFile(loginShell, "#!/bin/sh\n" + row.shell + "\n", true);
        qputenv("SHELL", QByteArray::fromStdString(loginShell));
        const auto replies = harness.perform(effect::ResolvePath{}, 1, 10);
        ASSERT_EQ(replies.size(), 1u);
        EXPECT_EQ(replies[0], Msg(msg::PathResolved{row.path}));
    }
    qputenv("SHELL", savedShell);
    QTest::qWait(1200);
    EXPECT_EQ(harness.received.size(), rows.size());
}

TEST(effect_runner, home_follows_velmar_home_when_set_and_not_empty) {
    const QByteArray savedHome = qgetenv("HOME");
    const QByteArray savedVelmar = qgetenv("VELMAR_HOME");
    struct Row {
        std::optional<std::string> velmarHome, home;
        std::string expected;
    };
    const std::vector<Row> rows{
        {std::nullopt, "/home/u", "/home/u"},
        {"", "/home/u", "/home/u"},
        {"/tmp/v", "/home/u", "/tmp/v"},
        {"", "", ::getpwuid(::getuid())->pw_dir},  // the password database
    };
    RunnerHarness harness;
    for (const auto& row : rows) {
        if (row.velmarHome) qputenv("VELMAR_HOME", QByteArray::fromStdString(*row.velmarHome));
        else qunsetenv("VELMAR_HOME");
        qputenv("HOME", QByteArray::fromStdString(*row.home));
        const auto replies = harness.perform(effect::ResolveHome{});
        ASSERT_EQ(replies.size(), 1u);
        EXPECT_EQ(replies[0], Msg(msg::HomeResolved{row.expected}));
    }
    qputenv("HOME", savedHome);
    if (savedVelmar.isNull()) qunsetenv("VELMAR_HOME");
    else qputenv("VELMAR_HOME", savedVelmar);
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
        EXPECT_EQ(harness.received[static_cast<std::size_t>(i - 1)], Msg(msg::GhChecked{i}));

    Scratch scratch;
    const std::string done = scratch.path("done");
    const std::string slow = scratch.stub("gh", "/bin/sleep 0.3; : > " + done);
    harness.runner->perform(effect::GhPreflight{slow});
    harness.runner->reply(msg::GhChecked{99});
    harness.runner.reset();
    ASSERT_TRUE(testing::waitUntil([&] { return std::filesystem::exists(done); }));
    QTest::qWait(300);
    EXPECT_EQ(harness.received.size(), 51u);
}

}  // namespace
}  // namespace velmar
