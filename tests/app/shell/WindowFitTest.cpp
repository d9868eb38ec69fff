// Saved frames from a hand-edited window.tsv: numbers no window can have are
// held to what the window system takes before they become integers.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "WindowFit.h"

namespace velmar {
namespace {

TEST(window_fit, sizes_and_positions_are_held_before_conversion) {
    const double huge = 1e300, big = 2147483648.0, nan = std::numeric_limits<double>::quiet_NaN();
    const QRect desktop(0, 0, 1920, 1080);
    struct Row {
        double x, y, width, height;
        QSize size;
        QPoint position;
    };
    const std::vector<Row> rows{
        {40, 30, 360, 480, {360, 480}, {40, 30}},
        {-100, -50, 100, 100, {200, 320}, {-100, -50}},
        {big, big, big, big, {32767, 32767}, {1919, 1079}},
        {-huge, -huge, huge, huge, {32767, 32767}, {-32766, -32766}},
        {nan, nan, nan, nan, {200, 320}, {-199, -319}},
        {2147483647.0, -2147483649.0, 4000, 3000, {4000, 3000}, {1919, -2999}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::Message() << row.x << " " << row.y << " " << row.width << " " << row.height);
        const QSize size = WindowFit::size(row.width, row.height);
        EXPECT_EQ(size, row.size);
        EXPECT_EQ(WindowFit::position(row.x, row.y, size, desktop), row.position);
    }
    // No display known: still a number a window system takes.
    EXPECT_EQ(WindowFit::position(huge, -huge, {200, 320}, QRect()), QPoint(32767, -32767));
}

}  // namespace
}  // namespace velmar
