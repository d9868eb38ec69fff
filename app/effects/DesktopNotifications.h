// Desktop notifications through org.freedesktop.Notifications on a bus, or
// inside a Flatpak sandbox through the desktop portal's Notification
// interface. Every call is asynchronous and bounded, so a server that is slow,
// silent, absent or talks nonsense never holds the main thread; without a
// server nothing is shown and nothing fails.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QStringList>
#include <QVariantList>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <vector>

#include "Effect.h"
#include "Msg.h"

namespace velmar {

class DesktopNotifications : public QObject {
    Q_OBJECT
public:
    /// `deliver` gets an action chosen on one of our notifications, and the
    /// closing of one.
    /// The notification server itself, or the portal that passes a
    /// sandboxed application's notifications on.
    enum class Route { server, portal };

    DesktopNotifications(const QDBusConnection& bus, std::function<void(Msg)> deliver,
                         Route route = Route::server, QObject* parent = nullptr);

    /// The portal inside a sandbox, which the file `sandboxMarker` (Flatpak's
    /// "/.flatpak-info") marks; the server elsewhere.
    static Route routeFor(const QString& sandboxMarker);

    /// Shows `note`, in place of the one still up with the same key.
    void show(const effect::Notify& note);

    /// "&", "<" and ">" as entities, for a server that reads body markup.
    static QString escapeMarkup(const QString& text);

    /// Milliseconds any call may take before it counts as failed.
    static constexpr int callTimeout = 5000;

private slots:
    void actionInvoked(uint id, const QString& action);
    void notificationClosed(uint id, uint reason);
    void portalActionInvoked(const QString& id, const QString& action, const QVariantList& parameter);

private:
    void askCapabilities();
    void send(const effect::Notify& note);
    void sendToPortal(const effect::Notify& note);

    QDBusConnection bus_;
    Route route_;
    /// The keys given to the portal, whose actions are ours.
    std::set<std::string> portalKeys_;
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
