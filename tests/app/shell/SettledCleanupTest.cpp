// The cleanup after a burst of changes: it waits for a quiet moment, then
// collects what the script engine no longer reaches.
#include <gtest/gtest.h>

#include <QJSEngine>
#include <QPointer>
#include <QQmlEngine>
#include <QTest>

#include "SettledCleanup.h"

using namespace velmar;
using namespace std::chrono_literals;

TEST(settled_cleanup, collects_unreachable_objects_once_after_a_burst_of_changes) {
    QQmlEngine engine;
    SettledCleanup cleanup(engine, 200ms);
    // An object only the script side owns, and that nothing refers to any more.
    QPointer<QObject> garbage = new QObject;
    QJSEngine::setObjectOwnership(garbage, QJSEngine::JavaScriptOwnership);
    engine.newQObject(garbage);

    // A burst of changes: nothing runs while they come, one cleanup after.
    for (int i = 0; i < 3; ++i) cleanup.changed();
    EXPECT_EQ(cleanup.runs(), 0);
    ASSERT_FALSE(garbage.isNull());
    QTRY_COMPARE_WITH_TIMEOUT(cleanup.runs(), 1, 2000);
    // Collected objects are deleted later, on the event loop.
    QTRY_VERIFY_WITH_TIMEOUT(garbage.isNull(), 2000);
    EXPECT_EQ(cleanup.runs(), 1) << "one burst, one cleanup";
}
