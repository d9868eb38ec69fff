// The three steps of a send: update, notice a change, then perform.
#include "Store.h"

#include <utility>

namespace velmar {

Store::Store(QObject* parent)
    : Store([](Model& model, const Msg& msg) { return model.apply(msg); }, parent) {}

Store::Store(Step step, QObject* parent)
    : QObject(parent), step_(std::move(step)), perform_([](const Effect&) {}) {}

void Store::setPerform(Perform perform) {
    perform_ = perform ? std::move(perform) : Perform([](const Effect&) {});
}

void Store::send(const Msg& msg) {
    const Effects effects = step_(model_, msg);
    if (!(model_ == previous_)) {
        // The same step on the model as it was brings the two level again;
        // its effects are the ones already in hand.
        step_(previous_, msg);
        emit changed();
    }
    // Effects run only after observers have seen the new model: a view that
    // reacts to `changed` must never see a model older than the work started.
    for (const Effect& effect : effects) perform_(effect);
}

}  // namespace velmar
