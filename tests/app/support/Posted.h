// Waiting for what the application has queued, for the screen and effect helpers alike.
#pragma once

#include <QCoreApplication>
#include <QTest>

namespace velmar::testing {

/// Waits until every event posted so far has been handled: they are handled
/// first in, first out, so a call posted now runs after all of them.
inline bool handlePosted(int milliseconds = 5000) {
    bool reached = false;
    QMetaObject::invokeMethod(QCoreApplication::instance(), [&] { reached = true; }, Qt::QueuedConnection);
    return QTest::qWaitFor([&] { return reached; }, milliseconds);
}

}  // namespace velmar::testing
