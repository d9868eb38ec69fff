// Clamping of saved frames before they become integers.
#include "WindowFit.h"

#include <algorithm>

#include "Records.h"

namespace velmar::WindowFit {

int clampedInt(double value, int low, int high) {
    if (!(value >= low))
        return low;  // below, or not a number
    if (value > high)
        return high;
    return static_cast<int>(value);
}

QSize size(double width, double height) {
    const int minWidth = int(WindowFrame::minimumWidth), minHeight = int(WindowFrame::minimumHeight);
    return QSize(clampedInt(width, minWidth, largest), clampedInt(height, minHeight, largest));
}

QPoint position(double x, double y, const QSize& outer, const QRect& desktop) {
    if (desktop.isEmpty())
        return QPoint(clampedInt(x, -largest, largest), clampedInt(y, -largest, largest));
    return QPoint(clampedInt(x, desktop.left() - outer.width() + 1, desktop.right()),
                  clampedInt(y, desktop.top() - outer.height() + 1, desktop.bottom()));
}

}  // namespace velmar::WindowFit
