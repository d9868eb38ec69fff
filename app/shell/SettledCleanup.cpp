#include "SettledCleanup.h"

#include <QQmlEngine>
#include <malloc.h>

namespace velmar {

SettledCleanup::SettledCleanup(QQmlEngine& engine, std::chrono::milliseconds quiet, QObject* parent)
    : QObject(parent), engine_(engine) {
    timer_.setSingleShot(true);
    timer_.setInterval(quiet);
    connect(&timer_, &QTimer::timeout, this, &SettledCleanup::run);
}

void SettledCleanup::changed() { timer_.start(); }

void SettledCleanup::run() {
    engine_.collectGarbage();
    // The collection hands its pages back to the C heap; trimming returns
    // the free ones at the top of each arena to the system.
    malloc_trim(0);
    ++runs_;
}

}  // namespace velmar
