// A panel left alone draws nothing: after the last change to the model has
// been shown, no further frame is rendered, whatever the list went through to
// get there (groups loading in turn, groups pushed past the list's cap while
// their spinner turned, a loading group removed).
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QQuickItem>
#include <QSignalSpy>
#include <QTest>
#include <functional>

#include "ScreenHarness.h"

namespace velmar::testing {
namespace {

// `repos` watched repositories, the first `loaded` of them answered with
// `perRepo` pull requests each, the rest still loading.
Model watching(int repos, int loaded, int perRepo) {
    Model m = readyModel();
    for (int r = 1; r <= repos; ++r) {
        const bool done = r <= loaded;
        m.repos.push_back(repo(r, "acme/repo-" + std::to_string(r), done ? RepoState::ok : RepoState::loading,
                               done ? perRepo : 0));
        for (int n = 1; done && n <= perRepo; ++n)
            m.prs.push_back(pr(r, n, "Change " + std::to_string(n), n % 3 ? "https://pr.example.com" : ""));
    }
    return m;
}

// The models a session goes through, first to last.
std::vector<Model> loadingInTurn(int repos, int perRepo) {
    std::vector<Model> steps;
    for (int loaded = 0; loaded <= repos; ++loaded) steps.push_back(watching(repos, loaded, perRepo));
    return steps;
}

std::vector<Model> loadingOneRemoved() {
    Model last = watching(3, 3, 40);
    last.repos.erase(last.repos.begin() + 1);
    std::erase_if(last.prs, [](const PR& p) { return p.repoId == 2; });
    return {watching(3, 0, 0), last};
}

struct Case {
    const char* name;
    std::function<std::vector<Model>()> steps;
    int width;
    bool scrolledToEnd;
};

void PrintTo(const Case& c, std::ostream* out) { *out << c.name; }

// Waits until a frame has been followed by `gap` ms without one (the change
// and whatever brief animation it started are drawn), for at most `limit` ms.
bool settled(QSignalSpy& swapped, int gap, int limit) {
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < limit) {
        swapped.clear();
        if (!QTest::qWaitFor([&] { return swapped.count() > 0; }, gap)) return true;
    }
    return false;
}

class idle_frames : public ::testing::TestWithParam<Case> {};

TEST_P(idle_frames, none_after_the_last_change_is_shown) {
    const Case& c = GetParam();
    const std::vector<Model> steps = c.steps();
    ScreenHarness h;
    QQuickView& view = h.view();
    QSignalSpy swapped(&view, &QQuickWindow::frameSwapped);
    h.show(steps.front(), c.width);
    if (c.scrolledToEnd) {
        auto* list = view.rootObject()->findChild<QQuickItem*>("prList");
        ASSERT_NE(list, nullptr);
        QMetaObject::invokeMethod(list, "positionViewAtEnd");
    }
    for (std::size_t i = 1; i < steps.size(); ++i) {
        h.setModel(steps[i]);
        ASSERT_TRUE(h.drawn()) << "step " << i << " was never drawn";
    }
    // The last change is drawn, and so is anything short it set moving (a
    // glide lasts 0.26 s); from here on nothing may be drawn.
    ASSERT_TRUE(settled(swapped, 400, 3000)) << "frames never stopped after the last change";
    swapped.clear();
    EXPECT_FALSE(QTest::qWaitFor([&] { return swapped.count() > 0; }, 2000))
        << swapped.count() << " frames rendered while nothing changed";
}

INSTANTIATE_TEST_SUITE_P(
    list, idle_frames,
    ::testing::Values(Case{"twenty_load_in_turn", [] { return loadingInTurn(20, 40); }, 420, false},
                      Case{"twenty_load_while_scrolled_down", [] { return loadingInTurn(20, 2); }, 260, true},
                      Case{"a_loading_one_is_removed", loadingOneRemoved, 520, false}),
    [](const ::testing::TestParamInfo<Case>& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace velmar::testing
