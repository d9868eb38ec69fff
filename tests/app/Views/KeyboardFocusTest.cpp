// The keyboard alone: where focus stands after a group is moved by Alt+Up
// and Alt+Down, after a menu or popover closes and after a repository is
// removed; Shift+F10 as the menu key. The core runs, so the screens follow
// what the keys ask for.
#include <gtest/gtest.h>

#include <QQuickItem>
#include <QTest>

#include "ScreenHarness.h"

namespace velmar::testing {
namespace {

Model threeGroups() {
    Model m = readyModel();
    m.repos = {repo(1, "acme/web", RepoState::ok, 2), repo(2, "acme/api", RepoState::ok, 1),
               repo(3, "acme/docs", RepoState::ok, 1)};
    m.prs = {pr(1, 7, "Fix login"), pr(1, 8, "Dark mode"), pr(2, 3, "Rate limits"), pr(3, 4, "Typos")};
    return m;
}

Model settings(int repos) {
    Model m = readyModel();
    m.screen = Screen::manage;
    for (int r = 1; r <= repos; ++r) m.repos.push_back(repo(r, "acme/repo-" + std::to_string(r)));
    return m;
}

// Shows `m` with the core running and gives `name` the focus.
void focusOn(ScreenHarness& h, const Model& m, const char* name) {
    h.runCore(true);
    h.show(m);
    ASSERT_TRUE(QTest::qWaitFor([&] { return h.find(name) != nullptr; }, 2000)) << name;
    qobject_cast<QQuickItem*>(h.find(name)->object())->forceActiveFocus();
}

TEST(keyboard_focus, alt_arrows_move_the_same_group_again_and_again) {
    struct Row {
        const char* focused;
        Qt::Key key;
        int presses;
        std::vector<std::string> order;
    };
    const Row table[] = {
        {"acme/docs", Qt::Key_Up, 2, {"acme/docs", "acme/web", "acme/api"}},
        {"acme/web", Qt::Key_Down, 2, {"acme/api", "acme/docs", "acme/web"}},
        {"acme/api", Qt::Key_Up, 3, {"acme/api", "acme/web", "acme/docs"}},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.focused);
        ScreenHarness h;
        focusOn(h, threeGroups(), row.focused);
        for (int i = 0; i < row.presses; ++i) {
            QTest::keyClick(&h.view(), row.key, Qt::AltModifier);
            EXPECT_TRUE(h.waitFocus(row.focused)) << "after press " << i + 1 << " focus on " << h.focusedName().toStdString();
        }
        std::vector<std::string> order;
        for (const Repo& r : h.model().repos) order.push_back(r.name);
        EXPECT_EQ(order, row.order);
    }
}

// Closing a menu or popover, by Escape or by removing what it was about,
// leaves the focus where the user can go on.
TEST(keyboard_focus, a_closed_menu_or_popover_gives_focus_back_or_to_a_neighbour) {
    struct Row {
        Model model;
        const char* focused;
        Qt::Key openKey;
        Qt::KeyboardModifiers modifiers;
        const char* shown;     // an element of what opened
        const char* pressed;   // pressed in it; none: Escape
        const char* after;     // where focus lands
    };
    const Row table[] = {
        {threeGroups(), "acme/web", Qt::Key_Menu, {}, "Open on GitHub", nullptr, "acme/web"},
        {threeGroups(), "Open pull request #7", Qt::Key_F10, Qt::ShiftModifier, "Copy link", nullptr,
         "Open pull request #7"},
        {settings(3), "Add a repo", Qt::Key_Space, {}, "Repository slug", nullptr, "Add a repo"},
        {settings(3), "Edit acme/repo-2", Qt::Key_Space, {}, "Preview URL", nullptr, "Edit acme/repo-2"},
        {settings(3), "Edit acme/repo-2", Qt::Key_Menu, {}, "Copy Name", nullptr, "Edit acme/repo-2"},
        {settings(3), "Edit acme/repo-2", Qt::Key_Menu, {}, "Remove", "Remove", "Edit acme/repo-3"},
        {settings(3), "Edit acme/repo-3", Qt::Key_Menu, {}, "Remove", "Remove", "Edit acme/repo-2"},
        {settings(1), "Edit acme/repo-1", Qt::Key_Menu, {}, "Remove", "Remove", "Add a repo"},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(std::string(row.focused) + " then " + row.shown);
        ScreenHarness h;
        focusOn(h, row.model, row.focused);
        QTest::keyClick(&h.view(), row.openKey, row.modifiers);
        ASSERT_TRUE(QTest::qWaitFor([&] { return h.find(row.shown) != nullptr; }, 2000)) << h.names().join(" | ").toStdString();
        if (row.pressed == nullptr) {
            QTest::keyClick(&h.view(), Qt::Key_Escape);
            ASSERT_TRUE(QTest::qWaitFor([&] { return h.find(row.shown) == nullptr; }, 2000));
        } else {
            ASSERT_TRUE(h.press(row.pressed));
            ASSERT_TRUE(QTest::qWaitFor([&] { return h.find(row.focused) == nullptr; }, 2000));
        }
        EXPECT_TRUE(h.waitFocus(row.after)) << "focus on " << h.focusedName().toStdString();
    }
}

}  // namespace
}  // namespace velmar::testing
