// Carries out the core's effects and hands every result back as a Msg on the
// main thread. The only place where the core touches the outside world.
#pragma once

#include <QObject>
#include <QPointer>
#include <functional>

#include "Effect.h"
#include "Msg.h"

namespace velmar {

class EffectRunner : public QObject {
    Q_OBJECT
public:
    /// `deliver` is called on the main thread, one queued task per result,
    /// and only while `receiver` lives.
    using Deliver = std::function<void(Msg)>;
    EffectRunner(QObject* receiver, Deliver deliver, QObject* parent = nullptr);
    ~EffectRunner() override;

    /// Main thread only; starts the work and returns without waiting.
    void perform(const Effect& effect);

    /// Callable from any thread: queues `msg` for the main thread.
    void reply(Msg msg);

private:
    QPointer<QObject> receiver_;
    Deliver deliver_;
};

}  // namespace velmar
