// Portal reading: two asynchronous reads at start (ReadOne, or the older Read
// where the portal lacks it), the SettingChanged signal afterwards, and a
// fresh read whenever a portal appears on the bus. Nothing here ever waits.
#include "PortalSettings.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <optional>

namespace velmar {

namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString colorSchemeKey = QStringLiteral("color-scheme");
const QString contrastKey = QStringLiteral("contrast");

// Read wraps the value in one variant more than ReadOne and the signal do;
// peel every layer rather than trust either.
std::optional<quint32> unsignedValue(QVariant value) {
    for (int depth = 0; depth < 4 && value.metaType() == QMetaType::fromType<QDBusVariant>();
         ++depth)
        value = value.value<QDBusVariant>().variant();
    switch (value.metaType().id()) {
        case QMetaType::UInt: return value.toUInt();
        case QMetaType::Int: {
            const int n = value.toInt();
            return n < 0 ? std::nullopt : std::optional<quint32>(quint32(n));
        }
        default: return std::nullopt;
    }
}

}  // namespace

PortalScheme parsePortalScheme(const QVariant& value) {
    switch (unsignedValue(value).value_or(0)) {
        case 1: return PortalScheme::dark;
        case 2: return PortalScheme::light;
        default: return PortalScheme::noPreference;
    }
}

bool parsePortalContrast(const QVariant& value) { return unsignedValue(value) == 1u; }

PortalSettings::PortalSettings(const QDBusConnection& bus, QObject* parent)
    : QObject(parent), bus_(bus) {
    if (!bus_.isConnected()) return;
    // The whole message, not typed arguments: a signal with other argument
    // types still arrives and is read like any other value.
    bus_.connect(service, path, interface, QStringLiteral("SettingChanged"), this,
                 SLOT(settingChanged(QDBusMessage)));
    // A portal that starts after us (or restarts) is read afresh.
    auto* watcher =
        new QDBusServiceWatcher(service, bus_, QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, [this] {
        read(colorSchemeKey);
        read(contrastKey);
    });
    read(colorSchemeKey);
    read(contrastKey);
}

void PortalSettings::read(const QString& key, bool oldMethod) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        service, path, interface, oldMethod ? QStringLiteral("Read") : QStringLiteral("ReadOne"));
    call << appearance << key;
    // The default time limit (25 s) stands: a slow portal's answer still counts.
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, key, oldMethod](QDBusPendingCallWatcher* done) {
                done->deleteLater();
                const QDBusPendingReply<QDBusVariant> reply = *done;
                if (reply.isError()) {
                    // Portals before version 2 of the interface only have Read.
                    if (!oldMethod && reply.error().type() == QDBusError::UnknownMethod)
                        read(key, true);
                    return;
                }
                apply(key, reply.argumentAt(0));
            });
}

void PortalSettings::settingChanged(const QDBusMessage& message) {
    const QList<QVariant> arguments = message.arguments();
    if (arguments.size() == 3 && arguments[0].toString() == appearance)
        apply(arguments[1].toString(), arguments[2]);
}

void PortalSettings::apply(const QString& key, const QVariant& value) {
    if (key == colorSchemeKey) {
        const PortalScheme scheme = parsePortalScheme(value);
        if (scheme == scheme_) return;
        scheme_ = scheme;
    } else if (key == contrastKey) {
        const bool high = parsePortalContrast(value);
        if (high == highContrast_) return;
        highContrast_ = high;
    } else {
        return;
    }
    emit changed();
}

}  // namespace velmar
