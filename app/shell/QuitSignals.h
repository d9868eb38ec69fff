// SIGTERM, SIGINT and SIGHUP as an ordinary quit: the desktop session ending,
// Ctrl+C in a terminal and a closed terminal all end the panel the way its own
// Quit does, instead of killing it in the middle of a save.
#pragma once

#include <QObject>

class QSocketNotifier;

namespace velmar {

class QuitSignals : public QObject {
    Q_OBJECT
public:
    /// Installs the handlers; the event loop then emits `received` once per
    /// signal. One object per process.
    explicit QuitSignals(QObject* parent = nullptr);
    ~QuitSignals() override;

    /// Signals caught so far, counted inside the handler itself, so it is
    /// current even while the event loop is not running.
    static int count();

signals:
    void received();

private:
    QSocketNotifier* notifier_ = nullptr;
};

}  // namespace velmar
