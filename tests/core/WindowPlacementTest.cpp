#include <gtest/gtest.h>

#include "WindowPlacement.h"

using velmar::WindowFrame;
using velmar::WindowPlacement::Rect;
using velmar::WindowPlacement::restore;

TEST(window_placement, keeps_a_reachable_title_bar_else_centres_on_the_first_display) {
    const std::vector<Rect> two{{0, 0, 1000, 800}, {1000, 0, 500, 400}};
    const WindowFrame centred{400, 250, 200, 300};
    struct Row {
        const char* what;
        WindowFrame frame;
        double titleBar;
        WindowFrame expected;
    };
    const Row rows[] = {
        {"middle on the second display, body off-screen", {1200, 350, 200, 900}, 28, {1200, 350, 200, 900}},
        {"top-left corner off-screen, middle on", {-100, 10, 400, 300}, 28, {-100, 10, 400, 300}},
        {"middle on the left and top edges", {-100, -14, 200, 300}, 28, {-100, -14, 200, 300}},
        {"right edge of the first belongs to the second", {900, 0, 200, 300}, 0, {900, 0, 200, 300}},
        {"middle on the outer right edge", {1400, 0, 200, 300}, 0, centred},
        {"middle on the bottom edge", {100, 786, 200, 300}, 28, centred},
        {"title bar height zero tests the top edge", {100, 799, 200, 300}, 0, {100, 799, 200, 300}},
        {"removed display: centred, size kept", {3000, 100, 620, 760}, 28, {190, 20, 620, 760}},
        {"wider than the first display", {3000, 100, 1200, 500}, 28, {-100, 150, 1200, 500}},
    };
    for (const auto& r : rows) EXPECT_EQ(restore(r.frame, two, r.titleBar), r.expected) << r.what;

    EXPECT_EQ(restore({5000, 5000, 300, 400}, {}, 28), (WindowFrame{5000, 5000, 300, 400}));
    EXPECT_EQ(restore({-5000, 0, 100, 100}, {{200, 50, 400, 300}}, 28), (WindowFrame{350, 150, 100, 100}));
}
