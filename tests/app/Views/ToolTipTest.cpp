// A tooltip never lies over what its control opened: it goes away as the
// popover or menu comes up, and stays away while the pointer rests there.
#include <gtest/gtest.h>

#include <QQuickItem>
#include <QTest>
#include <functional>

#include "ScreenHarness.h"

namespace velmar::testing {
namespace {

// Whether a text `text` is drawn anywhere in the window, popups included.
bool drawn(QQuickItem* item, const QString& text) {
    if (!item->isVisible()) return false;
    if (item->inherits("QQuickText") && item->property("text").toString() == text) return true;
    for (QQuickItem* child : item->childItems())
        if (drawn(child, text)) return true;
    return false;
}

bool anyMenuItem(ScreenHarness& h) {
    bool found = false;
    std::function<void(QAccessibleInterface*)> walk = [&](QAccessibleInterface* node) {
        if (found || node == nullptr || !node->isValid() || node->state().invisible) return;
        found = node->role() == QAccessible::MenuItem;
        for (int i = 0; i < node->childCount(); ++i) walk(node->child(i));
    };
    walk(QAccessible::queryAccessibleInterface(&h.view()));
    return found;
}

TEST(tooltips, close_when_what_their_control_opens_comes_up) {
    Model settings = readyModel();
    settings.screen = Screen::manage;
    settings.repos = {repo(1, "acme/web")};
    Model list = readyModel();
    list.repos = {repo(1, "acme/web", RepoState::ok, 1)};
    list.prs = {pr(1, 7, "Fix login", "https://web-pr-7.example.com", PreviewSource::comment)};
    struct Row {
        const char* control;
        Model model;
        const char* tooltip;
        Qt::MouseButton button;
        std::function<bool(ScreenHarness&)> opened;
    };
    const Row table[] = {
        {"Edit acme/web", settings, "Edit preview URL", Qt::LeftButton,
         [](ScreenHarness& h) { return h.find("Preview URL") != nullptr; }},
        {"Open preview for #7", list, "Open preview (link from the PR's deploy comment)", Qt::RightButton, anyMenuItem},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.control);
        ScreenHarness h;
        h.runCore(true);
        h.show(row.model);
        ASSERT_TRUE(QTest::qWaitFor([&] { return h.find(row.control) != nullptr; }, 2000));
        const QPoint centre = h.view().mapFromGlobal(h.find(row.control)->rect().center());
        QTest::mouseMove(&h.view(), centre - QPoint(2, 2));
        QTest::mouseMove(&h.view(), centre);
        ASSERT_TRUE(QTest::qWaitFor([&] { return drawn(h.view().contentItem(), row.tooltip); }, 3000));
        QTest::mouseClick(&h.view(), row.button, {}, centre);
        ASSERT_TRUE(QTest::qWaitFor([&] { return row.opened(h); }, 2000)) << h.names().join(" | ").toStdString();
        EXPECT_TRUE(QTest::qWaitFor([&] { return !drawn(h.view().contentItem(), row.tooltip); }, 2000));
        // Moving on the control does not ask for it again over what is open.
        QTest::mouseMove(&h.view(), centre + QPoint(1, 0));
        const QObject* control = h.find(row.control)->object();
        EXPECT_FALSE(control->property("hovered").toBool() && !control->property("tipDismissed").toBool());
    }
}

}  // namespace
}  // namespace velmar::testing
