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

using Names = std::vector<std::string>;

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

QString focusedName(QQuickView& view) {
    QQuickItem* item = view.activeFocusItem();
    if (item == nullptr) return "(none)";
    QAccessibleInterface* node = QAccessible::queryAccessibleInterface(item);
    return node ? node->text(QAccessible::Name) : item->metaObject()->className();
}

// The names Tab visits from the window's start until it comes round again.
Names tabWalk(ScreenHarness& h) {
    // Nothing keeps focus, down to the scopes that held it.
    for (QQuickItem* item = h.view().activeFocusItem(); item != nullptr; item = item->parentItem())
        item->setFocus(false);
    h.view().contentItem()->forceActiveFocus();
    Names names;
    for (int i = 0; i < 60; ++i) {
        QTest::keyClick(&h.view(), Qt::Key_Tab);
        const std::string name = focusedName(h.view()).toStdString();
        if (!names.empty() && name == names.front()) break;
        names.push_back(name);
    }
    return names;
}

// Headings, rows and controls in the order of the accessibility tree; what
// lies inside a row is indented under it.
Names treeWalk(ScreenHarness& h) {
    Names names;
    std::function<void(QAccessibleInterface*, bool)> walk = [&](QAccessibleInterface* node, bool inRow) {
        if (node == nullptr || !node->isValid() || node->state().invisible) return;
        const QAccessible::Role role = node->role();
        const bool kept = role == QAccessible::Heading || role == QAccessible::ListItem || role == QAccessible::Link ||
                          role == QAccessible::Button || role == QAccessible::CheckBox;
        if (kept) names.push_back((inRow ? "  " : "") + node->text(QAccessible::Name).toStdString());
        for (int i = 0; i < node->childCount(); ++i) walk(node->child(i), inRow || role == QAccessible::ListItem);
    };
    walk(QAccessible::queryAccessibleInterface(&h.view()), false);
    return names;
}

const Names header = {"Auto", "Refresh", "Settings", "System default", "Firefox", "Copy command"};

Names concat(const Names& a, const Names& b) {
    Names out = a;
    out.insert(out.end(), b.begin(), b.end());
    return out;
}

struct Case {
    const char* name;
    std::function<void(ScreenHarness&)> change;
    Names tab;   // after the header's
    Names tree;  // after the header's and the title's
};

const Case cases[] = {
    {"as first shown", [](ScreenHarness&) {},
     {"acme/web", "Open pull request #7", "Open preview for #7", "Open pull request #8", "acme/api",
      "Open pull request #3", "acme/docs", "Open pull request #4"},
     {"acme/web", "Fix login", "  Open pull request #7", "  Open preview for #7", "Dark mode",
      "  Open pull request #8", "acme/api", "Rate limits", "  Open pull request #3", "acme/docs", "Typos",
      "  Open pull request #4"}},
    {"after Alt+Up moved the last group to the top",
     [](ScreenHarness& h) {
         qobject_cast<QQuickItem*>(h.find("acme/docs", QAccessible::Heading)->object())->forceActiveFocus();
         QTest::keyClick(&h.view(), Qt::Key_Up, Qt::AltModifier);
         QTest::keyClick(&h.view(), Qt::Key_Up, Qt::AltModifier);
     },
     {"acme/docs", "Open pull request #4", "acme/web", "Open pull request #7", "Open preview for #7",
      "Open pull request #8", "acme/api", "Open pull request #3"},
     {"acme/docs", "Typos", "  Open pull request #4", "acme/web", "Fix login", "  Open pull request #7",
      "  Open preview for #7", "Dark mode", "  Open pull request #8", "acme/api", "Rate limits",
      "  Open pull request #3"}},
    {"after a refresh brought new rows and dropped one",
     [](ScreenHarness& h) {
         Model m = h.model();
         m.repos[1].count = 2;
         m.prs = {pr(1, 7, "Fix login", "https://web-pr-7.example.com", PreviewSource::comment),
                  pr(2, 2, "Cache headers"), pr(2, 3, "Rate limits"), pr(3, 4, "Typos"), pr(3, 9, "Links")};
         m.repos[0].count = 1;
         m.repos[2].count = 2;
         h.setModel(m);
     },
     {"acme/web", "Open pull request #7", "Open preview for #7", "acme/api", "Open pull request #2",
      "Open pull request #3", "acme/docs", "Open pull request #4", "Open pull request #9"},
     {"acme/web", "Fix login", "  Open pull request #7", "  Open preview for #7", "acme/api", "Cache headers",
      "  Open pull request #2", "Rate limits", "  Open pull request #3", "acme/docs", "Typos",
      "  Open pull request #4", "Links", "  Open pull request #9"}},
    {"after scrolling to the end and back in a short window",
     [](ScreenHarness& h) {
         h.view().resize(h.view().width(), 220);
         auto* list = h.view().rootObject()->findChild<QQuickItem*>("prList");
         QMetaObject::invokeMethod(list, "positionViewAtEnd");
         QTest::qWait(50);
         QMetaObject::invokeMethod(list, "positionViewAtBeginning");
     },
     {"acme/web", "Open pull request #7", "Open preview for #7", "Open pull request #8", "acme/api",
      "Open pull request #3", "acme/docs", "Open pull request #4"},
     {"acme/web", "Fix login", "  Open pull request #7", "  Open preview for #7", "Dark mode",
      "  Open pull request #8", "acme/api", "Rate limits", "  Open pull request #3", "acme/docs", "Typos",
      "  Open pull request #4"}},
};

TEST(screen_order, tab_and_the_accessibility_tree_follow_the_screen) {
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        ScreenHarness h;
        h.runCore(true);
        h.show(threeGroups());
        c.change(h);
        const Names tree = concat(concat({"Velmar"}, header), c.tree);
        (void)QTest::qWaitFor([&] { return treeWalk(h) == tree; }, 2000);
        EXPECT_EQ(treeWalk(h), tree);
        EXPECT_EQ(tabWalk(h), concat(header, c.tab));
    }
}

}  // namespace
}  // namespace velmar::testing
