// The settings side as a user and a screen reader meet it: what each gh state
// shows, what every control sends, the popovers' opening and closing, and
// keyboard focus. The Store records messages instead of running the core, so
// every change of the model here is the test's own.
#include <gtest/gtest.h>

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
        QTest::qWait(600);
        h.takeSent();
    }
    void setModel(const Model& m) {
        h.setModel(m);
        QTest::qWait(30);
    }
    QQuickItem* item(const QString& name) {
        QAccessibleInterface* node = h.find(name);
        return node == nullptr ? nullptr : qobject_cast<QQuickItem*>(node->object());
    }
    QString fieldText(const QString& name) {
        QQuickItem* field = item(name);
        return field == nullptr ? QStringLiteral("<no field>") : field->property("text").toString();
    }
    std::string names() { return h.names().join(" | ").toStdString(); }

    ScreenHarness h;
};

TEST_F(manage_screen, gh_rows_guidance_and_footer_follow_the_gh_state) {
    const QString always = "Velmar reads everything through the GitHub CLI and never asks for a token.";
    const QString rechecking = always + " Re-checking every few seconds.";
    struct Row {
        GhStatus gh;
        std::optional<bool> brew;
        QString installed;
        QString signedIn;
        QString footer;
        QStringList guidance;  // what stands under the rows
    };
    const Row table[] = {
        {GhStatus::unknown, std::nullopt, "Checking...", "Checking...", always, {}},
        {GhStatus::ok, std::nullopt, "Installed", "Signed in", always, {}},
        {GhStatus::missing, std::nullopt, "Not installed", "\u2014", rechecking, {"Install instructions"}},
        {GhStatus::missing, true, "Not installed", "\u2014", rechecking,
         {"Copy command brew install gh", "Other ways to install"}},
        {GhStatus::loggedOut, std::nullopt, "Installed", "Signed out", rechecking, {"Copy command gh auth login"}},
    };
    const QStringList allGuidance = {"Install instructions", "Copy command brew install gh",
                                     "Other ways to install", "Copy command gh auth login"};
    for (const Row& row : table) {
        SCOPED_TRACE(row.installed.toStdString() + " / " + row.signedIn.toStdString());
        Model m = settings();
        m.gh = row.gh;
        m.brewInstalled = row.brew;
        show(m);
        // Each label stands right after its row's title.
        const QStringList labels = h.names();
        EXPECT_EQ(labels.value(labels.indexOf("gh installed") + 1), row.installed) << names();
        EXPECT_EQ(labels.value(labels.indexOf("Signed in to GitHub") + 1), row.signedIn) << names();
        EXPECT_NE(h.find(row.footer), nullptr) << names();
        for (const QString& guidance : allGuidance)
            EXPECT_EQ(h.find(guidance) != nullptr, row.guidance.contains(guidance)) << guidance.toStdString();
    }
    // The login well stands under the second row, the install guidance under the first.
    Model m = settings();
    m.gh = GhStatus::loggedOut;
    show(m);
    EXPECT_GT(h.find("Copy command gh auth login")->rect().top(), h.find("Signed in to GitHub")->rect().bottom());
    m.gh = GhStatus::missing;
    setModel(m);
    EXPECT_LT(h.find("Install instructions")->rect().bottom(), h.find("Signed in to GitHub")->rect().top());
}

TEST_F(manage_screen, general_section_waits_for_the_settings_file) {
    struct Row { bool loaded; bool autoRefresh; const char* footer; };
    for (Row row : {Row{false, true, nullptr}, Row{true, true, "Automatically checking for updates every minute."},
                    Row{true, false, "Loading updates on demand only."}}) {
        SCOPED_TRACE(row.loaded);
        Model m = settings();
        m.settingsLoaded = row.loaded;
        m.autoRefresh = row.autoRefresh;
        show(m);
        EXPECT_NE(h.find("Appearance"), nullptr);
        EXPECT_EQ(h.find("Refresh automatically") != nullptr, row.loaded);
        EXPECT_EQ(h.find("Automatically checking for updates every minute.") != nullptr,
                  row.footer != nullptr && row.autoRefresh);
        EXPECT_EQ(h.find("Loading updates on demand only.") != nullptr, row.footer != nullptr && !row.autoRefresh);
        if (row.loaded) {
            EXPECT_EQ(h.find("Refresh automatically")->state().checked, row.autoRefresh);
        }
    }
}

TEST_F(manage_screen, a_learned_pattern_or_a_new_order_reaches_the_rows_while_answers_change_nothing_else) {
    Model m = settings();
    show(m);
    // Answers come in: states change, and one repository learns a pattern.
    for (Repo& r : m.repos) r.state = RepoState::loading;
    m.repos[2].detectedPattern = "https://site-{number}.example.com";
    setModel(m);
    EXPECT_NE(h.find("https://site-{number}.example.com"), nullptr) << names();
    EXPECT_EQ(h.names().count("Detected"), 2);
    EXPECT_NE(h.find("https://docs-{branch}.example.com"), nullptr);
    // A move and a rename reach the rows too, in the new order.
    std::swap(m.repos[0], m.repos[2]);
    m.repos[1].name = "acme/handbook";
    setModel(m);
    const QStringList shown = h.names().filter(QRegularExpression("^acme/"));
    EXPECT_EQ(shown, (QStringList{"acme/site", "acme/handbook", "acme/web"})) << names();
}

TEST_F(manage_screen, pattern_lines_browser_switches_and_footers) {
    show(settings());
    // Its own pattern wins, with no mark; a learned one is marked; else none.
    for (const char* shown : {"acme/web", "acme/docs", "acme/site", "https://web-{number}.example.com",
                              "https://docs-{branch}.example.com", "No preview URL", "Detected"})
        EXPECT_NE(h.find(shown), nullptr) << shown << " in " << names();
    EXPECT_EQ(h.find("https://learned-web-{number}.example.com"), nullptr);
    EXPECT_EQ(h.names().count("Detected"), 1);
    EXPECT_EQ(h.find("Detected")->text(QAccessible::Description),
              "Learned from deploy-bot comments (Railway, Netlify) on this repo's PRs");
    EXPECT_EQ(h.find("Nothing watched yet."), nullptr);

    // Manual mode: a switch per browser, on when shown, hidden ones too.
    EXPECT_TRUE(h.find("Firefox")->state().checkable);
    EXPECT_TRUE(h.find("Firefox")->state().checked);
    EXPECT_FALSE(h.find("Chromium")->state().checked);
    EXPECT_NE(h.find("The picker shows the browsers you switch on here."), nullptr);

    Model m = settings();
    m.browserMode = BrowserMode::open;
    m.repos.clear();
    setModel(m);
    QTest::qWait(400);  // the switches slide shut
    EXPECT_EQ(h.find("Firefox"), nullptr);
    EXPECT_NE(h.find("The picker shows the browsers that are open right now, and updates as they open and close."),
              nullptr);
    EXPECT_NE(h.find("Nothing watched yet."), nullptr);
}

TEST_F(manage_screen, each_control_and_menu_item_sends_its_message) {
    Model m = settings();
    m.gh = GhStatus::loggedOut;
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
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.control);
        const QString open = QString::fromUtf8(row.open);
        if (open.startsWith("menu:")) {
            h.rightClick(open.mid(5));
        } else if (!open.isEmpty()) {
            ASSERT_TRUE(h.press(open)) << names();
        }
        QTest::qWait(50);
        EXPECT_TRUE(h.press(row.control)) << names();
        QTest::qWait(50);
        EXPECT_EQ(h.takeSent(), row.sent);
    }
    // The switches toggle through the accessible toggle action too.
    QAccessibleInterface* chromium = h.find("Chromium");
    ASSERT_NE(chromium, nullptr);
    chromium->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(h.takeSent(), Sent{R"({"id":3,"msg":"toggle_browser_shown"})"});
}

TEST_F(manage_screen, my_pull_requests_switch_is_greyed_until_checks_are_on) {
    Model m = settings();
    show(m);
    // Off with its parent: shown as it would be, but it sends nothing.
    QAccessibleInterface* yours = h.find("Show my pull requests");
    ASSERT_NE(yours, nullptr) << names();
    EXPECT_TRUE(yours->state().checked);
    EXPECT_EQ(yours->text(QAccessible::Description), "Needs checks, reviews and deployments");
    EXPECT_FALSE(item("Show my pull requests")->isEnabled());
    h.press("Show my pull requests");
    EXPECT_EQ(h.takeSent(), Sent{});

    m.checks = true;
    setModel(m);
    QTRY_VERIFY(item("Show my pull requests")->isEnabled());
    EXPECT_EQ(h.find("Show my pull requests")->text(QAccessible::Description), "");
    EXPECT_TRUE(h.press("Show my pull requests"));
    EXPECT_EQ(h.takeSent(), (Sent{R"({"msg":"set_yours","on":false})"}));
    m.yours = false;
    setModel(m);
    QTRY_VERIFY(!h.find("Show my pull requests")->state().checked);
    EXPECT_TRUE(h.press("Show my pull requests"));
    EXPECT_EQ(h.takeSent(), (Sent{R"({"msg":"set_yours","on":true})"}));
}

TEST_F(manage_screen, pickers_mark_the_current_choice) {
    Model m = settings();
    m.appearance = Appearance::light;
    show(m);
    ASSERT_TRUE(h.press("Appearance"));
    QTest::qWait(50);
    EXPECT_NE(h.find("Light", QAccessible::StaticText), nullptr) << "the menu shows its choice";
    for (auto [name, checked] : {std::pair{"Dark", false}, {"Light", true}, {"Auto", false}}) {
        QAccessibleInterface* entry = h.find(name, QAccessible::MenuItem);
        ASSERT_NE(entry, nullptr) << name;
        EXPECT_TRUE(entry->state().checkable) << name;
        EXPECT_EQ(entry->state().checked, checked) << name;
    }
    QTest::keyClick(&h.view(), Qt::Key_Escape);
    QTest::qWait(50);
    EXPECT_EQ(h.find("Dark", QAccessible::MenuItem), nullptr) << "the menu stayed open";
    EXPECT_EQ(h.takeSent(), Sent{}) << "Escape closed only the menu";
}

TEST_F(manage_screen, add_popover_sends_each_message_and_lists_what_the_filter_leaves) {
    Model m = settings();
    m.addOpen = true;
    show(m);
    ASSERT_NE(item("Repository slug"), nullptr) << names();
    // acme/web is watched, so not offered; a shared one says so.
    EXPECT_EQ(h.find("Add acme/web, shared"), nullptr);
    EXPECT_NE(h.find("Add team/tools, shared"), nullptr) << names();
    EXPECT_NE(h.find("Add ana/notes"), nullptr);
    EXPECT_EQ(h.find("No matching repos."), nullptr);
    EXPECT_FALSE(item("Add")->isEnabled()) << "Add waits for a slug";

    const std::pair<const char*, Sent> table[] = {
        {"Add team/tools, shared", {R"({"msg":"pick_suggestion","name":"team/tools"})"}},
        {"Add ana/dotfiles", {R"({"msg":"pick_suggestion","name":"ana/dotfiles"})"}},
        {"Done", {R"({"msg":"close_add"})"}},
    };
    for (const auto& [control, sent] : table) {
        SCOPED_TRACE(control);
        EXPECT_TRUE(h.press(control)) << names();
        EXPECT_EQ(h.takeSent(), sent);
    }

    // The core's filter leaves one, then none.
    m.addText = "dot";
    setModel(m);
    EXPECT_EQ(fieldText("Repository slug"), "dot");
    EXPECT_NE(h.find("Add ana/dotfiles"), nullptr);
    EXPECT_EQ(h.find("Add ana/notes"), nullptr);
    m.addText = "zzz/";
    setModel(m);
    EXPECT_NE(h.find("No matching repos."), nullptr);
    EXPECT_TRUE(item("Add")->isEnabled());
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

TEST_F(manage_screen, return_submits_and_escape_cancels_or_falls_through) {
    Model m = settings();
    m.addOpen = true;
    m.addText = "no";
    show(m);
    // Return sends the submit even when the slug cannot be added: the core
    // answers with its flash.
    QTest::keyClick(&h.view(), Qt::Key_Return);
    EXPECT_EQ(h.takeSent(), Sent{R"({"msg":"submit_add"})"});
    // Escape in the add field is the popover's: closing sends the close once.
    QTest::keyClick(&h.view(), Qt::Key_Escape);
    QTest::qWait(30);
    EXPECT_EQ(h.takeSent(), Sent{R"({"msg":"close_add"})"});
    EXPECT_EQ(h.find("Repository slug"), nullptr) << "the popover stayed";

    m.addOpen = false;
    m.editingRepo = 2;
    m.editText = "https://x/{number}";
    setModel(m);
    EXPECT_EQ(fieldText("Preview URL pattern"), "https://x/{number}");
    EXPECT_TRUE(item("Preview URL pattern")->hasActiveFocus());
    QTest::keyClick(&h.view(), Qt::Key_Return);
    EXPECT_EQ(h.takeSent(), Sent{R"({"msg":"save_pattern"})"});
    // Escape in the pattern field cancels, once, and the field owns it.
    QTest::keyClick(&h.view(), Qt::Key_Escape);
    QTest::qWait(30);
    EXPECT_EQ(h.takeSent(), Sent{R"({"msg":"cancel_edit"})"});
    EXPECT_NE(h.find("Preview URL pattern"), nullptr) << "the model still edits; the popover follows it";
}

TEST_F(manage_screen, pattern_editor_shows_the_repository_and_sends_each_message) {
    Model m = settings();
    m.editingRepo = 2;
    show(m);
    QQuickItem* field = item("Preview URL pattern");
    ASSERT_NE(field, nullptr) << names();
    EXPECT_EQ(field->property("placeholderText").toString(), "https://docs-{branch}.example.com");
    EXPECT_NE(h.find("Placeholders: {number} {branch} {owner} {name} {repo}"), nullptr);
    EXPECT_NE(h.find("A link from a PR's own Railway, Vercel or Netlify comment is used first. Leave this empty "
                     "to use the detected pattern for the rest."),
              nullptr);
    for (char c : {'a', 'b'}) QTest::keyClick(&h.view(), c);
    EXPECT_EQ(h.takeSent(), (Sent{R"({"msg":"edit_text","text":"a"})", R"({"msg":"edit_text","text":"ab"})"}));
    const std::pair<const char*, Sent> table[] = {
        {"Save", {R"({"msg":"save_pattern"})"}},
        {"Cancel", {R"({"msg":"cancel_edit"})"}},
        {"Remove", {R"({"id":2,"msg":"remove_repo"})"}},
    };
    for (const auto& [control, sent] : table) {
        SCOPED_TRACE(control);
        EXPECT_TRUE(h.press(control)) << names();
        EXPECT_EQ(h.takeSent(), sent);
    }
    EXPECT_EQ(h.find("Remove")->text(QAccessible::Description), "Stop watching acme/docs");

    // Without a learned pattern the placeholder is the example, and the hint says less.
    m.editingRepo = 3;
    setModel(m);
    ASSERT_NE(item("Preview URL pattern"), nullptr);
    EXPECT_EQ(item("Preview URL pattern")->property("placeholderText").toString(),
              "https://myapp-pr-{number}.example.com");
    EXPECT_NE(h.find("A link from a PR's own Railway, Vercel or Netlify comment is used first, when it has one."),
              nullptr);
    EXPECT_EQ(h.takeSent(), Sent{}) << "moving the edit to another row cancels nothing";
}

TEST_F(manage_screen, popovers_keep_every_control_inside_the_window_at_every_width) {
    struct Case {
        const char* what;
        bool add;
        QStringList controls;
    };
    const Case cases[] = {
        {"pattern editor", false, {"Preview URL pattern", "Remove", "Cancel", "Save"}},
        {"add popover", true, {"Repository slug", "Add", "Done"}},
    };
    for (const Case& c : cases)
        for (int width : {200, 260, 360, 520}) {
            SCOPED_TRACE(std::string(c.what) + " at " + std::to_string(width));
            Model m = settings();
            m.addOpen = c.add;
            if (!c.add) m.editingRepo = 1;
            show(m, width);
            const QRect window(h.view().mapToGlobal(QPoint(0, 0)), h.view().size());
            for (const QString& name : c.controls) {
                QAccessibleInterface* control = h.find(name);
                ASSERT_NE(control, nullptr) << name.toStdString();
                EXPECT_TRUE(window.contains(control->rect()))
                    << name.toStdString() << " lies outside the window";
            }
        }
}

TEST_F(manage_screen, popovers_closed_by_a_press_outside_send_their_close_once) {
    Model m = settings();
    m.addOpen = true;
    show(m);
    QTest::mouseClick(&h.view(), Qt::LeftButton, {}, QPoint(20, 580));
    QTest::qWait(30);
    EXPECT_EQ(h.takeSent(), Sent{R"({"msg":"close_add"})"});

    m.addOpen = false;
    m.editingRepo = 1;
    setModel(m);
    ASSERT_NE(h.find("Preview URL pattern"), nullptr);
    QTest::mouseClick(&h.view(), Qt::LeftButton, {}, QPoint(20, 580));
    QTest::qWait(30);
    EXPECT_EQ(h.takeSent(), Sent{R"({"msg":"cancel_edit"})"});
    EXPECT_EQ(h.find("Preview URL pattern"), nullptr);
}

TEST_F(manage_screen, popovers_the_model_closes_send_nothing) {
    Model m = settings();
    m.addOpen = true;
    show(m);
    m.addOpen = false;  // a submit that the core took
    setModel(m);
    EXPECT_EQ(h.find("Repository slug"), nullptr);
    m.editingRepo = 2;
    setModel(m);
    ASSERT_NE(h.find("Preview URL pattern"), nullptr);
    // Removing the edited repository ends the edit and takes its row away.
    m.editingRepo.reset();
    m.repos.erase(m.repos.begin() + 1);
    setModel(m);
    EXPECT_EQ(h.find("Preview URL pattern"), nullptr);
    EXPECT_EQ(h.find("acme/docs"), nullptr);
    EXPECT_EQ(h.takeSent(), Sent{});
}

TEST_F(manage_screen, the_watched_list_catches_up_with_what_changed_while_the_list_was_shown) {
    Model m = settings();
    m.screen = Screen::list;
    show(m);
    m.repos[2].detectedPattern = "https://site-{number}.example.com";
    setModel(m);
    m.screen = Screen::manage;
    setModel(m);
    EXPECT_NE(h.find("https://site-{number}.example.com"), nullptr) << names();
}

TEST_F(manage_screen, a_refresh_changes_a_row_in_place_and_keeps_its_editor) {
    Model m = settings();
    m.editingRepo = 3;
    show(m);
    QQuickItem* row = item("acme/site");
    ASSERT_NE(row, nullptr);
    ASSERT_TRUE(item("Preview URL pattern")->hasActiveFocus());
    QTest::keyClick(&h.view(), 'x');
    // The fetch learns a pattern and another repository is added meanwhile.
    m.repos[2].detectedPattern = "https://site-{number}.example.com";
    m.repos[2].state = RepoState::loading;
    m.repos.push_back(repo(4, "acme/new"));
    setModel(m);
    EXPECT_EQ(item("acme/site"), row) << "the row was rebuilt";
    EXPECT_NE(h.find("https://site-{number}.example.com"), nullptr);
    EXPECT_NE(h.find("acme/new"), nullptr);
    ASSERT_NE(item("Preview URL pattern"), nullptr);
    EXPECT_TRUE(item("Preview URL pattern")->hasActiveFocus());
    EXPECT_EQ(fieldText("Preview URL pattern"), "x");
    EXPECT_EQ(h.takeSent(), Sent{R"({"msg":"edit_text","text":"x"})"});
}

TEST_F(manage_screen, a_field_takes_the_focus_once_when_its_popover_opens) {
    Model m = settings();
    show(m);
    m.addOpen = true;
    setModel(m);
    QTest::qWait(30);
    QQuickItem* field = item("Repository slug");
    ASSERT_NE(field, nullptr);
    EXPECT_TRUE(field->hasActiveFocus());
    EXPECT_EQ(field->property("cursorPosition").toInt(), 0);
    // The user moves on; echoes and a resize do not pull the focus back.
    QTest::keyClick(&h.view(), Qt::Key_Tab);
    EXPECT_FALSE(field->hasActiveFocus());
    m.addText = "acme";
    setModel(m);
    h.view().resize(480, 600);
    QTest::qWait(50);
    EXPECT_FALSE(field->hasActiveFocus());
    // Opening again takes it again, with the caret after the model's text.
    m.addOpen = false;
    setModel(m);
    m.addOpen = true;
    setModel(m);
    QTest::qWait(30);
    ASSERT_NE(item("Repository slug"), nullptr);
    EXPECT_TRUE(item("Repository slug")->hasActiveFocus());
    EXPECT_EQ(item("Repository slug")->property("cursorPosition").toInt(), 4);
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
        if (focus == nullptr) continue;
        const QString name = QAccessible::queryAccessibleInterface(focus)->text(QAccessible::Name);
        if (order.contains(name) && !reached.contains(name)) {
            reached << name;
            // The ring is drawn and the form scrolled so the control shows.
            const QRectF box = focus->mapRectToScene(QRectF(0, 0, focus->width(), focus->height()));
            EXPECT_GE(box.top(), 0) << name.toStdString();
            EXPECT_LE(box.bottom(), h.view().height()) << name.toStdString();
            EXPECT_TRUE(focus->property("visualFocus").toBool()) << name.toStdString();
        }
    }
    EXPECT_EQ(reached, order);
}

TEST_F(manage_screen, a_long_slug_breaks_at_its_slash_only_in_the_narrowest_panel) {
    Model m = settings();
    m.repos = {repo(1, "acme/web"), repo(2, "acme-corporation-international/design-system-components")};
    struct Row { int width; bool taller; };
    for (Row row : {Row{260, true}, Row{360, false}}) {
        SCOPED_TRACE(row.width);
        show(m, row.width);
        const int shortRow = h.find("acme/web")->rect().height();
        const int longRow = h.find("acme-corporation-international/design-system-components")->rect().height();
        EXPECT_EQ(longRow > shortRow, row.taller);
    }
}

TEST_F(manage_screen, notification_and_tray_switches_wait_for_checks_and_send_their_messages) {
    const QString needs = QStringLiteral("Needs \u201cChecks, reviews and deployments\u201d on.");
    Model off = settings();
    show(off);
    for (const char* name : {"Notifications", "Icon in the system tray"}) {
        QAccessibleInterface* control = h.find(name);
        ASSERT_NE(control, nullptr) << name << ": " << names();
        EXPECT_EQ(control->text(QAccessible::Description), needs) << name;
        h.press(name);  // greyed: sends nothing
    }
    EXPECT_EQ(h.find("New pull requests"), nullptr) << "the kinds show only while notifications are on";
    EXPECT_EQ(h.takeSent(), Sent{});

    Model on = off;
    on.checks = true;
    on.notify = on.notifyNew = on.notifyChecks = on.notifyReview = true;
    on.notifyChecks = false;
    setModel(on);
    const struct {
        const char* control;
        Sent sent;
    } table[] = {
        {"Notifications", {R"({"msg":"set_notify","on":false})"}},
        {"New pull requests", {R"({"kind":"new_prs","msg":"set_notify_kind","on":false})"}},
        {"Checks finished on my pull requests", {R"({"kind":"checks","msg":"set_notify_kind","on":true})"}},
        {"Review requested from me", {R"({"kind":"review","msg":"set_notify_kind","on":false})"}},
        {"Icon in the system tray", {R"({"msg":"set_tray","on":true})"}},
    };
    for (const auto& row : table) {
        EXPECT_TRUE(h.press(row.control)) << row.control << ": " << names();
        QTest::qWait(30);
        EXPECT_EQ(h.takeSent(), row.sent) << row.control;
    }
    // Screen tests have no tray.
    EXPECT_EQ(h.find("Icon in the system tray")->text(QAccessible::Description),
              QStringLiteral("No system tray found. GNOME needs its AppIndicator extension."));
}

}  // namespace
}  // namespace velmar::testing
