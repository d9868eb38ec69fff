// The automation's synthetic input on the real panel: a click reaches the
// control under it and says what it hit, a key reaches the shortcuts, and
// pointer events posted into the queue pass the reorder filter as real ones.
#include <gtest/gtest.h>

#include <QMouseEvent>
#include <QRegularExpression>
#include <QTest>
#include <limits>

#include "DebugClick.h"
#include "ScreenHarness.h"

namespace velmar::testing {
namespace {

using Sent = std::vector<std::string>;

Model threeRepos() {
    Model m = readyModel();
    m.repos = {repo(1, "acme/web"), repo(2, "acme/api"), repo(3, "acme/docs")};
    return m;
}

QPoint centreOf(ScreenHarness& h, const QString& name) {
    QAccessibleInterface* node = h.find(name);
    EXPECT_NE(node, nullptr) << name.toStdString();
    return node ? h.view().mapFromGlobal(node->rect().center()) : QPoint();
}

TEST(synthetic_input, a_click_presses_the_control_under_it_and_names_it) {
    ScreenHarness h;
    h.show(threeRepos());
    const QPoint refresh = centreOf(h, "Refresh");
    DebugClick::click(&h.view(), refresh);
    EXPECT_EQ(h.waitSent(), (Sent{R"({"msg":"refresh"})"}));

    const QString line = DebugClick::clickLine(&h.view(), refresh);
    const QRegularExpression form(QStringLiteral("^click \\((\\d+), (\\d+)\\) \u2192 (\\w+) \\((-?\\d+), (-?\\d+), (\\d+)\u00d7(\\d+)\\)$"));
    const auto match = form.match(line);
    ASSERT_TRUE(match.hasMatch()) << line.toStdString();
    EXPECT_EQ(match.captured(1).toInt(), refresh.x());
    // The rectangle named holds the point.
    const QRect hit(match.captured(4).toInt(), match.captured(5).toInt(), match.captured(6).toInt(),
                    match.captured(7).toInt());
    EXPECT_TRUE(hit.adjusted(-1, -1, 1, 1).contains(refresh)) << line.toStdString();

    // Points that are no place at all hit nothing and bring nothing down.
    const double inf = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(DebugClick::clickLine(&h.view(), {nan, inf}), QStringLiteral("click (nan, inf) \u2192 nil "));
    EXPECT_EQ(DebugClick::clickLine(&h.view(), {-5, 9e300}), QStringLiteral("click (-5, 9223372036854775807) \u2192 nil "));
    DebugClick::click(&h.view(), {nan, -inf});
    EXPECT_TRUE(handlePosted());
    EXPECT_TRUE(h.takeSent().empty());
}

TEST(synthetic_input, escape_reaches_the_shortcut_that_leaves_the_settings) {
    ScreenHarness h;
    Model m = threeRepos();
    m.screen = Screen::manage;
    h.show(m);
    EXPECT_TRUE(h.settle());
    DebugClick::key(&h.view(), 53);
    EXPECT_EQ(h.waitSent(), (Sent{R"({"msg":"navigate","screen":"list"})"}));
    // A code no screen reacts to reaches nothing.
    DebugClick::key(&h.view(), 4000);
    EXPECT_TRUE(handlePosted());
    EXPECT_TRUE(h.takeSent().empty());
}

TEST(synthetic_input, key_codes_map_to_the_keys_the_screens_use) {
    const std::pair<int, int> table[] = {
        {53, Qt::Key_Escape}, {36, Qt::Key_Return}, {76, Qt::Key_Enter}, {48, Qt::Key_Tab},
        {49, Qt::Key_Space},  {126, Qt::Key_Up},     {125, Qt::Key_Down}, {110, Qt::Key_Menu},
        {0, Qt::Key_unknown}, {65535, Qt::Key_unknown},
    };
    for (auto [code, key] : table) EXPECT_EQ(DebugClick::qtKey(code), key) << code;
}

TEST(synthetic_input, posted_pointer_events_drag_a_group_through_the_filter) {
    ScreenHarness h;
    h.show(threeRepos());
    const QPoint from = centreOf(h, "acme/web");
    const QPoint to = from + QPoint(0, 90);
    const QString line = DebugClick::dragLine(&h.view(), from, to);
    EXPECT_TRUE(line.startsWith(QStringLiteral("drag (%1, %2) \u2192 (%1, %3) hit ").arg(from.x()).arg(from.y()).arg(to.y())))
        << line.toStdString();
    EXPECT_TRUE(line.contains(QStringLiteral("< RepoSectionHeader <"))) << line.toStdString();
    EXPECT_LE(line.count(QStringLiteral(" < ")), 7);

    auto post = [&](QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::MouseButtons buttons) {
        QCoreApplication::postEvent(&h.view(), new QMouseEvent(type, at, at, h.view().mapToGlobal(at), button,
                                                               buttons, Qt::NoModifier));
    };
    post(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
    // A heading lifts once it has been held.
    QTRY_VERIFY(h.panel().listDrag()->lifted());
    for (int i = 1; i <= 12; ++i)
        post(QEvent::MouseMove, from + (to - from) * i / 12, Qt::NoButton, Qt::LeftButton);
    post(QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton);
    EXPECT_EQ(h.waitSent(), (Sent{R"({"id":1,"index":2,"msg":"move_repo"})"}));
}

}  // namespace
}  // namespace velmar::testing
