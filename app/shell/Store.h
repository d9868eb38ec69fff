// The one owner of the Model on the main thread, and `send`, the only way a
// Msg gets into the core. Observers hear `changed` only when the stored value
// really differs, so an idle tick wakes no view.
#pragma once

#include <QObject>
#include <functional>

#include "Effect.h"
#include "Model.h"
#include "Msg.h"

namespace velmar {

class Store : public QObject {
    Q_OBJECT
public:
    using Perform = std::function<void(const Effect&)>;
    /// The step `send` runs on a model in place: the core's `Model::apply`
    /// unless a test gives another. It must give the same model from the same
    /// model and message, as the core's does: a step that changes something
    /// is run twice.
    using Step = std::function<Effects(Model&, const Msg&)>;

    explicit Store(QObject* parent = nullptr);
    Store(Step step, QObject* parent);

    const Model& model() const { return model_; }

    /// Where `send` delivers effects; until set, effects go nowhere.
    void setPerform(Perform perform);

    /// Runs the step, emits `changed` if the model now differs, and
    /// afterwards hands each effect to `perform` in order. Main thread only;
    /// never re-entered by `perform`.
    void send(const Msg& msg);

signals:
    /// The stored model differs from what it was before the last `send`.
    void changed();

private:
    Step step_;
    Model model_;
    /// Equal to `model_` between sends: what a step is compared with. A
    /// step that changed something is run again on it rather than copying
    /// the model, so one answer among ten thousand repositories costs its own
    /// work and a comparison that stops at the first difference, not a copy
    /// of every row.
    Model previous_;
    Perform perform_;
};

}  // namespace velmar
