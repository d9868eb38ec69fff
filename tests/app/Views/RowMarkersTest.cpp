// The checks, review and deployment marks of a row, as drawn and as a screen
// reader meets them, at the three widths and in both schemes: each mark is
// there once per pull request that has it, by its name, on its row, before or
// after the title as it should be, and the deployment's dot sits on the
// preview symbol's corner in the state's colour.
#include <gtest/gtest.h>

#include <QQuickItem>
#include <QTest>

#include "ScreenHarness.h"

namespace velmar::testing {
namespace {

Model markers() {
    Model m = readyModel();
    m.checks = true;
    m.repos = {repo(1, "acme/web", RepoState::ok, 5)};
    const auto row = [](std::int64_t number, const std::string& title, std::optional<ChecksState> checks,
                        std::optional<ReviewState> review, bool conflicts, std::optional<DeployState> deploy) {
        PR p = pr(1, number, title, deploy ? "https://web-" + std::to_string(number) + ".example.dev" : "",
                  deploy ? std::optional(PreviewSource::deployment) : std::nullopt);
        p.checks = checks;
        p.review = review;
        p.conflicts = conflicts;
        p.deploy = deploy;
        p.deployOlder = deploy ? std::optional(number == 3) : std::nullopt;
        return p;
    };
    m.prs = {row(1, "Passes", ChecksState::passing, ReviewState::approved, false, DeployState::ready),
             row(2, "Fails", ChecksState::failing, ReviewState::changesRequested, true, DeployState::failed),
             row(3, "Runs", ChecksState::running, ReviewState::reviewRequired, false, DeployState::building),
             row(4, "Bare", std::nullopt, std::nullopt, false, DeployState::inactive),
             row(5, "Nothing", std::nullopt, std::nullopt, false, std::nullopt)};
    return m;
}

QRect rectOf(ScreenHarness& h, const QString& name) {
    QAccessibleInterface* node = h.find(name);
    return node ? node->rect() : QRect();
}

/// The title's text, not the row that carries the same name.
QRect titleOf(ScreenHarness& h, const QString& title) {
    QAccessibleInterface* node = h.find(title, QAccessible::StaticText);
    return node ? node->rect() : QRect();
}

/// The visible descendant rectangle of `item` drawn `size` wide: the deployment's dot.
QQuickItem* dotOf(QQuickItem* item, qreal size) {
    for (QQuickItem* child : item->childItems()) {
        if (!child->isVisible()) continue;
        if (child->inherits("QQuickRectangle") && qFuzzyCompare(child->width(), size)) return child;
        if (QQuickItem* found = dotOf(child, size)) return found;
    }
    return nullptr;
}

QQuickItem* symbolOf(QQuickItem* item) {
    for (QQuickItem* child : item->childItems()) {
        if (child->isVisible() && child->inherits("QQuickImage")) return child;
        if (QQuickItem* found = symbolOf(child)) return found;
    }
    return nullptr;
}

QRectF sceneRect(QQuickItem* item) { return item->mapRectToScene(QRectF(0, 0, item->width(), item->height())); }

// Each check, review and conflict mark by name, before or after its title;
// the deployment's dot on the preview symbol's lower right corner, in the
// state's own colour.
TEST(row_markers, every_mark_by_name_in_its_place_at_each_width_and_scheme) {
    const struct {
        const char* title;
        const char* checks;
        std::vector<const char*> after;  // review and conflicts, in order
    } rows[] = {
        {"Passes", "Checks passing", {"Approved"}},
        {"Fails", "Checks failing", {"Changes requested", "Conflicts"}},
        {"Runs", "Checks running", {"Review required"}},
    };
    const struct {
        const char* button;
        const char* description;
    } deployments[] = {
        {"Open preview for #1", "Deployment ready"},
        {"Open preview for #2", "Deployment failed"},
        {"Open preview for #3", "Deployment building, older commit"},
        {"Open preview for #4", "Deployment inactive"},
    };
    for (const int width : {260, 360, 520}) {
        for (const bool dark : {true, false}) {
            SCOPED_TRACE(std::to_string(width) + (dark ? " dark" : " light"));
            ScreenHarness h;
            h.show(markers(), width, dark);
            const QStringList names = h.names();
            const QRect window(QPoint(0, 0), h.view().size());
            for (const auto& row : rows) {
                SCOPED_TRACE(row.title);
                const QRect title = titleOf(h, row.title);
                ASSERT_FALSE(title.isEmpty()) << names.join(" | ").toStdString();
                EXPECT_EQ(names.count(row.checks), 1);
                const QRect checks = rectOf(h, row.checks);
                ASSERT_FALSE(checks.isEmpty());
                EXPECT_TRUE(window.contains(checks));
                EXPECT_LE(checks.right(), title.left());
                EXPECT_LE(std::abs(checks.center().y() - title.center().y()), 2);
                int left = title.right() - 1;
                for (const char* label : row.after) {
                    SCOPED_TRACE(label);
                    EXPECT_EQ(names.count(label), 1);
                    const QRect mark = rectOf(h, label);
                    ASSERT_FALSE(mark.isEmpty());
                    EXPECT_TRUE(window.contains(mark));
                    EXPECT_GE(mark.left(), left);
                    EXPECT_LE(std::abs(mark.center().y() - title.center().y()), 2);
                    // A pill with its text where there is room, a symbol otherwise.
                    if (width == 520)
                        EXPECT_GT(mark.width(), 30);
                    else
                        EXPECT_LE(mark.width(), 12);
                    left = mark.right();
                }
            }
            // No mark for a pull request without checks or a review.
            EXPECT_EQ(names.filter(QStringLiteral("Checks ")).size(), 3);
            const QImage shot = h.view().grabWindow();
            QSet<QRgb> colours;
            for (const auto& row : deployments) {
                SCOPED_TRACE(row.button);
                QAccessibleInterface* button = h.find(row.button);
                ASSERT_NE(button, nullptr);
                EXPECT_EQ(button->text(QAccessible::Description), row.description);
                auto* item = qobject_cast<QQuickItem*>(button->object());
                ASSERT_NE(item, nullptr);
                QQuickItem* dot = dotOf(item, 6);
                QQuickItem* symbol = symbolOf(item);
                ASSERT_NE(dot, nullptr);
                ASSERT_NE(symbol, nullptr);
                const QRectF at = sceneRect(dot), glyph = sceneRect(symbol), whole = sceneRect(item);
                // Inside the button, over the symbol's lower right corner, not beside it.
                EXPECT_TRUE(whole.contains(at)) << "dot " << at.x() << "," << at.y();
                EXPECT_TRUE(glyph.contains(at.center())) << "dot " << at.x() << "," << at.y() << " glyph "
                                                         << glyph.x() << "," << glyph.y() << " " << glyph.width();
                EXPECT_GT(at.center().x(), glyph.center().x());
                EXPECT_GT(at.center().y(), glyph.center().y());
                // Drawn in its own colour, not covered; a translucent one
                // (inactive) at least stands out from the ring around it.
                const QColor want = dot->property("color").value<QColor>();
                const qreal dpr = shot.devicePixelRatio();
                const QColor got = shot.pixelColor((at.center() * dpr).toPoint());
                const QColor ring = shot.pixelColor((QPointF(at.center().x(), at.top() - 1) * dpr).toPoint());
                const auto distance = [](const QColor& a, const QColor& b) {
                    return std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) + std::abs(a.blue() - b.blue());
                };
                if (want.alpha() == 255)
                    EXPECT_LE(distance(got, want), 24) << got.name().toStdString() << " for " << want.name().toStdString();
                EXPECT_GE(distance(got, ring), 60) << got.name().toStdString() << " on " << ring.name().toStdString();
                colours.insert(want.rgba());
            }
            EXPECT_EQ(colours.size(), 4) << "each state its own colour";
            EXPECT_EQ(h.find("Open preview for #5"), nullptr);
        }
    }
}

}  // namespace
}  // namespace velmar::testing
