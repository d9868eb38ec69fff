// Desktop notifications through org.freedesktop.Notifications on a bus. Every
// call is asynchronous and bounded, so a server that is slow, silent, absent
// or talks nonsense never holds the main thread; without a server nothing is
// shown and nothing fails.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QStringList>
#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "Effect.h"
#include "Msg.h"

namespace velmar {

class DesktopNotifications : public QObject {
    Q_OBJECT
public:
    /// `deliver` gets an action chosen on one of our notifications, and the
    /// closing of one.
    DesktopNotifications(const QDBusConnection& bus, std::function<void(Msg)> deliver,
                         QObject* parent = nullptr);

    /// Shows `note`, in place of the one still up with the same key.
    void show(const effect::Notify& note);

    /// "&", "<" and ">" as entities, for a server that reads body markup.
    static QString escapeMarkup(const QString& text);

    /// Milliseconds any call may take before it counts as failed.
    static constexpr int callTimeout = 5000;

private slots:
    void actionInvoked(uint id, const QString& action);
    void notificationClosed(uint id, uint reason);

private:
    void askCapabilities();
    void send(const effect::Notify& note);

    QDBusConnection bus_;
    std::function<void(Msg)> deliver_;
    /// Absent until the server has said what it supports.
    std::optional<QStringList> capabilities_;
    bool asking_ = false;
    /// Waiting for the capabilities.
    std::vector<effect::Notify> queued_;
    /// The server's id of each key's notification, and back.
    std::map<std::string, uint> ids_;
    std::map<uint, std::string> keys_;
    /// A key whose Notify call is under way, with a later note for it, if any:
    /// that one is sent once the id it replaces is known.
    std::map<std::string, std::optional<effect::Notify>> inFlight_;
};

}  // namespace velmar
