// The list side as a user and a screen reader meet it: what is drawn for a
// model, what each control and menu item sends, and what a refresh keeps.
#include <gtest/gtest.h>

#include <QQuickItem>
#include <QTest>

#include "ScreenHarness.h"

namespace velmar::testing {
namespace {

using Sent = std::vector<std::string>;

Model twoRepos() {
    Model m = readyModel();
    m.repos = {repo(1, "acme/web", RepoState::ok, 2), repo(2, "acme/api", RepoState::loading, 0)};
    m.repos[1].failed = true;
    m.prs = {pr(1, 7, "Fix login", "https://web-pr-7.example.com", PreviewSource::comment),
             pr(1, 1234, "  Add <b>dark</b> mode &amp; more\n")};
    m.prs[1].isDraft = true;
    return m;
}

class list_screen : public ::testing::Test {
protected:
    ScreenHarness h;
};

TEST_F(list_screen, draws_headings_rows_and_marks_by_name_with_titles_in_one_column) {
    h.show(twoRepos());
    for (const char* name : {"acme/web", "acme/api", "Loading acme/api", "failed", "2 open",
                             "Open pull request #7", "Open pull request #1234", "Fix login",
                             "Add <b>dark</b> mode &amp; more", "draft", "Open preview for #7"})
        EXPECT_NE(h.find(name), nullptr) << name << " in " << h.names().join(" | ").toStdString();
    // No preview, no button; no count pill for a repository without pull requests.
    EXPECT_EQ(h.find("Open preview for #1234"), nullptr);
    EXPECT_EQ(h.find("0 open"), nullptr);
    EXPECT_EQ(h.find("No repos watched yet."), nullptr);
    const QRect short_ = h.find("Fix login")->rect();
    const QRect long_ = h.find("Add <b>dark</b> mode &amp; more")->rect();
    EXPECT_EQ(short_.left(), long_.left());
    EXPECT_EQ(short_.height(), long_.height());
    EXPECT_LE(short_.height(), 24);
}

TEST_F(list_screen, draft_marker_and_author_follow_the_width_class) {
    struct Row { int width; int maxMarkerWidth; int minMarkerWidth; bool authorShown; };
    for (Row row : {Row{260, 12, 0, false}, Row{360, 80, 20, false}, Row{520, 80, 20, true}}) {
        SCOPED_TRACE(row.width);
        h.show(twoRepos(), row.width);
        QAccessibleInterface* marker = h.find("draft");
        ASSERT_NE(marker, nullptr);
        EXPECT_GE(marker->rect().width(), row.minMarkerWidth);
        EXPECT_LE(marker->rect().width(), row.maxMarkerWidth);
        EXPECT_EQ(h.find("ana") != nullptr, row.authorShown);
    }
}

TEST_F(list_screen, yours_reads_its_blocked_count_and_shows_each_repository_where_there_is_room) {
    Model m = twoRepos();
    m.checks = true;
    m.yourPrs.emplace();
    const char* const slugs[] = {"acme-corporation-international/design-system-components", "ana/dotfiles"};
    for (int n = 1; n <= 2; ++n) {
        PR mine = pr(yoursGroupId, n, "Mine " + std::to_string(n));
        mine.id = -n;
        mine.repo = slugs[n - 1];
        if (n == 1) mine.conflicts = true;
        m.yourPrs->push_back(mine);
    }
    // The repository stands in the row from compact up; in the narrowest rows it is the tooltip.
    for (const auto& [width, shown] : {std::pair{260, false}, std::pair{360, true}, std::pair{520, true}}) {
        SCOPED_TRACE(width);
        h.show(m, width);
        EXPECT_NE(h.find("Yours, 2 open, 1 blocked", QAccessible::Heading), nullptr) << h.names().join(" | ").toStdString();
        EXPECT_NE(h.find("1 blocked"), nullptr);
        EXPECT_EQ(h.find("ana/dotfiles", QAccessible::StaticText) != nullptr, shown);
        // The row's own name carries it at every width.
        EXPECT_NE(h.find("Mine 2, ana/dotfiles", QAccessible::ListItem), nullptr);
        if (shown) {
            // A long name is cut, and the title keeps most of the row.
            QAccessibleInterface* label = h.find(slugs[0], QAccessible::StaticText);
            ASSERT_NE(label, nullptr);
            EXPECT_LE(label->rect().width(), width / 4 + 1);
        }
    }
}

TEST_F(list_screen, each_control_and_menu_item_sends_its_message) {
    Model m = twoRepos();
    m.browsers = {{1, "System default", "", "SD", false, true}, {2, "Firefox", "Firefox", "FI", true, true},
                  {3, "Chromium", "Chromium", "CH", true, true}};
    m.browserMode = BrowserMode::manual;
    m.selectedBrowser = 3;
    h.show(m);
    struct Row {
        const char* rightClickOn;  // empty: press the control itself
        const char* control;
        Sent sent;
    };
    const Row table[] = {
        {"", "Open pull request #7", {R"({"id":100007,"msg":"open_pr"})"}},
        {"", "Open preview for #7", {R"({"id":100007,"msg":"open_preview"})"}},
        {"", "Firefox", {R"({"id":2,"msg":"select_browser"})"}},
        {"", "Refresh", {R"({"msg":"refresh"})"}},
        {"", "Settings", {R"({"msg":"navigate","screen":"manage"})"}},
        {"", "Auto", {R"({"msg":"set_auto","on":true})"}},
        {"Open pull request #7", "Copy link", {R"({"id":100007,"msg":"copy_pr_link"})"}},
        {"acme/web", "Open on GitHub", {R"({"id":1,"msg":"open_repo"})"}},
        {"acme/web", "Copy Link", {R"({"id":1,"msg":"copy_repo_link"})"}},
        // The selected browser first, then one entry per offered browser, by id.
        {"Open preview for #7", "Open in Chromium", {R"({"id":100007,"msg":"open_preview"})"}},
        {"Open preview for #7", "Open in Firefox", {R"({"browser":2,"id":100007,"msg":"open_preview"})"}},
        {"Open preview for #7", "Copy preview URL", {R"({"id":100007,"msg":"copy_preview"})"}},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.control);
        h.takeSent();
        if (*row.rightClickOn) {
            h.rightClick(row.rightClickOn);
            EXPECT_TRUE(QTest::qWaitFor([&] { return h.find(row.control) != nullptr; }));
        }
        EXPECT_TRUE(h.press(row.control)) << h.names().join(" | ").toStdString();
        EXPECT_TRUE(QTest::qWaitFor([&] { return h.sentCount() > 0; }));
        Sent sent = h.takeSent();
        // Hover messages are the pointer's, not the control's.
        std::erase_if(sent, [](const std::string& s) { return s.find("hover_pr") != std::string::npos; });
        EXPECT_EQ(sent, row.sent);
    }
}

TEST_F(list_screen, what_stands_below_the_strip_follows_the_repositories) {
    struct Row { bool reposLoaded; bool hasRepos; bool empty; bool list; };
    for (Row row : {Row{false, false, false, false}, Row{true, false, true, false}, Row{true, true, false, true}}) {
        Model m = readyModel();
        m.reposLoaded = row.reposLoaded;
        if (row.hasRepos) m.repos = {repo(1, "acme/web")};
        h.show(m);
        EXPECT_EQ(h.find("No repos watched yet.") != nullptr, row.empty);
        EXPECT_EQ(h.find("acme/web") != nullptr, row.list);
        if (!row.empty) continue;
        h.takeSent();
        EXPECT_TRUE(h.press("Add repos"));
        EXPECT_EQ(h.takeSent(), Sent{R"({"msg":"navigate","screen":"manage"})"});
    }
}

TEST_F(list_screen, strip_marks_the_selected_browser_and_is_absent_without_browsers) {
    Model m = twoRepos();
    h.show(m);
    EXPECT_EQ(h.find("Open links in"), nullptr);
    // Open mode offers what runs: the system default never does.
    m.browsers = {{1, "System default", "", "SD", false, true}, {2, "Firefox", "Firefox", "FI", true, true},
                  {3, "Chromium", "Chromium", "CH", true, true}, {4, "Opera", "Opera", "OP", false, true}};
    m.selectedBrowser = 3;
    h.setModel(m);
    ASSERT_TRUE(QTest::qWaitFor([&] { return h.find("Open links in") != nullptr; }));
    ASSERT_NE(h.find("Firefox"), nullptr);
    ASSERT_NE(h.find("Chromium"), nullptr);
    EXPECT_TRUE(h.find("Chromium")->state().selected);
    EXPECT_FALSE(h.find("Firefox")->state().selected);
    EXPECT_EQ(h.find("System default"), nullptr);
    EXPECT_EQ(h.find("Opera"), nullptr);
}

TEST_F(list_screen, keyboard_reaches_rows_and_their_menus) {
    h.show(twoRepos());
    h.takeSent();
    // Tab through the window until the first number link has focus.
    QAccessibleInterface* link = h.find("Open pull request #7");
    ASSERT_NE(link, nullptr);
    for (int i = 0; i < 20 && !link->state().focused; ++i) QTest::keyClick(&h.view(), Qt::Key_Tab);
    ASSERT_TRUE(link->state().focused);
    QTest::keyClick(&h.view(), Qt::Key_Return);
    QTest::keyClick(&h.view(), Qt::Key_Space);
    EXPECT_EQ(h.takeSent(), (Sent{R"({"id":100007,"msg":"open_pr"})", R"({"id":100007,"msg":"open_pr"})"}));
    QTest::keyClick(&h.view(), Qt::Key_Menu);
    ASSERT_TRUE(QTest::qWaitFor([&] { return h.find("Copy link") != nullptr; }));
    QTest::keyClick(&h.view(), Qt::Key_Down);
    QTest::keyClick(&h.view(), Qt::Key_Return);
    EXPECT_EQ(h.takeSent(), Sent{R"({"id":100007,"msg":"copy_pr_link"})"});
}

TEST_F(list_screen, a_refresh_keeps_scroll_position_and_an_open_menu) {
    Model m = readyModel();
    for (int r = 1; r <= 5; ++r) {
        m.repos.push_back(repo(r, "acme/repo-" + std::to_string(r), RepoState::ok, 9));
        for (int n = 1; n <= 9; ++n) m.prs.push_back(pr(r, n, "Change " + std::to_string(n)));
    }
    h.show(m, 360);
    QQuickItem* flick = h.view().rootObject()->findChild<QQuickItem*>("prList");
    ASSERT_NE(flick, nullptr);
    flick->setProperty("contentY", 300);
    ASSERT_EQ(flick->property("contentY").toDouble(), 300);
    ASSERT_TRUE(QTest::qWaitFor([&] { return h.find("acme/repo-3") != nullptr; }));
    h.rightClick("acme/repo-3");
    ASSERT_TRUE(QTest::qWaitFor([&] { return h.find("Open on GitHub") != nullptr; }));

    // A refresh: every repository loading again, one row's title changed.
    for (Repo& r : m.repos) r.state = RepoState::queued;
    m.prs[3].title = "Renamed";
    h.setModel(m);
    EXPECT_TRUE(QTest::qWaitFor([&] { return h.find("Loading acme/repo-5") != nullptr; }));
    EXPECT_EQ(flick->property("contentY").toDouble(), 300);
    EXPECT_NE(h.find("Open on GitHub"), nullptr) << "the menu closed";
}

TEST(list_screen_pointer, hovering_a_number_tells_the_core_and_it_underlines) {
    ScreenHarness h;
    Model m = readyModel();
    m.repos = {repo(1, "acme/web", RepoState::ok, 1)};
    m.prs = {pr(1, 7, "Fix login")};
    h.show(m);
    h.takeSent();
    const QPoint link = h.view().mapFromGlobal(h.find("Open pull request #7")->rect().center());
    QTest::mouseMove(&h.view(), link);
    EXPECT_TRUE(QTest::qWaitFor([&] { return h.sentCount() == 1; }));
    QTest::mouseMove(&h.view(), QPoint(5, 300));
    EXPECT_TRUE(QTest::qWaitFor([&] { return h.sentCount() == 2; }));
    EXPECT_EQ(h.takeSent(), (std::vector<std::string>{R"({"id":100007,"msg":"hover_pr"})",
                                                      R"({"id":100007,"msg":"unhover_pr"})"}));
}

}  // namespace
}  // namespace velmar::testing
