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

TEST(desktop_entry, exec_becomes_arguments_with_the_address) {
    const std::string url = "https://x.test/a?b=1&c=%20";
    const std::vector<std::pair<std::string, std::optional<std::vector<std::string>>>> rows{
        {"firefox %u", std::vector<std::string>{"firefox", url}},
        {"/opt/b/brave --new-window %U", std::vector<std::string>{"/opt/b/brave", "--new-window", url}},
        {"chromium %F --icon %i %c %k", std::vector<std::string>{"chromium", url, "--icon"}},
        {"\"/opt/My Browser/run\" \"--flag=a \\\"b\\\"\" %u",
         std::vector<std::string>{"/opt/My Browser/run", "--flag=a \"b\"", url}},
        {"web --url=%u --pct=100%%", std::vector<std::string>{"web", "--url=" + url, "--pct=100%"}},
        {"web", std::vector<std::string>{"web", url}},
        {"web \"\" %u", std::vector<std::string>{"web", "", url}},
        {"\"unterminated %u", std::nullopt},
        {"%i", std::nullopt},
    };
    for (const auto& [exec, expected] : rows)
        EXPECT_EQ(DesktopEntry::commandLine(exec, url), expected) << exec;
}

TEST(desktop_entry, only_a_visible_main_group_with_exec_counts) {
    const std::vector<std::pair<std::string, std::optional<std::string>>> rows{
        {"[Desktop Entry]\nName=F\nExec=firefox %u\n", "firefox %u"},
        {"# c\n[Desktop Entry]\nExec = a\\sb\\\\c %u\n[Desktop Action new]\nExec=other\n", "a b\\c %u"},
        {"[Desktop Action new]\nExec=other\n[Desktop Entry]\nName=F\n", std::nullopt},
        {"[Desktop Entry]\nExec=firefox\nHidden=true\n", std::nullopt},
        {"[Desktop Entry]\nExec=\n", std::nullopt},
    };
    for (const auto& [text, exec] : rows) {
        const auto entry = DesktopEntry::parse(text, "f.desktop");
        EXPECT_EQ(entry ? std::optional(entry->exec) : std::nullopt, exec) << text;
    }
}

// Environment for one test: XDG folders and PATH pointing into a scratch dir.
struct DesktopSandbox {
    Scratch scratch;
    QByteArray saved[3] = {qgetenv("XDG_DATA_HOME"), qgetenv("XDG_DATA_DIRS"), qgetenv("PATH")};
    DesktopSandbox() {
        qputenv("XDG_DATA_HOME", QByteArray::fromStdString(scratch.path("home")));
        qputenv("XDG_DATA_DIRS", QByteArray::fromStdString(scratch.path("sys1") + ":" + scratch.path("sys2")));
        qputenv("PATH", QByteArray::fromStdString(scratch.path("bin")) + ":/usr/bin:/bin");
    }
    ~DesktopSandbox() {
        const char* names[3] = {"XDG_DATA_HOME", "XDG_DATA_DIRS", "PATH"};
        for (int i = 0; i < 3; ++i) {
            if (saved[i].isNull()) qunsetenv(names[i]);
            else qputenv(names[i], saved[i]);
        }
    }
    // A recorder program that writes its arguments to `name`.log.
    std::string recorder(const std::string& name) {
        scratch.stub(name, "printf '%s\\n' \"$@\" > " + scratch.path(name + ".log"));
        return scratch.path("bin/" + name);
    }
    void entry(const std::string& folder, const std::string& id, const std::string& exec) {
        testing::writeFile(scratch.path(folder + "/applications/" + id),
                           "[Desktop Entry]\nType=Application\nExec=" + exec + "\n");
    }
    std::string log(const std::string& name) {
        testing::waitUntil([&] { return std::filesystem::exists(scratch.path(name + ".log")); }, 10);
        return testing::readFile(scratch.path(name + ".log"));
    }
};

TEST(links, a_named_browser_is_launched_from_its_entry_or_its_executable) {
    const std::string encoded = "https://pr-7.example.com/a%20b";
    struct Row {
        const char* behaviour;
        std::function<void(DesktopSandbox&)> setup;
        std::string app;
        std::string launched;  // which recorder ran
        std::string arguments;
    };
    const std::vector<Row> rows{
        {"system entry", [](DesktopSandbox& s) { s.entry("sys2", "firefox.desktop", s.recorder("fx") + " --new-tab %u"); },
         "Firefox", "fx", "--new-tab\n" + encoded + "\n"},
        {"user entry wins over the system's",
         [](DesktopSandbox& s) {
             s.entry("sys1", "google-chrome.desktop", s.recorder("sys") + " %U");
             s.entry("home", "google-chrome.desktop", s.recorder("mine") + " %U");
         },
         "Google Chrome", "mine", encoded + "\n"},
        {"no entry: the executable on PATH", [](DesktopSandbox& s) { s.recorder("vivaldi"); },
         "Vivaldi", "vivaldi", encoded + "\n"},
        {"hidden entry: the executable on PATH",
         [](DesktopSandbox& s) {
             testing::writeFile(s.scratch.path("sys1/applications/falkon.desktop"),
                                "[Desktop Entry]\nExec=" + s.recorder("other") + " %u\nHidden=true\n");
             s.recorder("falkon");
         },
         "Falkon", "falkon", encoded + "\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.behaviour);
        DesktopSandbox sandbox;
        row.setup(sandbox);
        RunnerHarness harness;
        harness.runner->perform(effect::OpenURL{encoded, row.app});
        EXPECT_EQ(sandbox.log(row.launched), row.arguments);
        EXPECT_TRUE(harness.received.empty());
    }
}

TEST(links, opening_fails_without_a_scheme_or_a_program) {
    DesktopSandbox sandbox;
    sandbox.entry("sys1", "opera.desktop", sandbox.scratch.path("bin/gone") + " %u");
    const std::vector<effect::OpenURL> rows{
        {"example.com/no-scheme", ""},
        {"example.com/no-scheme", "Firefox"},
        {"https://a b.test/", ""},
        {"https://x.test/", "Brave"},  // neither entry nor executable
        {"https://x.test/", "Opera"},  // entry whose program is gone
        {"https://x.test/", "Unknown Browser"},
    };
    RunnerHarness harness;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.url + " with " + row.app);
        const auto replies = harness.perform(row, 1, 10);
        ASSERT_EQ(replies.size(), 1u);
        EXPECT_EQ(replies[0], Msg(msg::OpenFailed{}));
    }
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
    ASSERT_EQ(catcher.urls.size(), 1u);
    EXPECT_EQ(catcher.urls[0], QUrl("https://x.test/p?q=1"));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QString::fromUtf8("gh auth login ✓"));
    testing::waitUntil([] { return false; }, 0.2);
    EXPECT_TRUE(harness.received.empty());
}

TEST(browser_detection, running_beats_installed_and_table_order_wins) {
    DesktopSandbox sandbox;
    sandbox.entry("sys1", "google-chrome.desktop", "google-chrome %U");
    sandbox.entry("home", "org.gnome.Epiphany.desktop", "epiphany %U");
    sandbox.entry("sys2", "firefox.desktop", "firefox %u");
    const auto dirs = DesktopEntry::applicationDirs();
    using D = DetectedBrowser;
    const std::vector<std::pair<std::set<std::string>, std::vector<D>>> rows{
        {{}, {D{"Firefox", false}, D{"Google Chrome", false}, D{"GNOME Web", false}}},
        {{"opera", "firefox-esr", "bash"},
         {D{"Firefox", true}, D{"Google Chrome", false}, D{"GNOME Web", false}, D{"Opera", true}}},
        {{"Firefox", "chrome"}, {D{"Firefox", false}, D{"Google Chrome", true}, D{"GNOME Web", false}}},
    };
    for (const auto& [running, expected] : rows)
        EXPECT_EQ(Links::detectBrowsers(running, dirs), expected);
}

TEST(browser_detection, the_process_table_names_running_executables) {
    Scratch fake;
    testing::writeFile(fake.path("proc/41/comm"), "librewolf\n");
    testing::writeFile(fake.path("proc/self-ish/comm"), "ignored\n");
    std::filesystem::create_directories(fake.path("proc/42"));
    std::filesystem::create_symlink("/usr/lib/firefox/firefox (deleted)", fake.path("proc/42/exe"));
    EXPECT_EQ(Links::runningExecutables(fake.path("proc")), (std::set<std::string>{"librewolf", "firefox"}));

    // A real process: a copy of sleep that calls itself firefox.
    Scratch bin;
    std::filesystem::copy_file("/bin/sleep", bin.path("firefox"));
    std::filesystem::permissions(bin.path("firefox"), std::filesystem::perms::owner_all);
    QProcess process;
    process.start(QString::fromStdString(bin.path("firefox")), {"30"});
    ASSERT_TRUE(process.waitForStarted());
    DesktopSandbox sandbox;  // no desktop entries at all
    RunnerHarness harness;
    const auto replies = harness.perform(effect::DetectBrowsers{});
    process.kill();
    process.waitForFinished();
    ASSERT_EQ(replies.size(), 1u);
    const auto* detected = std::get_if<msg::BrowsersDetected>(&replies[0]);
    ASSERT_NE(detected, nullptr);
    EXPECT_NE(std::find(detected->browsers.begin(), detected->browsers.end(), DetectedBrowser{"Firefox", true}),
              detected->browsers.end());
}

}  // namespace
}  // namespace velmar

#include "LinksTest.moc"
