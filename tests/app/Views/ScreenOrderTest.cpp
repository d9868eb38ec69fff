// Tab and a screen reader meet the panel in the order it is drawn: the
// header, the browser strip, the banner, then each group's heading followed
// by its rows, each row holding its own controls; and they still do after
// the list changes under them.
#include <gtest/gtest.h>

#include <QQuickItem>
#include <QTest>
#include <functional>

#include "ScreenHarness.h"

namespace velmar::testing {
namespace {

Model threeGroups() {
    Model m = readyModel();
    m.gh = GhStatus::loggedOut;  // the banner, with its Copy button
    m.browsers = {{1, "System default", "", "SD", false, true}, {2, "Firefox", "Firefox", "FI", true, true}};
    m.browserMode = BrowserMode::manual;
    m.selectedBrowser = 2;
    m.repos = {repo(1, "acme/web", RepoState::ok, 2), repo(2, "acme/api", RepoState::ok, 1),
               repo(3, "acme/docs", RepoState::ok, 1)};
    m.prs = {pr(1, 7, "Fix login", "https://web-pr-7.example.com", PreviewSource::comment), pr(1, 8, "Dark mode"),
             pr(2, 3, "Rate limits"), pr(3, 4, "Typos")};
    return m;
}

// Headings, rows and controls in the order of the accessibility tree; what
// lies inside a row is indented under it.
QStringList treeWalk(ScreenHarness& h) {
    QStringList names;
    std::function<void(QAccessibleInterface*, bool)> walk = [&](QAccessibleInterface* node, bool inRow) {
        if (node == nullptr || !node->isValid() || node->state().invisible) return;
        const QAccessible::Role role = node->role();
        const bool kept = role == QAccessible::Heading || role == QAccessible::ListItem || role == QAccessible::Link ||
                          role == QAccessible::Button || role == QAccessible::CheckBox;
        if (kept) names << (inRow ? "  " : "") + node->text(QAccessible::Name);
        for (int i = 0; i < node->childCount(); ++i) walk(node->child(i), inRow || role == QAccessible::ListItem);
    };
    walk(QAccessible::queryAccessibleInterface(&h.view()), false);
    return names;
}

const QStringList header = {"Auto", "Refresh", "Settings", "System default", "Firefox", "Copy command"};

// Tab visits the headings and the controls inside rows, in the tree's order.
QStringList tabbable(const QStringList& tree) {
    QStringList out;
    for (const QString& name : tree)
        if (name.startsWith("  ") || name.startsWith("acme/")) out << name.trimmed();
    return out;
}

struct Case {
    const char* name;
    std::function<void(ScreenHarness&)> change;
    QStringList tree;  // after the header's and the title's
};

const QStringList asFirstShown = {"acme/web", "Fix login", "  Open pull request #7", "  Open preview for #7",
                                  "Dark mode", "  Open pull request #8", "acme/api", "Rate limits",
                                  "  Open pull request #3", "acme/docs", "Typos", "  Open pull request #4"};

const Case cases[] = {
    {"as first shown", [](ScreenHarness&) {}, asFirstShown},
    {"after Alt+Up moved the last group to the top",
     [](ScreenHarness& h) {
         qobject_cast<QQuickItem*>(h.find("acme/docs", QAccessible::Heading)->object())->forceActiveFocus();
         QTest::keyClick(&h.view(), Qt::Key_Up, Qt::AltModifier);
         QTest::keyClick(&h.view(), Qt::Key_Up, Qt::AltModifier);
     },
     {"acme/docs", "Typos", "  Open pull request #4", "acme/web", "Fix login", "  Open pull request #7",
      "  Open preview for #7", "Dark mode", "  Open pull request #8", "acme/api", "Rate limits",
      "  Open pull request #3"}},
    {"after a refresh brought new rows and dropped one",
     [](ScreenHarness& h) {
         Model m = h.model();
         m.prs = {pr(1, 7, "Fix login", "https://web-pr-7.example.com", PreviewSource::comment),
                  pr(2, 2, "Cache headers"), pr(2, 3, "Rate limits"), pr(3, 4, "Typos"), pr(3, 9, "Links")};
         m.repos[0].count = 1;
         m.repos[1].count = m.repos[2].count = 2;
         h.setModel(m);
     },
     {"acme/web", "Fix login", "  Open pull request #7", "  Open preview for #7", "acme/api", "Cache headers",
      "  Open pull request #2", "Rate limits", "  Open pull request #3", "acme/docs", "Typos",
      "  Open pull request #4", "Links", "  Open pull request #9"}},
    {"after scrolling to the end and back in a short window",
     [](ScreenHarness& h) {
         h.view().resize(h.view().width(), 220);
         auto* list = h.view().rootObject()->findChild<QQuickItem*>("prList");
         QMetaObject::invokeMethod(list, "positionViewAtEnd");
         EXPECT_TRUE(h.drawn());
         QMetaObject::invokeMethod(list, "positionViewAtBeginning");
     },
     asFirstShown},
};

TEST(screen_order, tab_and_the_accessibility_tree_follow_the_screen) {
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        ScreenHarness h;
        h.runCore(true);
        h.show(threeGroups());
        c.change(h);
        const QStringList tree = QStringList{"Velmar"} + header + c.tree;
        (void)QTest::qWaitFor([&] { return treeWalk(h) == tree; }, 2000);
        EXPECT_EQ(treeWalk(h), tree);
        EXPECT_EQ(h.tabWalk(), header + tabbable(c.tree));
    }
}

}  // namespace
}  // namespace velmar::testing
