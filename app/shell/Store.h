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
    /// The step `send` runs; the core's `update` unless a test gives another.
    using Step = std::function<std::pair<Model, Effects>(const Model&, const Msg&)>;

    explicit Store(QObject* parent = nullptr);
    Store(Step step, QObject* parent);

    const Model& model() const { return model_; }

    /// Where `send` delivers effects; until set, effects go nowhere.
    void setPerform(Perform perform);

    /// Runs `update`, stores the new model only if it differs (then emits
    /// `changed`), and afterwards hands each effect to `perform` in order.
    /// Main thread only; never re-entered by `perform`.
    void send(const Msg& msg);

signals:
    /// The stored model differs from what it was before the last `send`.
    void changed();

private:
    Step step_;
    Model model_;
    Perform perform_;
};

}  // namespace velmar
