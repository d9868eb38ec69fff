// A field filled through the accessibility interface, as dictation and voice
// control do, and the placeholder it draws while empty; what links and
// switches are announced as, whenever the screen reader came on.
#include <gtest/gtest.h>

#include <QQuickItem>
#include <QRegularExpression>
#include <QTest>

#include "ScreenHarness.h"

namespace velmar::testing {
namespace {

Model adding(const std::string& text) {
    Model m = readyModel();
    m.screen = Screen::manage;
    m.addOpen = true;
    m.addText = text;
    m.suggestions = {{"ana/notes", true}, {"ana/dotfiles", true}, {"team/tools", false}};
    return m;
}

// The placeholder the field draws, if any is shown.
QString drawnPlaceholder(QQuickItem* field) {
    for (QQuickItem* child : field->childItems())
        if (child->isVisible() && child->property("text").toString() == field->property("placeholderText").toString() &&
            child != field)
            return child->property("text").toString();
    return {};
}

TEST(screen_reader, text_set_through_the_accessibility_interface_reaches_the_model) {
    struct Row {
        const char* text;
        QStringList offered;  // the suggestions left to pick
    };
    const Row table[] = {
        {"dot", {"Add ana/dotfiles"}},
        {"team/to", {"Add team/tools, shared"}},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.text);
        ScreenHarness h;
        h.runCore(true);
        h.show(adding(""));
        QAccessibleInterface* field = nullptr;
        ASSERT_TRUE(QTest::qWaitFor([&] { return (field = h.find("Repository slug")) != nullptr; }, 2000));
        EXPECT_EQ(drawnPlaceholder(qobject_cast<QQuickItem*>(field->object())), "owner/repo");
        field->setText(QAccessible::Value, row.text);
        EXPECT_EQ(h.model().addText, row.text);
        const std::vector<std::string> sent = h.takeSent();
        ASSERT_FALSE(sent.empty());
        EXPECT_EQ(sent.back(), R"({"msg":"add_text","text":")" + std::string(row.text) + R"("})");
        EXPECT_EQ(drawnPlaceholder(qobject_cast<QQuickItem*>(field->object())), "") << "drawn over the text";
        const auto offered = [&] { return h.names().filter(QRegularExpression("^Add .*/")); };
        (void)QTest::qWaitFor([&] { return offered() == row.offered; }, 2000);
        EXPECT_EQ(offered(), row.offered);
    }
}

// Qt 6.4's button template announces a push button whatever role it is
// given when accessibility is on as it is built, and resets the role when it
// comes on later; the panel's links and switches must read as such either way.
TEST(screen_reader, links_and_switches_keep_their_roles_and_states) {
    struct Control {
        const char* name;
        QAccessible::Role role;
        bool checkable;
        bool checked;
    };
    struct Row {
        const char* screen;
        Model model;
        std::vector<Control> controls;
    };
    Model list = readyModel();
    list.autoRefresh = true;
    list.repos = {repo(1, "acme/web", RepoState::ok, 1)};
    list.prs = {pr(1, 12, "Fix login", "https://web-pr-12.example.com", PreviewSource::comment)};
    Model settings = list;
    settings.screen = Screen::manage;
    settings.browsers = {{1, "System default", "", "SD", false, true}, {2, "Firefox", "Firefox", "FI", true, false}};
    settings.browserMode = BrowserMode::manual;
    const Row table[] = {
        {"list", list,
         {{"Open pull request #12", QAccessible::Link, false, false},
          {"Open preview for #12", QAccessible::Link, false, false},
          {"Auto", QAccessible::CheckBox, true, true},
          {"Refresh", QAccessible::Button, false, false}}},
        {"settings", settings,
         {{"Refresh automatically", QAccessible::CheckBox, true, true},
          {"System default", QAccessible::CheckBox, true, true},
          {"Firefox", QAccessible::CheckBox, true, false}}},
    };
    for (bool onBeforeShown : {true, false}) {
        for (const Row& row : table) {
            SCOPED_TRACE(std::string(row.screen) + (onBeforeShown ? ", on before shown" : ", on later"));
            QAccessible::setActive(onBeforeShown);
            ScreenHarness h;
            h.show(row.model);
            QAccessible::setActive(true);
            for (const Control& c : row.controls) {
                SCOPED_TRACE(c.name);
                QAccessibleInterface* node = nullptr;
                ASSERT_TRUE(QTest::qWaitFor([&] { return (node = h.find(c.name)) != nullptr; }, 2000))
                    << h.names().join(" | ").toStdString();
                EXPECT_EQ(node->role(), c.role);
                EXPECT_EQ(bool(node->state().checkable), c.checkable);
                EXPECT_EQ(bool(node->state().checked), c.checked);
            }
            // The state follows the model after a change.
            Model changed = row.model;
            changed.autoRefresh = !changed.autoRefresh;
            h.setModel(changed);
            const char* autoName = row.model.screen == Screen::list ? "Auto" : "Refresh automatically";
            EXPECT_TRUE(QTest::qWaitFor([&] { return !h.find(autoName)->state().checked; }, 2000));
            EXPECT_EQ(h.find(autoName)->role(), QAccessible::CheckBox);
            QAccessible::setActive(false);
        }
    }
}

}  // namespace
}  // namespace velmar::testing
