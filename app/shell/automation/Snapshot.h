// VELMAR_SNAPSHOT: a PNG of the window (and of any other visible window)
// after VELMAR_SNAPSHOT_DELAY seconds (9 by default), then the process quits.
#pragma once

#include <QString>
#include <optional>

class QQuickWindow;

namespace velmar::Snapshot {

/// Reads the two variables once; with a non-empty path, schedules the window
/// to come to the front half a second before the capture, then the capture
/// and the quit. Does nothing without the variable.
void scheduleIfRequested(QQuickWindow* window);

/// Renders `window` into `path` as PNG; the error's text on failure.
std::optional<QString> capture(QQuickWindow* window, const QString& path);

/// "a.png" and 2 give "a-2.png": the path of the n-th further window.
QString numberedPath(const QString& path, int n);

}  // namespace velmar::Snapshot
