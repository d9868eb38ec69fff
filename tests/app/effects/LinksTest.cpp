// Opening links, the clipboard and browser detection, through the runner
// where a reply is involved.
#include <gtest/gtest.h>

#include <QClipboard>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QProcess>
#include <QUrl>
#include <filesystem>

#include "DesktopEntry.h"
#include "EffectsTestSupport.h"
#include "Links.h"

namespace velmar {
namespace {

using testing::RunnerHarness;
using testing::Scratch;
using Args = std::optional<std::vector<std::string>>;

TEST(desktop_entry, exec_becomes_arguments_with_the_address) {
    const std::string url = "https://x.test/a?b=1&c=%20";
    const std::vector<std::pair<std::string, Args>> rows{
        {"/opt/b/brave --new-window %U", Args{{"/opt/b/brave", "--new-window", url}}},
        {"chromium %F --icon %i %c %k", Args{{"chromium", url, "--icon"}}},
        {"\"/opt/My Browser/run\" \"--flag=a \\\"b\\\"\" %u", Args{{"/opt/My Browser/run", "--flag=a \"b\"", url}}},
        {"web --url=%u --pct=100%%", Args{{"web", "--url=" + url, "--pct=100%"}}},
        {"web", Args{{"web", url}}},
        {"web \"\" %u", Args{{"web", "", url}}},
        {"\"unterminated %u", std::nullopt},
        {"%i", std::nullopt},
    };
    for (const auto& [exec, expected] : rows)
        EXPECT_EQ(DesktopEntry::commandLine(exec, url), expected) << exec;
}

TEST(desktop_entry, only_a_visible_main_group_with_exec_counts) {
    const std::vector<std::pair<std::string, std::optional<std::string>>> rows{
        {"# c\n[Desktop Entry]\nExec = a\\sb\\\\c %u\n[Desktop Action new]\nExec=other\n", "a b\\c %u"},
        {"[Desktop Action new]\nExec=other\n[Desktop Entry]\nName=F\n", std::nullopt},
        {"[Desktop Entry]\nExec=\n", std::nullopt},
    };
    for (const auto& [text, exec] : rows) {
        const auto entry = DesktopEntry::parse(text, "f.desktop");
        EXPECT_EQ(entry ? std::optional(entry->exec) : std::nullopt, exec) << text;
    }
}

// XDG folders and PATH pointing into a scratch folder.
struct DesktopSandbox {
    Scratch scratch;
    testing::EnvGuard env{{{"XDG_DATA_HOME", scratch.path("home")},
                           {"XDG_DATA_DIRS", scratch.path("sys1") + ":" + scratch.path("sys2")},
                           {"PATH", scratch.path("bin") + ":/usr/bin:/bin"}}};
    // A program that records its arguments in `name`.log.
    std::string recorder(const std::string& name) {
        const std::string log = scratch.path(name + ".log");
        scratch.stub(name, "printf '%s\\n' \"$@\" > " + log + ".new && mv " + log + ".new " + log);
        return scratch.path("bin/" + name);
    }
    void entry(const std::string& folder, const std::string& id, const std::string& exec,
               const std::string& extra = "") {
        testing::writeFile(scratch.path(folder + "/applications/" + id),
                           "[Desktop Entry]\nType=Application\nExec=" + exec + "\n" + extra);
    }
    std::string log(const std::string& name) {
        testing::waitUntil([&] { return std::filesystem::exists(scratch.path(name + ".log")); }, 10);
        return testing::readFile(scratch.path(name + ".log"));
    }
};

TEST(links, a_named_browser_is_launched_from_its_entry_or_its_executable) {
    DesktopSandbox s;
    s.entry("sys2", "firefox.desktop", s.recorder("fx") + " --new-tab %u");
    s.entry("sys1", "google-chrome.desktop", s.recorder("sys") + " %U");
    s.entry("home", "google-chrome.desktop", s.recorder("mine") + " %U");
    s.entry("sys1", "falkon.desktop", s.recorder("hidden") + " %u", "Hidden=true\n");
    s.recorder("falkon");
    s.entry("sys1", "opera.desktop", s.scratch.path("bin/gone") + " %u");
    const std::string url = "https://pr-7.example.com/a%20b", bare = "example.com/no-scheme";
    const std::vector<std::array<std::string, 4>> rows{  // address, app, recorder launched, its arguments
        {url, "Firefox", "fx", "--new-tab\n" + url + "\n"},
        {url, "Google Chrome", "sys", url + "\n"},
        {url, "Falkon", "falkon", url + "\n"},
        {url, "Opera"}, {url, "Brave"}, {url, "Unknown Browser"}, {bare, "Firefox"}, {bare, ""},
    };
    RunnerHarness harness;
    for (const auto& [address, app, launched, arguments] : rows) {
        const auto replies = harness.perform(effect::OpenURL{address, app}, launched.empty() ? 1 : 0, 10);
        EXPECT_EQ(replies, launched.empty() ? std::vector<Msg>{msg::OpenFailed{}} : std::vector<Msg>{}) << app;
        EXPECT_EQ(launched.empty() ? "" : s.log(launched), arguments) << app;
    }
    EXPECT_FALSE(std::filesystem::exists(s.scratch.path("mine.log")) || std::filesystem::exists(s.scratch.path("hidden.log")));
    EXPECT_EQ(harness.received.size(), 5u);
}

struct UrlCatcher : QObject {
    Q_OBJECT
public:
    std::vector<QUrl> urls;
public slots:
    void open(const QUrl& url) { urls.push_back(url); }
};

TEST(links, the_default_handler_opens_an_empty_app_and_the_clipboard_takes_text) {
    UrlCatcher catcher;
    QDesktopServices::setUrlHandler("https", &catcher, "open");
    RunnerHarness harness;
    harness.runner->perform(effect::OpenURL{"https://x.test/p?q=1", ""});
    harness.runner->perform(effect::CopyToClipboard{"gh auth login ✓"});
    QDesktopServices::unsetUrlHandler("https");
    EXPECT_EQ(catcher.urls, std::vector<QUrl>{QUrl("https://x.test/p?q=1")});
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QString::fromUtf8("gh auth login ✓"));
    ASSERT_TRUE(testing::drainReplies());
    EXPECT_TRUE(harness.received.empty());
}

TEST(links, only_web_addresses_reach_a_browser_or_the_default_handler) {
    DesktopSandbox s;
    s.entry("sys1", "firefox.desktop", s.recorder("fx") + " %u");
    UrlCatcher catcher;
    const std::vector<std::pair<std::string, bool>> rows{  // address, opened
        {"https://github.com/o/r/pull/1", true},
        {"HTTP://example.com/x", true},
        {"javascript:alert(1)", false},
        {"file:///etc/passwd", false},
        {"smb://host/share", false},
        {"x-scheme-handler://run", false},
        {"data:text/html,<b>x</b>", false},
        {"https:///no-host", false},
        {"//github.com/o/r", false},
    };
    for (const char* scheme : {"https", "http", "javascript", "file", "smb", "x-scheme-handler", "data"})
        QDesktopServices::setUrlHandler(scheme, &catcher, "open");
    RunnerHarness harness;
    for (const auto& [address, opened] : rows) {
        SCOPED_TRACE(address);
        for (const std::string app : {"", "Firefox"}) {
            catcher.urls.clear();
            std::filesystem::remove(s.scratch.path("fx.log"));
            const auto replies = harness.perform(effect::OpenURL{address, app}, opened ? 0 : 1, 10);
            EXPECT_EQ(replies, opened ? std::vector<Msg>{} : std::vector<Msg>{msg::OpenFailed{}}) << app;
            // A refused address is answered before any program could start.
            const bool reached = app.empty() ? !catcher.urls.empty()
                                 : opened    ? !s.log("fx").empty()
                                             : std::filesystem::exists(s.scratch.path("fx.log"));
            EXPECT_EQ(reached, opened) << app;
        }
    }
    for (const char* scheme : {"https", "http", "javascript", "file", "smb", "x-scheme-handler", "data"})
        QDesktopServices::unsetUrlHandler(scheme);
}

TEST(browser_detection, running_beats_installed_and_the_process_table_names_running_executables) {
    DesktopSandbox sandbox;
    sandbox.entry("sys1", "google-chrome.desktop", "google-chrome %U");
    sandbox.entry("home", "org.gnome.Epiphany.desktop", "epiphany %U");
    sandbox.entry("sys2", "firefox.desktop", "firefox %u");
    using D = DetectedBrowser;
    const std::vector<std::pair<std::set<std::string>, std::vector<D>>> rows{
        {{}, {D{"Firefox", false}, D{"Google Chrome", false}, D{"GNOME Web", false}}},
        {{"opera", "firefox-esr", "bash"},
         {D{"Firefox", true}, D{"Google Chrome", false}, D{"GNOME Web", false}, D{"Opera", true}}},
        {{"Firefox", "chrome"}, {D{"Firefox", false}, D{"Google Chrome", true}, D{"GNOME Web", false}}},
    };
    for (const auto& [running, expected] : rows)
        EXPECT_EQ(Links::detectBrowsers(running, DesktopEntry::applicationDirs()), expected);

    Scratch& fake = sandbox.scratch;
    testing::writeFile(fake.path("proc/41/comm"), "librewolf\n");
    testing::writeFile(fake.path("proc/self-ish/comm"), "ignored\n");
    std::filesystem::create_directories(fake.path("proc/42"));
    std::filesystem::create_symlink("/usr/lib/firefox/firefox (deleted)", fake.path("proc/42/exe"));
    EXPECT_EQ(Links::runningExecutables(fake.path("proc")), (std::set<std::string>{"librewolf", "firefox"}));
    // A real process: a copy of sleep that calls itself opera.
    std::filesystem::copy_file("/bin/sleep", fake.path("opera"));
    QProcess process;
    process.start(QString::fromStdString(fake.path("opera")), {"30"});
    ASSERT_TRUE(process.waitForStarted());
    const auto replies = RunnerHarness().perform(effect::DetectBrowsers{});
    process.kill();
    process.waitForFinished();
    ASSERT_EQ(replies.size(), 1u);
    const auto& found = std::get<msg::BrowsersDetected>(replies[0]).browsers;
    EXPECT_NE(std::find(found.begin(), found.end(), DetectedBrowser{"Opera", true}), found.end());
}

}  // namespace
}  // namespace velmar

#include "LinksTest.moc"
