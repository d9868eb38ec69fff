#include <gtest/gtest.h>

#include "WindowPlacement.h"

using velmar::WindowFrame;
using velmar::WindowPlacement::Rect;
using velmar::WindowPlacement::restore;

TEST(window_placement, keeps_a_frame_whose_title_bar_middle_is_reachable_else_centres_it) {
    const std::vector<Rect> two{{0, 0, 1000, 800}, {1000, 0, 500, 400}};
    struct Row {
        const char* what;
        WindowFrame frame;
        std::vector<Rect> displays;
        double titleBar;
        WindowFrame expected;
    };
    const Row rows[] = {
        {"no displays", {5000, 5000, 300, 400}, {}, 28, {5000, 5000, 300, 400}},
        {"middle on the second display, body hanging off", {1200, 350, 200, 900}, two, 28,
         {1200, 350, 200, 900}},
        {"top-left corner off-screen, middle on", {-100, 10, 400, 300}, two, 28,
         {-100, 10, 400, 300}},
        {"middle exactly on the left and top edges", {-100, -14, 200, 300}, two, 28,
         {-100, -14, 200, 300}},
        {"middle exactly on the right edge of the first goes to the second", {900, 0, 200, 300},
         two, 0, {900, 0, 200, 300}},
        {"middle exactly on the outer right edge", {1400, 0, 200, 300}, two, 0,
         {400, 250, 200, 300}},
        {"middle exactly on the bottom edge", {100, 786, 200, 300}, two, 28,
         {400, 250, 200, 300}},
        {"on a removed display: centred, size kept", {3000, 100, 620, 760}, two, 28,
         {190, 20, 620, 760}},
        {"wider than the first display", {3000, 100, 1200, 500}, two, 28, {-100, 150, 1200, 500}},
        {"centred on an offset primary display", {-5000, 0, 100, 100}, {{200, 50, 400, 300}}, 28,
         {350, 150, 100, 100}},
        {"title bar height zero tests the top edge", {100, 799, 200, 300}, two, 0,
         {100, 799, 200, 300}},
    };
    for (const auto& r : rows) EXPECT_EQ(restore(r.frame, r.displays, r.titleBar), r.expected) << r.what;
}
