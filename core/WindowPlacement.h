// Where a saved window frame may come back: it stays if the middle of its
// title bar is on a display, else it is centred on the first display.
#pragma once

#include <vector>

#include "Records.h"

namespace velmar::WindowPlacement {

struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    bool operator==(const Rect&) const = default;
};

/// `displays` lists the primary display first; coordinates are top-left, y down.
WindowFrame restore(const WindowFrame& frame, const std::vector<Rect>& displays,
                    double titleBarHeight);

}  // namespace velmar::WindowPlacement
