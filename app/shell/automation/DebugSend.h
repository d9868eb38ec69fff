// The replay of VELMAR_DEBUG_SEND: a JSON array of messages fed to the store
// after VELMAR_DEBUG_SEND_DELAY seconds (4 by default).
#pragma once

class QObject;

namespace velmar {

class Store;

namespace DebugSend {

/// Reads the two variables once. With a decodable array, sends each message
/// through `store`, in order and with no pause, after the delay; the timer
/// dies with `context`. Otherwise does nothing at all.
void scheduleIfRequested(Store& store, QObject* context);

}  // namespace DebugSend
}  // namespace velmar
