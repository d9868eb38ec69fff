// The desktop's colour-scheme and contrast preferences, read from the XDG
// desktop portal (org.freedesktop.portal.Settings) and followed while the
// panel runs.
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QVariant>

class QDBusMessage;

namespace velmar {

/// The portal's "color-scheme" value.
enum class PortalScheme { noPreference, dark, light };

/// A "color-scheme" value as sent by the portal: a uint32 (1 dark, 2 light),
/// possibly wrapped in variants. Anything else counts as no preference.
PortalScheme parsePortalScheme(const QVariant& value);

/// A "contrast" value as sent by the portal: a uint32, 1 for high contrast.
/// Anything else counts as normal contrast.
bool parsePortalContrast(const QVariant& value);

class PortalSettings : public QObject {
    Q_OBJECT
public:
    /// Starts reading from the portal on `bus` and returns at once: the
    /// answers, and every later change, arrive from the event loop. Until an
    /// answer, and without a portal, the scheme is `noPreference`.
    explicit PortalSettings(const QDBusConnection& bus, QObject* parent = nullptr);

    PortalScheme scheme() const { return scheme_; }
    bool highContrast() const { return highContrast_; }

signals:
    /// The scheme or the contrast changed.
    void changed();

private slots:
    void settingChanged(const QDBusMessage& message);

private:
    void read(const QString& key, bool oldMethod = false);
    void apply(const QString& key, const QVariant& value);

    QDBusConnection bus_;
    PortalScheme scheme_ = PortalScheme::noPreference;
    bool highContrast_ = false;
};

}  // namespace velmar
