// The keyboard alone: where focus stands after a group is moved by Alt+Up
// and Alt+Down, after a menu or popover closes and after a repository is
// removed; Shift+F10 as the menu key. The core runs, so the screens follow
// what the keys ask for.
#include <gtest/gtest.h>

#include <QGuiApplication>
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

QString focusedName(QQuickView& view) {
    QQuickItem* item = view.activeFocusItem();
    if (item == nullptr) return "(none)";
    QAccessibleInterface* node = QAccessible::queryAccessibleInterface(item);
    return node ? node->text(QAccessible::Name) : item->metaObject()->className();
}

bool waitFocus(QQuickView& view, const QString& name) {
    return QTest::qWaitFor([&] { return focusedName(view) == name; }, 2000);
}

std::vector<std::string> repoOrder(ScreenHarness& h) {
    std::vector<std::string> names;
    for (const Repo& r : h.model().repos) names.push_back(r.name);
    return names;
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
        h.runCore(true);
        h.show(threeGroups());
        auto* heading = qobject_cast<QQuickItem*>(h.find(row.focused, QAccessible::Heading)->object());
        ASSERT_NE(heading, nullptr);
        heading->forceActiveFocus();
        for (int i = 0; i < row.presses; ++i) {
            QTest::keyClick(&h.view(), row.key, Qt::AltModifier);
            EXPECT_TRUE(waitFocus(h.view(), row.focused))
                << "after press " << i + 1 << " focus on " << focusedName(h.view()).toStdString();
        }
        EXPECT_EQ(repoOrder(h), row.order);
    }
}

TEST(keyboard_focus, shift_f10_opens_the_menu_the_menu_key_opens) {
    struct Row {
        const char* focused;
        const char* firstItem;
    };
    const Row table[] = {{"acme/web", "Open on GitHub"}, {"Open pull request #7", "Copy link"}};
    for (const Row& row : table) {
        for (Qt::Key key : {Qt::Key_Menu, Qt::Key_F10}) {
            SCOPED_TRACE(std::string(row.focused) + (key == Qt::Key_F10 ? " Shift+F10" : " Menu"));
            ScreenHarness h;
            h.show(threeGroups());
            qobject_cast<QQuickItem*>(h.find(row.focused)->object())->forceActiveFocus();
            QTest::keyClick(&h.view(), key, key == Qt::Key_F10 ? Qt::ShiftModifier : Qt::NoModifier);
            ASSERT_TRUE(QTest::qWaitFor([&] { return h.find(row.firstItem) != nullptr; }, 1000));
            // Closing it gives the focus back to where it was.
            QTest::keyClick(&h.view(), Qt::Key_Escape);
            ASSERT_TRUE(QTest::qWaitFor([&] { return h.find(row.firstItem) == nullptr; }, 1000));
            EXPECT_TRUE(waitFocus(h.view(), row.focused)) << "focus on " << focusedName(h.view()).toStdString();
        }
    }
}

Model settings(int repos) {
    Model m = readyModel();
    m.screen = Screen::manage;
    for (int r = 1; r <= repos; ++r) m.repos.push_back(repo(r, "acme/repo-" + std::to_string(r)));
    return m;
}

TEST(keyboard_focus, a_closed_popover_or_menu_gives_focus_back_to_its_opener) {
    struct Row {
        const char* opener;
        Qt::Key openKey;
        const char* shown;  // an element of what opened
    };
    const Row table[] = {
        {"Add a repo", Qt::Key_Space, "Repository slug"},
        {"Edit acme/repo-2", Qt::Key_Space, "Preview URL"},
        {"Edit acme/repo-2", Qt::Key_Menu, "Copy Name"},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(std::string(row.opener) + (row.openKey == Qt::Key_Menu ? " menu" : ""));
        ScreenHarness h;
        h.runCore(true);
        h.show(settings(3));
        ASSERT_TRUE(QTest::qWaitFor([&] { return h.find(row.opener) != nullptr; }, 2000));
        qobject_cast<QQuickItem*>(h.find(row.opener)->object())->forceActiveFocus();
        QTest::keyClick(&h.view(), row.openKey);
        ASSERT_TRUE(QTest::qWaitFor([&] { return h.find(row.shown) != nullptr; }, 2000)) << h.names().join(" | ").toStdString();
        QTest::keyClick(&h.view(), Qt::Key_Escape);
        ASSERT_TRUE(QTest::qWaitFor([&] { return h.find(row.shown) == nullptr; }, 2000));
        EXPECT_TRUE(waitFocus(h.view(), row.opener)) << "focus on " << focusedName(h.view()).toStdString();
    }
}

TEST(keyboard_focus, after_remove_the_focus_goes_to_a_neighbour) {
    struct Row {
        int repos;
        const char* removed;
        const char* focused;
    };
    const Row table[] = {
        {3, "Edit acme/repo-2", "Edit acme/repo-3"},
        {3, "Edit acme/repo-3", "Edit acme/repo-2"},
        {1, "Edit acme/repo-1", "Add a repo"},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.removed);
        ScreenHarness h;
        h.runCore(true);
        h.show(settings(row.repos));
        ASSERT_TRUE(QTest::qWaitFor([&] { return h.find(row.removed) != nullptr; }, 2000));
        qobject_cast<QQuickItem*>(h.find(row.removed)->object())->forceActiveFocus();
        QTest::keyClick(&h.view(), Qt::Key_Menu);
        ASSERT_TRUE(QTest::qWaitFor([&] { return h.find("Remove") != nullptr; }, 2000));
        ASSERT_TRUE(h.press("Remove"));
        ASSERT_TRUE(QTest::qWaitFor([&] { return h.find(row.removed) == nullptr; }, 2000));
        EXPECT_TRUE(waitFocus(h.view(), row.focused)) << "focus on " << focusedName(h.view()).toStdString();
    }
}

}  // namespace
}  // namespace velmar::testing
