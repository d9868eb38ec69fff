// Synthetic input for driving the running application from outside:
// VELMAR_DEBUG_CLICK (points), VELMAR_DEBUG_KEY (one key code),
// VELMAR_DEBUG_DRAG (one drag, with VELMAR_DEBUG_DRAG_PRESS before moving
// and VELMAR_DEBUG_DRAG_HOLD before letting go), all starting after
// VELMAR_DEBUG_CLICK_DELAY. The events go through the application's own
// event queue, where the reorder filter sees them before any item, exactly
// as real input. Each action writes one "velmar: " line to standard error.
#pragma once

#include <QPointF>
#include <QString>

class QQuickWindow;

namespace velmar::DebugClick {

/// Reads the variables once and schedules the drag, the key and the clicks,
/// in that order, on the main thread; the timers die with `window`. Does
/// nothing at all without them.
void scheduleIfRequested(QQuickWindow* window);

/// "velmar: " + `text` + a newline, to standard error.
void log(const QString& text);

/// A left click at `point` (window coordinates, y downward): brings the
/// window forward, logs "click (x, y) → Type (x, y, w×h)", queues the
/// release, then hands the press straight to the window.
void click(QQuickWindow* window, QPointF point);

/// One key, by the design's key code (53 is Escape and carries U+001B):
/// logs "key N", then the press and the release go through the queue, the
/// press offered to the window's shortcuts first as a typed key would be.
void key(QQuickWindow* window, int code);

/// The Qt key of a design key code, for the keys the screens react to;
/// Qt::Key_unknown for the rest.
int qtKey(int code);

/// The log line of a click at `point`, naming what lies under it.
QString clickLine(QQuickWindow* window, QPointF point);
/// The log line of a drag, with the hit item and up to 7 of its parents.
QString dragLine(QQuickWindow* window, QPointF from, QPointF to);

}  // namespace velmar::DebugClick
