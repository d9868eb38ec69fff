// Gives memory back once the panel has settled. Rows that come and go (a
// refresh that fails every repository, a long list loading one answer at a
// time) leave their delegates' script objects behind as garbage, and the
// QML engine collects only when it next needs room: a panel that is open all
// day would keep the high-water mark of its busiest minute. A quiet moment
// after the last change is when nobody notices a collection.
#pragma once

#include <QObject>
#include <QTimer>
#include <chrono>

class QQmlEngine;

namespace velmar {

class SettledCleanup : public QObject {
    Q_OBJECT
public:
    SettledCleanup(QQmlEngine& engine, std::chrono::milliseconds quiet, QObject* parent = nullptr);

    /// Something changed: the cleanup waits for `quiet` without another.
    void changed();
    /// How many cleanups ran (for tests).
    int runs() const { return runs_; }

private:
    void run();

    QQmlEngine& engine_;
    QTimer timer_;
    int runs_ = 0;
};

}  // namespace velmar
