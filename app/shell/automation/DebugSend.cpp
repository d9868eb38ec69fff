// Scheduling of the message replay on the main thread.
#include "DebugSend.h"

#include <QPointer>
#include <QTimer>
#include <cstdlib>

#include "DebugEnv.h"
#include "Store.h"

namespace velmar::DebugSend {

void scheduleIfRequested(Store& store, QObject* context) {
    const char* text = std::getenv("VELMAR_DEBUG_SEND");
    if (text == nullptr) return;
    auto messages = DebugEnv::decodeMessages(text);
    if (!messages) return;
    const double delay = DebugEnv::seconds(std::getenv("VELMAR_DEBUG_SEND_DELAY")).value_or(4.0);
    QPointer<Store> alive(&store);
    QTimer::singleShot(DebugEnv::timerMilliseconds(delay), context,
                       [alive, messages = std::move(*messages)] {
                           if (!alive) return;
                           for (const Msg& msg : messages) alive->send(msg);
                       });
}

}  // namespace velmar::DebugSend
