// A saved frame made safe for the window system: window.tsv is a file anyone
// can edit, and a width of 1e300 or a position of 2^31 converted to int is
// undefined behaviour, then a window that cannot paint.
#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

namespace velmar::WindowFit {

/// `value` held to [low, high] and then converted; not-a-number gives `low`.
int clampedInt(double value, int low, int high);

/// X11 coordinates are 16-bit: no window system takes a larger window.
inline constexpr int largest = 32767;

/// The inner size raised to the panel's minimum and held to `largest`. A
/// size larger than the displays is the user's to keep.
QSize size(double width, double height);

/// The outer corner held so that at least a corner of a window of `outer`
/// size stays on `desktop`, the bounding box of every display (or within
/// `largest` when there is no display).
QPoint position(double x, double y, const QSize& outer, const QRect& desktop);

}  // namespace velmar::WindowFit
