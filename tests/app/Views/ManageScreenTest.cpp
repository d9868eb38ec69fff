// The settings side as a user and a screen reader meet it: what each gh state
// offers, what every control sends, the popovers' opening and closing, and
// keyboard focus. The Store records messages instead of running the core, so
// every change of the model here is the test's own.
#include <gtest/gtest.h>

#include <functional>

#include <QQuickItem>
#include <QQuickWindow>
#include <QRegularExpression>
#include <QTest>

#include "ScreenHarness.h"

namespace velmar::testing {
namespace {

using Sent = std::vector<std::string>;

Browser browser(std::int64_t id, const std::string& name, const std::string& app, bool shown) {
    return {id, name, app, app.empty() ? "SD" : name.substr(0, 2), false, shown};
}

// On the settings screen with three repositories: one with its own pattern
// (and a learned one), one with a learned pattern only, one with none.
Model settings() {
    Model m = readyModel();
    m.screen = Screen::manage;
    m.repos = {repo(1, "acme/web"), repo(2, "acme/docs"), repo(3, "acme/site")};
    m.repos[0].pattern = "https://web-{number}.example.com";
    m.repos[0].detectedPattern = "https://learned-web-{number}.example.com";
    m.repos[1].detectedPattern = "https://docs-{branch}.example.com";
    m.browsers = {browser(1, "System default", "", true), browser(2, "Firefox", "Firefox", true),
                  browser(3, "Chromium", "Chromium", false)};
    m.browserMode = BrowserMode::manual;
    m.suggestions = {{"ana/notes", true}, {"ana/dotfiles", true}, {"acme/web", false}, {"team/tools", false}};
    return m;
}

class manage_screen : public ::testing::Test {
protected:
    // The settings slot slides in; wait until it stands.
    void show(const Model& m, int width = 520) {
        h.show(m, width);
        EXPECT_TRUE(h.settle());
        h.takeSent();
    }
    void setModel(const Model& m) {
        h.setModel(m);
        EXPECT_TRUE(h.drawn());
    }
    QString fieldText(const QString& name) {
        QQuickItem* field = h.item(name);
        return field == nullptr ? QStringLiteral("<no field>") : field->property("text").toString();
    }
    std::string names() { return h.names().join(" | ").toStdString(); }

    ScreenHarness h;
};

TEST_F(manage_screen, gh_guidance_follows_the_gh_state_under_the_row_it_helps) {
    // With brew, its command instead of the page.
    const std::tuple<GhStatus, bool, QStringList> table[] = {
        {GhStatus::ok, false, {}},
        {GhStatus::missing, false, {"Install instructions"}},
        {GhStatus::missing, true, {"Copy command brew install gh", "Other ways to install"}},
        {GhStatus::loggedOut, true, {"Copy command gh auth login"}},
    };
    const QStringList allGuidance = {"Install instructions", "Copy command brew install gh",
                                     "Other ways to install", "Copy command gh auth login"};
    for (const auto& [gh, brew, guidance] : table) {
        SCOPED_TRACE(std::string(jsonText(gh)) + (brew ? " with brew" : ""));
        Model m = settings();
        m.gh = gh;
        m.brewInstalled = brew;
        show(m);
        for (const QString& name : allGuidance)
            EXPECT_EQ(h.find(name) != nullptr, guidance.contains(name)) << name.toStdString();
        // The install guidance stands under the first row, the login well under the second.
        if (guidance.isEmpty()) continue;
        const QRect help = h.find(guidance.front())->rect(), signedIn = h.find("Signed in to GitHub")->rect();
        EXPECT_TRUE(gh == GhStatus::loggedOut ? help.top() > signedIn.bottom() : help.bottom() < signedIn.top());
    }
}

TEST_F(manage_screen, a_rows_own_pattern_wins_and_a_new_order_reaches_the_rows) {
    Model m = settings();
    show(m);
    // Its own pattern wins, unmarked; a learned one is marked; else none.
    EXPECT_EQ(h.find("https://learned-web-{number}.example.com"), nullptr);
    EXPECT_NE(h.find("No preview URL"), nullptr);
    EXPECT_EQ(h.names().count("Detected"), 1);
    // A move and a rename reach the rows, in the new order.
    std::swap(m.repos[0], m.repos[2]);
    m.repos[1].name = "acme/handbook";
    setModel(m);
    const QStringList shown = h.names().filter(QRegularExpression("^acme/"));
    EXPECT_EQ(shown, (QStringList{"acme/site", "acme/handbook", "acme/web"})) << names();
}

// The general switches wait for the settings file; a switch per browser,
// hidden ones too (their roles and states are the screen reader tests'), only
// in manual mode; the empty list's note only without repositories.
TEST_F(manage_screen, sections_show_only_while_they_apply) {
    const std::tuple<const char*, std::function<void(Model&)>, bool> table[] = {
        {"Refresh automatically", [](Model& m) { m.settingsLoaded = false; }, false},
        {"Chromium", [](Model& m) { m.browserMode = BrowserMode::open; }, false},
        {"Nothing watched yet.", [](Model& m) { m.repos.clear(); }, true},
    };
    for (const auto& [name, change, shownAfter] : table) {
        SCOPED_TRACE(name);
        Model m = settings();
        change(m);
        show(m);
        EXPECT_EQ(h.find(name) != nullptr, shownAfter);
        EXPECT_NE(h.find("Appearance"), nullptr);
        setModel(settings());
        QTRY_VERIFY((h.find(name) != nullptr) != shownAfter);  // a section slides open or shut
    }
    EXPECT_EQ(h.find("Refresh automatically")->state().checked, settings().autoRefresh);
}

TEST_F(manage_screen, each_control_and_menu_item_sends_its_message) {
    Model m = settings();
    m.gh = GhStatus::loggedOut;
    m.checks = true;
    m.notify = m.notifyNew = m.notifyReview = true;
    m.notifyChecks = false;
    show(m);
    struct Row {
        const char* open;  // a control pressed first, or right-clicked with "menu:"
        const char* control;
        Sent sent;
    };
    const Row table[] = {
        {"", "Add a repo", {R"({"msg":"open_add"})"}},
        {"", "Edit acme/docs", {R"({"msg":"edit_pattern","repo_id":2})"}},
        {"menu:acme/docs", "Edit Preview URL\u2026", {R"({"msg":"edit_pattern","repo_id":2})"}},
        {"menu:acme/docs", "Copy Name", {R"({"id":2,"msg":"copy_repo_name"})"}},
        {"menu:acme/docs", "Remove", {R"({"id":2,"msg":"remove_repo"})"}},
        {"Show in picker", "Open Browsers", {R"({"mode":"open","msg":"set_browser_mode"})"}},
        {"", "Chromium", {R"({"id":3,"msg":"toggle_browser_shown"})"}},
        {"", "System default", {R"({"id":1,"msg":"toggle_browser_shown"})"}},
        {"Appearance", "Light", {R"({"appearance":"light","msg":"set_appearance"})"}},
        {"Appearance", "Auto", {R"({"appearance":"system","msg":"set_appearance"})"}},
        {"", "Refresh automatically", {R"({"msg":"set_auto","on":true})"}},
        {"", "Copy command gh auth login", {R"({"command":"gh auth login","msg":"copy_command"})"}},
        {"", "Show my pull requests", {R"({"msg":"set_yours","on":false})"}},
        {"", "Notifications", {R"({"msg":"set_notify","on":false})"}},
        {"", "New pull requests", {R"({"kind":"new_prs","msg":"set_notify_kind","on":false})"}},
        {"", "Checks finished on my pull requests", {R"({"kind":"checks","msg":"set_notify_kind","on":true})"}},
        {"", "Review requested from me", {R"({"kind":"review","msg":"set_notify_kind","on":false})"}},
        {"", "Icon in the system tray", {R"({"msg":"set_tray","on":true})"}},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.control);
        const QString open = QString::fromUtf8(row.open);
        if (open.startsWith("menu:")) {
            h.rightClick(open.mid(5));
        } else if (!open.isEmpty()) {
            ASSERT_TRUE(h.press(open)) << names();
        }
        QTRY_VERIFY(h.find(row.control) != nullptr);
        EXPECT_TRUE(h.press(row.control)) << names();
        EXPECT_EQ(h.waitSent(), row.sent);
        QTRY_VERIFY(h.find(row.control, QAccessible::MenuItem) == nullptr);  // a menu closes behind its choice
    }
    // The switches toggle through the accessible toggle action too.
    QAccessibleInterface* chromium = h.find("Chromium");
    ASSERT_NE(chromium, nullptr);
    chromium->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(h.takeSent(), Sent{R"({"id":3,"msg":"toggle_browser_shown"})"});
}

TEST_F(manage_screen, switches_that_need_checks_are_greyed_and_send_nothing_until_checks_are_on) {
    Model m = settings();
    show(m);
    const QString needs = QStringLiteral("Needs \u201cChecks, reviews and deployments\u201d on.");
    for (const char* name : {"Show my pull requests", "Notifications", "Icon in the system tray"}) {
        SCOPED_TRACE(name);
        ASSERT_NE(h.find(name), nullptr) << names();
        // Qt Quick 6.4 reports no disabled state to assistive tools: the description says it.
        EXPECT_FALSE(h.find(name)->text(QAccessible::Description).isEmpty());
        EXPECT_FALSE(h.item(name)->isEnabled());
        h.press(name);
    }
    EXPECT_EQ(h.find("Notifications")->text(QAccessible::Description), needs);
    EXPECT_TRUE(h.find("Show my pull requests")->state().checked) << "shown as it would be";
    EXPECT_EQ(h.find("New pull requests"), nullptr) << "the kinds show only while notifications are on";
    EXPECT_TRUE(h.drawn());
    EXPECT_EQ(h.takeSent(), Sent{});

    m.checks = true;
    m.yours = false;
    setModel(m);
    QTRY_VERIFY(h.item("Show my pull requests")->isEnabled());
    EXPECT_EQ(h.find("Show my pull requests")->text(QAccessible::Description), "");
    QTRY_VERIFY(!h.find("Show my pull requests")->state().checked);
    EXPECT_TRUE(h.press("Show my pull requests"));
    EXPECT_EQ(h.takeSent(), (Sent{R"({"msg":"set_yours","on":true})"}));
}

TEST_F(manage_screen, pickers_mark_the_current_choice) {
    Model m = settings();
    m.appearance = Appearance::light;
    show(m);
    ASSERT_TRUE(h.press("Appearance"));
    QTRY_VERIFY(h.find("Dark", QAccessible::MenuItem) != nullptr);
    EXPECT_NE(h.find("Light", QAccessible::StaticText), nullptr) << "the picker shows its choice";
    for (auto [name, checked] : {std::pair{"Dark", false}, {"Light", true}, {"Auto", false}}) {
        QAccessibleInterface* entry = h.find(name, QAccessible::MenuItem);
        ASSERT_NE(entry, nullptr) << name;
        EXPECT_TRUE(entry->state().checkable) << name;
        EXPECT_EQ(entry->state().checked, checked) << name;
    }
    QTest::keyClick(&h.view(), Qt::Key_Escape);
    QTRY_VERIFY_WITH_TIMEOUT(h.find("Dark", QAccessible::MenuItem) == nullptr, 2000);
    EXPECT_EQ(h.takeSent(), Sent{}) << "Escape closed only the menu";
}

TEST_F(manage_screen, add_popover_sends_each_message_and_lists_what_the_filter_leaves) {
    Model m = settings();
    m.addOpen = true;
    show(m);
    ASSERT_NE(h.item("Repository slug"), nullptr) << names();
    // acme/web is watched, so not offered; a shared one says so.
    EXPECT_EQ(h.find("Add acme/web, shared"), nullptr);
    EXPECT_NE(h.find("Add ana/notes"), nullptr);
    EXPECT_FALSE(h.item("Add")->isEnabled()) << "Add waits for a slug";

    const std::pair<const char*, Sent> table[] = {
        {"Add team/tools, shared", {R"({"msg":"pick_suggestion","name":"team/tools"})"}},
        {"Done", {R"({"msg":"close_add"})"}},
    };
    for (const auto& [control, sent] : table) {
        EXPECT_TRUE(h.press(control)) << control << ": " << names();
        EXPECT_EQ(h.takeSent(), sent) << control;
    }

    // The core's filter leaves one, then none.
    m.addText = "dot";
    setModel(m);
    EXPECT_EQ(fieldText("Repository slug"), "dot");
    EXPECT_NE(h.find("Add ana/dotfiles"), nullptr);
    QTRY_VERIFY(h.find("Add ana/notes") == nullptr);  // rows leave as they fade
    m.addText = "zzz/";
    setModel(m);
    QTRY_VERIFY(h.find("No matching repos.") != nullptr);
    EXPECT_TRUE(h.item("Add")->isEnabled());
    EXPECT_TRUE(h.press("Add"));
    EXPECT_EQ(h.takeSent(), Sent{R"({"msg":"submit_add"})"});
}

TEST_F(manage_screen, the_keyboard_picks_suggestions_with_the_arrows) {
    Model m = settings();
    m.addOpen = true;
    show(m);
    // The field has the focus; "Add" waits for a slug, so Tab goes to the list.
    QTest::keyClick(&h.view(), Qt::Key_Tab);
    QAccessibleInterface* list = h.find("Suggestions");
    ASSERT_NE(list, nullptr);
    EXPECT_TRUE(list->state().focused);
    QTest::keyClick(&h.view(), Qt::Key_Down);
    QTest::keyClick(&h.view(), Qt::Key_Return);
    QTest::keyClick(&h.view(), Qt::Key_Down);
    QTest::keyClick(&h.view(), Qt::Key_Space);
    EXPECT_EQ(h.takeSent(), (Sent{R"({"msg":"pick_suggestion","name":"ana/dotfiles"})",
                                 R"({"msg":"pick_suggestion","name":"team/tools"})"}));
    QTest::keyClick(&h.view(), Qt::Key_Tab);
    EXPECT_TRUE(h.find("Done")->state().focused);
}

// Return submits. Escape or a press outside closes a popover and sends its
// close once; Escape in the pattern field is the field's, so the popover stays
// until the model ends the edit.
TEST_F(manage_screen, return_submits_and_escape_or_a_press_outside_closes_once) {
    const QPoint outside(20, 580);
    struct Row {
        bool add;  // else the pattern editor
        Qt::Key key;  // none: a press outside
        Sent sent;
        bool stays;
    };
    const Row table[] = {
        // Sent even when the slug cannot be added: the core answers with its flash.
        {true, Qt::Key_Return, {R"({"msg":"submit_add"})"}, true},
        {true, Qt::Key_Escape, {R"({"msg":"close_add"})"}, false},
        {true, Qt::Key_unknown, {R"({"msg":"close_add"})"}, false},
        {false, Qt::Key_Return, {R"({"msg":"save_pattern"})"}, true},
        {false, Qt::Key_Escape, {R"({"msg":"cancel_edit"})"}, true},
        {false, Qt::Key_unknown, {R"({"msg":"cancel_edit"})"}, false},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.sent.front());
        Model m = settings();
        m.addOpen = row.add;
        m.addText = "no";
        if (!row.add) m.editingRepo = 2;
        m.editText = "https://x/{number}";
        // Opened afresh: what the row before left open closes first.
        show(settings());
        QTRY_VERIFY(h.find("Repository slug") == nullptr && h.find("Preview URL pattern") == nullptr);
        setModel(m);
        const QString field = row.add ? "Repository slug" : "Preview URL pattern";
        QTRY_VERIFY(h.item(field) != nullptr && h.item(field)->hasActiveFocus());
        EXPECT_EQ(h.takeSent(), Sent{});
        if (row.key == Qt::Key_unknown) QTest::mouseClick(&h.view(), Qt::LeftButton, {}, outside);
        else QTest::keyClick(&h.view(), row.key);
        if (!row.stays) QTRY_VERIFY(h.find(field) == nullptr);
        EXPECT_EQ(h.waitSent(), row.sent);
        EXPECT_EQ(h.find(field) != nullptr, row.stays);
    }
}

TEST_F(manage_screen, pattern_editor_shows_the_repository_and_sends_each_message) {
    Model m = settings();
    m.editingRepo = 2;
    show(m);
    QQuickItem* field = h.item("Preview URL pattern");
    ASSERT_NE(field, nullptr) << names();
    EXPECT_EQ(field->property("placeholderText").toString(), "https://docs-{branch}.example.com");
    for (char c : {'a', 'b'}) QTest::keyClick(&h.view(), c);
    EXPECT_EQ(h.takeSent(), (Sent{R"({"msg":"edit_text","text":"a"})", R"({"msg":"edit_text","text":"ab"})"}));
    const std::pair<const char*, Sent> table[] = {
        {"Save", {R"({"msg":"save_pattern"})"}},
        {"Cancel", {R"({"msg":"cancel_edit"})"}},
        {"Remove", {R"({"id":2,"msg":"remove_repo"})"}},
    };
    for (const auto& [control, sent] : table) {
        EXPECT_TRUE(h.press(control)) << control << ": " << names();
        EXPECT_EQ(h.takeSent(), sent) << control;
    }
    EXPECT_EQ(h.find("Remove")->text(QAccessible::Description), "Stop watching acme/docs");

    // Without a learned pattern the placeholder is the example.
    m.editingRepo = 3;
    setModel(m);
    ASSERT_NE(h.item("Preview URL pattern"), nullptr);
    EXPECT_EQ(h.item("Preview URL pattern")->property("placeholderText").toString(),
              "https://myapp-pr-{number}.example.com");
    // Removing the edited repository ends the edit and takes its row away.
    m.editingRepo.reset();
    m.repos.erase(m.repos.begin() + 2);
    setModel(m);
    EXPECT_EQ(h.find("Preview URL pattern"), nullptr);
    EXPECT_EQ(h.find("acme/site"), nullptr);
    EXPECT_EQ(h.takeSent(), Sent{}) << "an edit the model moves or ends cancels nothing";
}

TEST_F(manage_screen, popovers_keep_every_control_inside_the_window_at_every_width) {
    const std::pair<bool, QStringList> cases[] = {
        {false, {"Preview URL pattern", "Remove", "Cancel", "Save"}},
        {true, {"Repository slug", "Add", "Done"}},
    };
    for (const auto& [add, controls] : cases)
        for (int width : {200, 260, 360, 520}) {
            SCOPED_TRACE((add ? "add popover at " : "pattern editor at ") + std::to_string(width));
            Model m = settings();
            m.addOpen = add;
            if (!add) m.editingRepo = 1;
            show(m, width);
            const QRect window(h.view().mapToGlobal(QPoint(0, 0)), h.view().size());
            for (const QString& name : controls) {
                QAccessibleInterface* control = h.find(name);
                ASSERT_NE(control, nullptr) << name.toStdString();
                EXPECT_TRUE(window.contains(control->rect())) << name.toStdString() << " lies outside the window";
            }
        }
}

TEST_F(manage_screen, the_watched_list_catches_up_with_what_changed_while_the_list_was_shown) {
    Model m = settings();
    m.screen = Screen::list;
    show(m);
    m.repos[2].detectedPattern = "https://site-{number}.example.com";
    setModel(m);
    m.screen = Screen::manage;
    setModel(m);
    QTRY_VERIFY(h.find("https://site-{number}.example.com") != nullptr);
}

TEST_F(manage_screen, a_refresh_changes_a_row_in_place_and_keeps_its_editor) {
    Model m = settings();
    m.editingRepo = 3;
    show(m);
    QQuickItem* row = h.item("acme/site");
    ASSERT_NE(row, nullptr);
    ASSERT_TRUE(h.item("Preview URL pattern")->hasActiveFocus());
    QTest::keyClick(&h.view(), 'x');
    // The fetch learns a pattern and another repository is added meanwhile.
    m.repos[2].detectedPattern = "https://site-{number}.example.com";
    m.repos[2].state = RepoState::loading;
    m.repos.push_back(repo(4, "acme/new"));
    setModel(m);
    EXPECT_EQ(h.item("acme/site"), row) << "the row was rebuilt";
    EXPECT_NE(h.find("https://site-{number}.example.com"), nullptr) << names();
    EXPECT_EQ(h.names().count("Detected"), 2) << "a learned pattern is marked";
    EXPECT_NE(h.find("https://docs-{branch}.example.com"), nullptr);
    EXPECT_NE(h.find("acme/new"), nullptr);
    ASSERT_NE(h.item("Preview URL pattern"), nullptr);
    EXPECT_TRUE(h.item("Preview URL pattern")->hasActiveFocus());
    EXPECT_EQ(fieldText("Preview URL pattern"), "x");
    EXPECT_EQ(h.takeSent(), Sent{R"({"msg":"edit_text","text":"x"})"});
}

TEST_F(manage_screen, a_field_takes_the_focus_once_when_its_popover_opens) {
    Model m = settings();
    show(m);
    m.addOpen = true;
    setModel(m);
    QTRY_VERIFY(h.item("Repository slug") != nullptr && h.item("Repository slug")->hasActiveFocus());
    QQuickItem* field = h.item("Repository slug");
    EXPECT_EQ(field->property("cursorPosition").toInt(), 0);
    // The user moves on; echoes and a resize do not pull the focus back.
    QTest::keyClick(&h.view(), Qt::Key_Tab);
    EXPECT_FALSE(field->hasActiveFocus());
    m.addText = "acme";
    setModel(m);
    h.view().resize(480, 600);
    EXPECT_TRUE(h.drawn());
    EXPECT_FALSE(field->hasActiveFocus());
    // A popover the model closes (a submit the core took) sends nothing;
    // opening again takes the focus again, with the caret after the model's text.
    m.addOpen = false;
    setModel(m);
    EXPECT_EQ(h.find("Repository slug"), nullptr);
    EXPECT_EQ(h.takeSent(), Sent{});
    m.addOpen = true;
    setModel(m);
    QTRY_VERIFY(h.item("Repository slug") != nullptr && h.item("Repository slug")->hasActiveFocus());
    EXPECT_EQ(h.item("Repository slug")->property("cursorPosition").toInt(), 4);
}

TEST_F(manage_screen, tab_walks_the_form_with_a_visible_focus) {
    Model m = settings();
    m.gh = GhStatus::loggedOut;
    show(m, 520);
    const QStringList order = {"Copy command gh auth login", "Add a repo", "Edit acme/web", "Edit acme/docs",
                               "Edit acme/site", "Show in picker", "System default", "Firefox", "Chromium",
                               "Appearance", "Refresh automatically"};
    QStringList reached;
    for (int i = 0; i < 30 && reached.size() < order.size(); ++i) {
        QTest::keyClick(&h.view(), Qt::Key_Tab);
        QQuickItem* focus = h.view().activeFocusItem();
        const QString name = h.focusedName();
        if (focus == nullptr || !order.contains(name) || reached.contains(name)) continue;
        reached << name;
        // The ring is drawn and the form scrolled so the control shows.
        const QRectF box = focus->mapRectToScene(QRectF(0, 0, focus->width(), focus->height()));
        EXPECT_GE(box.top(), 0) << name.toStdString();
        EXPECT_LE(box.bottom(), h.view().height()) << name.toStdString();
        EXPECT_TRUE(focus->property("visualFocus").toBool()) << name.toStdString();
    }
    EXPECT_EQ(reached, order);
}

TEST_F(manage_screen, a_long_slug_breaks_at_its_slash_only_in_the_narrowest_panel) {
    Model m = settings();
    m.repos = {repo(1, "acme/web"), repo(2, "acme-corporation-international/design-system-components")};
    for (auto [width, taller] : {std::pair{260, true}, std::pair{360, false}}) {
        SCOPED_TRACE(width);
        show(m, width);
        const int shortRow = h.find("acme/web")->rect().height();
        const int longRow = h.find("acme-corporation-international/design-system-components")->rect().height();
        EXPECT_EQ(longRow > shortRow, taller);
    }
}

}  // namespace
}  // namespace velmar::testing
