// The notification client. The capabilities are asked once, on the first
// notification, and the notifications wait for them; one that follows another
// of the same key before the server gave the first its id waits for that id,
// so a pull request never has two notifications up.
#include "DesktopNotifications.h"

#include <QDBusArgument>
#include <QDBusPendingCallWatcher>
#include <QFileInfo>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QVariantMap>

namespace velmar {

namespace {

const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString path = QStringLiteral("/org/freedesktop/Notifications");
const QString interface = QStringLiteral("org.freedesktop.Notifications");
const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString portalInterface = QStringLiteral("org.freedesktop.portal.Notification");

QString q(const std::string& s) { return QString::fromStdString(s); }

}  // namespace

DesktopNotifications::DesktopNotifications(const QDBusConnection& bus,
                                           std::function<void(Msg)> deliver, Route route,
                                           QObject* parent)
    : QObject(parent), bus_(bus), route_(route), deliver_(std::move(deliver)) {
    if (!bus_.isConnected()) return;
    if (route_ == Route::portal) {
        bus_.connect(portalService, portalPath, portalInterface, QStringLiteral("ActionInvoked"), this,
                     SLOT(portalActionInvoked(QString, QString, QVariantList)));
        return;
    }
    bus_.connect(service, path, interface, QStringLiteral("ActionInvoked"), this,
                 SLOT(actionInvoked(uint, QString)));
    bus_.connect(service, path, interface, QStringLiteral("NotificationClosed"), this,
                 SLOT(notificationClosed(uint, uint)));
}

DesktopNotifications::Route DesktopNotifications::routeFor(const QString& sandboxMarker) {
    return QFileInfo::exists(sandboxMarker) ? Route::portal : Route::server;
}

QString DesktopNotifications::escapeMarkup(const QString& text) {
    QString out;
    out.reserve(text.size());
    for (const QChar c : text) {
        if (c == u'&') out += QStringLiteral("&amp;");
        else if (c == u'<') out += QStringLiteral("&lt;");
        else if (c == u'>') out += QStringLiteral("&gt;");
        else out += c;
    }
    return out;
}

void DesktopNotifications::show(const effect::Notify& note) {
    if (!bus_.isConnected()) return;
    if (route_ == Route::portal) {
        sendToPortal(note);
        return;
    }
    if (!capabilities_) {
        queued_.push_back(note);
        askCapabilities();
        return;
    }
    send(note);
}

void DesktopNotifications::askCapabilities() {
    if (asking_) return;
    asking_ = true;
    const auto call = QDBusMessage::createMethodCall(service, path, interface,
                                                     QStringLiteral("GetCapabilities"));
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(call, callTimeout), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* w) {
        w->deleteLater();
        asking_ = false;
        const QDBusPendingReply<QStringList> reply = *w;
        auto waiting = std::move(queued_);
        queued_.clear();
        // No server, or one that answers something else: what waited is
        // dropped, and the next notification asks again.
        if (reply.isError()) return;
        capabilities_ = reply.value();
        for (const auto& note : waiting) send(note);
    });
}

void DesktopNotifications::send(const effect::Notify& note) {
    if (auto busy = inFlight_.find(note.key); busy != inFlight_.end()) {
        busy->second = note;  // only the latest matters
        return;
    }
    inFlight_[note.key];

    QString body = q(note.body);
    if (capabilities_->contains(QStringLiteral("body-markup"))) body = escapeMarkup(body);
    QStringList actions;
    if (capabilities_->contains(QStringLiteral("actions")) && !note.url.empty()) {
        actions << QStringLiteral("default") << QStringLiteral("Open pull request");
        if (!note.preview.empty()) actions << QStringLiteral("preview") << QStringLiteral("Open preview");
    }
    QVariantMap hints;
    hints.insert(QStringLiteral("desktop-entry"), QStringLiteral("velmar"));
    hints.insert(QStringLiteral("urgency"), QVariant::fromValue<uchar>(1));
    const auto known = ids_.find(note.key);
    const uint replaces = known == ids_.end() ? 0 : known->second;

    auto call = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Notify"));
    call << QStringLiteral("Velmar") << replaces << QStringLiteral("velmar") << q(note.summary) << body
         << actions << hints << -1;
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(call, callTimeout), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, key = note.key](QDBusPendingCallWatcher* w) {
                w->deleteLater();
                const QDBusPendingReply<uint> reply = *w;
                if (auto old = ids_.find(key); old != ids_.end()) {
                    keys_.erase(old->second);
                    ids_.erase(old);
                }
                if (!reply.isError() && reply.value() != 0) {
                    ids_[key] = reply.value();
                    keys_[reply.value()] = key;
                }
                auto next = std::move(inFlight_[key]);
                inFlight_.erase(key);
                if (next) send(*next);
            });
}

void DesktopNotifications::sendToPortal(const effect::Notify& note) {
    // The portal keeps one notification per id: the same key replaces it, in
    // the order of our calls, so nothing waits for an answer. Its body is
    // plain text and every portal takes buttons.
    QVariantMap notification;
    notification.insert(QStringLiteral("title"), q(note.summary));
    notification.insert(QStringLiteral("body"), q(note.body));
    notification.insert(QStringLiteral("priority"), QStringLiteral("normal"));
    if (!note.url.empty()) {
        notification.insert(QStringLiteral("default-action"), QStringLiteral("default"));
        const auto button = [](const QString& label, const QString& action) {
            return QVariantMap{{QStringLiteral("label"), label}, {QStringLiteral("action"), action}};
        };
        QDBusArgument buttons;
        buttons.beginArray(qMetaTypeId<QVariantMap>());
        buttons << button(QStringLiteral("Open pull request"), QStringLiteral("default"));
        if (!note.preview.empty()) buttons << button(QStringLiteral("Open preview"), QStringLiteral("preview"));
        buttons.endArray();
        notification.insert(QStringLiteral("buttons"), QVariant::fromValue(buttons));
    }
    portalKeys_.insert(note.key);
    auto call = QDBusMessage::createMethodCall(portalService, portalPath, portalInterface,
                                               QStringLiteral("AddNotification"));
    call << q(note.key) << notification;
    // The answer says nothing worth waiting for; a missing portal is an error
    // reply that is dropped with its watcher.
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(call, callTimeout), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, watcher, &QObject::deleteLater);
}

void DesktopNotifications::portalActionInvoked(const QString& id, const QString& action,
                                               const QVariantList&) {
    const std::string key = id.toStdString();
    if (!portalKeys_.contains(key)) return;
    deliver_(msg::NotificationAction{key, action.toStdString()});
}

void DesktopNotifications::actionInvoked(uint id, const QString& action) {
    // The signal goes to every client; ids that are not ours are not ours.
    const auto key = keys_.find(id);
    if (key == keys_.end()) return;
    deliver_(msg::NotificationAction{key->second, action.toStdString()});
}

void DesktopNotifications::notificationClosed(uint id, uint) {
    const auto key = keys_.find(id);
    if (key == keys_.end()) return;
    const std::string k = key->second;
    keys_.erase(key);
    ids_.erase(k);
    deliver_(msg::NotificationClosed{k});
}

}  // namespace velmar
