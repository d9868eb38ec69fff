// The three steps of a send: update, store if different, then perform.
#include "Store.h"

#include <utility>

namespace velmar {

Store::Store(QObject* parent) : Store(&velmar::update, parent) {}

Store::Store(Step step, QObject* parent)
    : QObject(parent), step_(std::move(step)), perform_([](const Effect&) {}) {}

void Store::setPerform(Perform perform) {
    perform_ = perform ? std::move(perform) : Perform([](const Effect&) {});
}

void Store::send(const Msg& msg) {
    auto [next, effects] = step_(model_, msg);
    if (!(next == model_)) {
        model_ = std::move(next);
        emit changed();
    }
    // Effects run only after observers have seen the new model: a view that
    // reacts to `changed` must never see a model older than the work started.
    for (const Effect& effect : effects) perform_(effect);
}

}  // namespace velmar
