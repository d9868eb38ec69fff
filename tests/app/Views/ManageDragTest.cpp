// Reordering the watched repositories on the settings screen: a row lifts as
// soon as it moves (no hold), its trailing strip stays the info button's, and
// the keyboard moves the row whose button has focus.
#include <gtest/gtest.h>

#include <QCursor>
#include <QGuiApplication>
#include <QQuickItem>
#include <QTest>

#include "ScreenHarness.h"

namespace velmar::testing {
namespace {

using Sent = std::vector<std::string>;

Model settings() {
    Model m = readyModel();
    m.screen = Screen::manage;
    m.repos = {repo(1, "acme/web"), repo(2, "acme/docs"), repo(3, "acme/site")};
    m.repos[1].detectedPattern = "https://docs-{branch}.example.com";
    return m;
}

class manage_drag : public ::testing::Test {
protected:
    void SetUp() override {
        h.show(settings());
        EXPECT_TRUE(h.settle());  // the settings screen slides in
        h.takeSent();
    }
    void TearDown() override { ASSERT_EQ(QGuiApplication::overrideCursor(), nullptr) << "cursor left changed"; }

    QRect row(const QString& name) {
        QAccessibleInterface* node = h.find(name);
        EXPECT_NE(node, nullptr) << name.toStdString();
        if (node == nullptr) return {};
        const QRect r = node->rect();
        return QRect(h.view().mapFromGlobal(r.topLeft()), r.size());
    }
    // A press near the row's leading end, moved by `dy` in steps.
    QPoint dragRow(const QString& name, int dy) {
        const QRect r = row(name);
        const QPoint start(r.left() + 40, r.center().y());
        QTest::mousePress(&h.view(), Qt::LeftButton, {}, start);
        for (int step = 1; step <= 8; ++step) QTest::mouseMove(&h.view(), start + QPoint(0, dy * step / 8));
        EXPECT_TRUE(h.settle());
        return start + QPoint(0, dy);
    }
    const ui::reorder::RepoDragState& tracker() { return h.panel().manageDrag()->state(); }

    ScreenHarness h;
};

TEST_F(manage_drag, a_row_lifts_on_moving_and_lands_past_a_neighbours_middle) {
    const QRect web = row("acme/web");
    const QRect docs = row("acme/docs");
    // Down by a little more than half of docs: past its middle.
    const int dy = docs.height() / 2 + web.height() / 2 + 2;
    const QPoint at = dragRow("acme/web", dy);
    ASSERT_TRUE(tracker().drag().has_value());
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::ClosedHandCursor);
    EXPECT_NEAR(row("acme/web").top(), web.top() + dy, 1);
    EXPECT_EQ(row("acme/web").height(), web.height()) << "the plate behind it is no part of its layout";
    // docs made room: it stands where web stood.
    EXPECT_EQ(row("acme/docs").top(), web.top());
    QTest::mouseRelease(&h.view(), Qt::LeftButton, {}, at);
    EXPECT_EQ(h.takeSent(), (Sent{R"({"id":1,"index":1,"msg":"move_repo"})"}));
}

TEST_F(manage_drag, the_trailing_strip_belongs_to_the_info_button) {
    const QRect r = row("acme/docs");
    // The info button sits in the last 34 points: its click goes through.
    QTest::mouseClick(&h.view(), Qt::LeftButton, {}, QPoint(r.right() - 20, r.center().y()));
    EXPECT_EQ(h.takeSent(), (Sent{R"({"msg":"edit_pattern","repo_id":2})"}));
    // Just before the strip, a press is the drag's.
    QTest::mousePress(&h.view(), Qt::LeftButton, {}, QPoint(r.right() - 36, r.center().y()));
    EXPECT_TRUE(tracker().press().has_value());
    QTest::mouseRelease(&h.view(), Qt::LeftButton, {}, QPoint(r.right() - 36, r.center().y()));
    EXPECT_TRUE(h.takeSent().empty());
}

TEST_F(manage_drag, after_the_core_moves_the_row_the_rows_rest_in_order) {
    h.runCore(true);
    const QRect web = row("acme/web");
    const QRect site = row("acme/site");
    const QPoint at = dragRow("acme/site", web.top() - site.top() - 20);
    QTest::mouseRelease(&h.view(), Qt::LeftButton, {}, at);
    EXPECT_EQ(h.takeSent(), (Sent{R"({"id":3,"index":0,"msg":"move_repo"})"}));
    ASSERT_TRUE(h.settle());
    EXPECT_EQ(row("acme/site").top(), web.top());
    EXPECT_NEAR(row("acme/web").top(), web.top() + site.height(), 1);
    EXPECT_LT(row("acme/web").bottom(), row("acme/docs").top());
}

TEST_F(manage_drag, leaving_the_screen_ends_the_drag_and_the_list_screen_has_its_own) {
    const QPoint at = dragRow("acme/web", 30);
    ASSERT_TRUE(tracker().drag().has_value());
    Model m = settings();
    m.screen = Screen::list;
    h.setModel(m);
    EXPECT_FALSE(tracker().drag().has_value());
    EXPECT_FALSE(tracker().enabled());
    QTest::mouseRelease(&h.view(), Qt::LeftButton, {}, at);
    EXPECT_TRUE(h.takeSent().empty());
    ASSERT_TRUE(h.settle());
    EXPECT_FALSE(h.panel().manageDrag()->installed()) << "off screen, the filter is gone";
    EXPECT_TRUE(h.panel().listDrag()->installed());
}

TEST_F(manage_drag, alt_up_and_alt_down_move_the_row_whose_button_has_focus) {
    struct Row {
        const char* button;
        Qt::Key key;
        const char* sent;
    };
    const Row table[] = {
        {"Edit acme/docs", Qt::Key_Up, R"({"id":2,"index":0,"msg":"move_repo"})"},
        {"Edit acme/docs", Qt::Key_Down, R"({"id":2,"index":2,"msg":"move_repo"})"},
        {"Edit acme/site", Qt::Key_Down, R"({"id":3,"index":3,"msg":"move_repo"})"},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.button);
        QAccessibleInterface* node = h.find(row.button);
        ASSERT_NE(node, nullptr);
        qobject_cast<QQuickItem*>(node->object())->forceActiveFocus();
        QTest::keyClick(&h.view(), row.key, Qt::AltModifier);
        EXPECT_EQ(h.takeSent(), Sent{row.sent});
    }
}

}  // namespace
}  // namespace velmar::testing
