// Where a saved window frame comes back: the middle of its title bar decides
// whether the frame can still be reached on one of the present displays.
#include "WindowPlacement.h"

#include <algorithm>

namespace velmar::WindowPlacement {

namespace {

/// Half-open, so a point on the shared edge of two displays belongs to one.
bool containsPoint(const Rect& r, double px, double py) {
    return r.x <= px && px < r.x + r.width && r.y <= py && py < r.y + r.height;
}

}  // namespace

WindowFrame restore(const WindowFrame& frame, const std::vector<Rect>& displays,
                    double titleBarHeight) {
    if (displays.empty()) return frame;
    const double px = frame.x + frame.width * 0.5;
    const double py = frame.y + titleBarHeight * 0.5;
    if (std::any_of(displays.begin(), displays.end(),
                    [&](const Rect& d) { return containsPoint(d, px, py); }))
        return frame;

    // Only the position moves: the size the user chose is kept even when it
    // does not fit, which gives negative offsets on a smaller display.
    const Rect& first = displays.front();
    WindowFrame centred = frame;
    centred.x = first.x + (first.width - frame.width) * 0.5;
    centred.y = first.y + (first.height - frame.height) * 0.5;
    return centred;
}

}  // namespace velmar::WindowPlacement
