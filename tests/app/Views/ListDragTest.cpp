// Reordering the pull request list's groups as a user does it: hold a
// heading, drag, let go; and everything that must leave no trace (moving too
// early, a second button, the screen or the list changing, focus going
// away, a menu in the way), and the keyboard's Alt+Up and Alt+Down.
#include <gtest/gtest.h>

#include <QCursor>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QQuickItem>
#include <QTest>
#include <algorithm>

#include "ScreenHarness.h"

namespace velmar::testing {
namespace {

using Sent = std::vector<std::string>;

// Heights as the drag sees them (the divider's 11 above every group, 24 per
// heading and per row): web 83, api 59, docs 35, site 35.
Model fourRepos() {
    Model m = readyModel();
    m.repos = {repo(1, "acme/web", RepoState::ok, 2), repo(2, "acme/api", RepoState::ok, 1), repo(3, "acme/docs"),
               repo(4, "acme/site")};
    m.prs = {pr(1, 7, "Fix login"), pr(1, 8, "Dark mode"), pr(2, 3, "Rate limits")};
    return m;
}

class list_drag : public ::testing::Test {
protected:
    void SetUp() override { h.show(fourRepos()); }
    void TearDown() override { ASSERT_EQ(QGuiApplication::overrideCursor(), nullptr) << "cursor left changed"; }

    // The centre of `name`'s heading row, in the window.
    QPoint heading(const QString& name) {
        QAccessibleInterface* node = h.find(name);
        EXPECT_NE(node, nullptr) << name.toStdString();
        if (node == nullptr) return {};
        const QRect r = node->rect();
        // The heading's row is its last 24 points (a divider may stand above).
        return h.view().mapFromGlobal(QPoint(r.center().x(), r.bottom() - 12));
    }
    // Pressed, held past 0.3 s, then moved by `dy` in steps, as a hand would.
    QPoint liftAndMove(const QString& name, int dy) {
        const QPoint start = heading(name);
        QTest::mousePress(&h.view(), Qt::LeftButton, {}, start);
        EXPECT_TRUE(QTest::qWaitFor([&] { return tracker().drag().has_value(); })) << "the hold lifted nothing";
        for (int step = 1; step <= 10; ++step) QTest::mouseMove(&h.view(), start + QPoint(0, dy * step / 10));
        EXPECT_TRUE(h.settle());
        return start + QPoint(0, dy);
    }
    // The centre of a pull request's row, in the window.
    QPoint row(const QString& title) { return h.view().mapFromGlobal(h.find(title)->rect().center()); }
    // The headings from top to bottom as drawn.
    std::vector<QString> drawnOrder() {
        std::vector<std::pair<int, QString>> at;
        for (const QString name : {"acme/web", "acme/api", "acme/docs", "acme/site"})
            at.emplace_back(heading(name).y(), name);
        std::sort(at.begin(), at.end());
        std::vector<QString> names;
        for (const auto& [y, name] : at) names.push_back(name);
        return names;
    }
    const ui::reorder::RepoDragState& tracker() { return h.panel().listDrag()->state(); }

    ScreenHarness h;
};

TEST_F(list_drag, holding_a_heading_lifts_its_group_and_the_drop_sends_one_move) {
    const QPoint start = heading("acme/web");
    const int rowBelow = row("Dark mode").y() - start.y();
    const QPoint at = liftAndMove("acme/web", 60);
    ASSERT_TRUE(tracker().drag().has_value());
    ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::ClosedHandCursor);
    // Not yet past api's middle: the order stands, the heading follows the pointer.
    const QPoint api = heading("acme/api");
    EXPECT_NEAR(heading("acme/web").y(), start.y() + 60, 1);
    EXPECT_EQ(heading("acme/api"), api);
    EXPECT_NEAR(row("Dark mode").y(), start.y() + 60 + rowBelow, 1) << "the group's rows go with its heading";

    // Past docs' middle: the others already stand where they will land; the
    // lifted group is held at the list's end.
    for (int dy = 70; dy <= 135; dy += 13) QTest::mouseMove(&h.view(), start + QPoint(0, dy));
    ASSERT_TRUE(h.settle());
    EXPECT_NEAR(heading("acme/web").y(), start.y() + 129, 1);
    EXPECT_EQ(drawnOrder(), (std::vector<QString>{"acme/api", "acme/docs", "acme/web", "acme/site"}));
    // api took web's place at the top, and the block stands 2 below the list's top.
    EXPECT_EQ(heading("acme/api").y(), start.y());
    EXPECT_TRUE(h.takeSent().empty()) << "nothing is sent while dragging";

    QTest::mouseRelease(&h.view(), Qt::LeftButton, {}, at + QPoint(0, 75));
    EXPECT_EQ(h.takeSent(), (Sent{R"({"id":1,"index":2,"msg":"move_repo"})"}));
    EXPECT_FALSE(tracker().drag().has_value());
    EXPECT_FALSE(h.panel().listDrag()->lifted());
    // This harness has no core: the model kept its order, and the groups
    // glide back to it.
    ASSERT_TRUE(h.settle());
    EXPECT_EQ(drawnOrder(), (std::vector<QString>{"acme/web", "acme/api", "acme/docs", "acme/site"}));
    EXPECT_EQ(heading("acme/web"), start);
}

TEST_F(list_drag, after_the_core_moves_the_group_everything_rests_in_its_new_place) {
    h.runCore(true);
    const QPoint start = heading("acme/web");
    const QPoint at = liftAndMove("acme/web", 135);  // the others have made room
    QTest::mouseRelease(&h.view(), Qt::LeftButton, {}, at);
    EXPECT_EQ(h.takeSent(), (Sent{R"({"id":1,"index":2,"msg":"move_repo"})"}));
    // The others were already in their places: nothing of theirs moves.
    QCoreApplication::processEvents();
    EXPECT_EQ(heading("acme/api"), start);
    EXPECT_EQ(heading("acme/docs"), start + QPoint(0, 59));
    ASSERT_TRUE(h.settle());
    // api (heading and a row, 48), docs (35 with its divider), web (83), site.
    const std::pair<const char*, int> rest[] = {{"acme/api", 0}, {"acme/docs", 59}, {"acme/web", 94}, {"acme/site", 177}};
    for (auto [name, dy] : rest) EXPECT_EQ(heading(name), start + QPoint(0, dy)) << name;
    // The rows went with their group.
    EXPECT_NEAR(row("Fix login").y(), start.y() + 94 + 24, 1);

    // And a second drag starts from there: site up to the top.
    const QPoint again = liftAndMove("acme/site", -300);
    QTest::mouseRelease(&h.view(), Qt::LeftButton, {}, again);
    EXPECT_EQ(h.takeSent(), (Sent{R"({"id":4,"index":0,"msg":"move_repo"})"}));
    ASSERT_TRUE(h.settle());
    EXPECT_EQ(heading("acme/site"), start);
    EXPECT_EQ(heading("acme/api"), start + QPoint(0, 35));
}

TEST_F(list_drag, dragging_up_to_the_top_and_the_last_group) {
    struct Row {
        const char* name;
        int dy;
        const char* sent;
    };
    const Row table[] = {
        {"acme/site", -400, R"({"id":4,"index":0,"msg":"move_repo"})"},
        {"acme/docs", -80, R"({"id":3,"index":1,"msg":"move_repo"})"},
        {"acme/api", 400, R"({"id":2,"index":3,"msg":"move_repo"})"},
        {"acme/api", 0, R"({"id":2,"index":1,"msg":"move_repo"})"},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.name);
        const QPoint at = liftAndMove(row.name, row.dy);
        QTest::mouseRelease(&h.view(), Qt::LeftButton, {}, at);
        EXPECT_EQ(h.takeSent(), Sent{row.sent});
        EXPECT_TRUE(h.settle());
    }
}

TEST_F(list_drag, moving_before_the_hold_ends_lifts_nothing) {
    const QPoint start = heading("acme/web");
    QTest::mousePress(&h.view(), Qt::LeftButton, {}, start);
    QTest::mouseMove(&h.view(), start + QPoint(0, 4));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !h.panel().listDrag()->holding(); }));
    QTest::mouseMove(&h.view(), start + QPoint(0, 150));
    EXPECT_FALSE(tracker().drag().has_value());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    QTest::mouseRelease(&h.view(), Qt::LeftButton, {}, start + QPoint(0, 150));
    EXPECT_TRUE(h.takeSent().empty());
}

TEST_F(list_drag, the_second_press_of_a_double_click_goes_to_the_view) {
    const QPoint at = heading("acme/api");
    auto send = [&](QEvent::Type type, Qt::MouseButtons buttons, ulong time) {
        QMouseEvent e(type, at, at, h.view().mapToGlobal(at), Qt::LeftButton, buttons, Qt::NoModifier);
        e.setTimestamp(time);
        return QCoreApplication::sendEvent(&h.view(), &e);
    };
    send(QEvent::MouseButtonPress, Qt::LeftButton, 100000);
    EXPECT_TRUE(tracker().press().has_value());
    send(QEvent::MouseButtonRelease, Qt::NoButton, 100050);
    send(QEvent::MouseButtonPress, Qt::LeftButton, 100100);
    EXPECT_FALSE(tracker().press().has_value());
    send(QEvent::MouseButtonRelease, Qt::NoButton, 100150);
    // Long after, a press is a press again.
    send(QEvent::MouseButtonPress, Qt::LeftButton, 200000);
    EXPECT_TRUE(tracker().press().has_value());
    send(QEvent::MouseButtonRelease, Qt::NoButton, 200050);
}

TEST_F(list_drag, whatever_interrupts_a_drag_leaves_no_trace) {
    struct Row {
        const char* what;
        std::function<void(ScreenHarness&, QPoint)> interrupt;
    };
    const Row table[] = {
        {"the settings screen",
         [](ScreenHarness& h, QPoint) {
             Model m = fourRepos();
             m.screen = Screen::manage;
             h.setModel(m);
         }},
        {"the group is removed",
         [](ScreenHarness& h, QPoint) {
             Model m = fourRepos();
             m.repos.erase(m.repos.begin());
             h.setModel(m);
         }},
        {"focus goes to another window",
         [](ScreenHarness& h, QPoint) {
             QFocusEvent out(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
             QCoreApplication::sendEvent(&h.view(), &out);
         }},
        {"a second button", [](ScreenHarness& h, QPoint at) { QTest::mousePress(&h.view(), Qt::RightButton, {}, at); }},
        {"the release went elsewhere",
         [](ScreenHarness& h, QPoint at) {
             QMouseEvent move(QEvent::MouseMove, at, at, h.view().mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                              Qt::NoModifier);
             QCoreApplication::sendEvent(&h.view(), &move);
         }},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.what);
        h.setModel(fourRepos());
        ASSERT_TRUE(h.settle());  // back from the settings screen's slide
        const QPoint at = liftAndMove("acme/web", 100);
        ASSERT_TRUE(tracker().drag().has_value());
        row.interrupt(h, at);
        EXPECT_FALSE(tracker().drag().has_value());
        EXPECT_FALSE(h.panel().listDrag()->lifted());
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
        QTest::mouseRelease(&h.view(), Qt::LeftButton, {}, at);
        QTest::mouseRelease(&h.view(), Qt::RightButton, {}, at);
        EXPECT_TRUE(h.takeSent().empty());
        EXPECT_EQ(h.find("Open on GitHub"), nullptr) << "no menu opened on the way";
    }
}

TEST_F(list_drag, a_press_on_what_covers_the_list_is_not_a_press) {
    h.rightClick("acme/api");
    ASSERT_NE(h.find("Open on GitHub"), nullptr);
    // The menu lies over the list: a press beside it closes it, and lifts nothing.
    const QPoint web = heading("acme/web");
    QTest::mousePress(&h.view(), Qt::LeftButton, {}, web);
    EXPECT_FALSE(h.panel().listDrag()->holding());
    EXPECT_FALSE(tracker().drag().has_value());
    QTest::mouseRelease(&h.view(), Qt::LeftButton, {}, web);
    EXPECT_TRUE(QTest::qWaitFor([&] { return h.find("Open on GitHub") == nullptr; }));
    EXPECT_TRUE(h.takeSent().empty());
}

TEST_F(list_drag, alt_up_and_alt_down_move_the_focused_group) {
    struct Row {
        const char* name;
        Qt::Key key;
        const char* sent;
    };
    const Row table[] = {
        {"acme/api", Qt::Key_Up, R"({"id":2,"index":0,"msg":"move_repo"})"},
        {"acme/api", Qt::Key_Down, R"({"id":2,"index":2,"msg":"move_repo"})"},
        // At the ends the core holds the index.
        {"acme/web", Qt::Key_Up, R"({"id":1,"index":-1,"msg":"move_repo"})"},
        {"acme/site", Qt::Key_Down, R"({"id":4,"index":4,"msg":"move_repo"})"},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.name);
        auto* item = qobject_cast<QQuickItem*>(h.find(row.name)->object());
        ASSERT_NE(item, nullptr);
        item->forceActiveFocus();
        QTest::keyClick(&h.view(), row.key, Qt::AltModifier);
        EXPECT_EQ(h.takeSent(), Sent{row.sent});
        // Without Alt the arrows are not a move.
        QTest::keyClick(&h.view(), row.key);
        EXPECT_TRUE(h.takeSent().empty());
    }
    EXPECT_FALSE(h.panel().moveRepoBy(99, 1)) << "an unknown id sends nothing";
    EXPECT_TRUE(h.takeSent().empty());
}

}  // namespace
}  // namespace velmar::testing
