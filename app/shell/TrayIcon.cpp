// The tray icon: a watcher for the tray, the icon and its menu while both the
// switch and a tray are there, and the launcher's count. The tray's presence
// is asked without waiting; the icon is drawn again only when what it shows
// changed.
#include "TrayIcon.h"

#include <QAction>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QIcon>
#include <QMenu>
#include <QPainter>
#include <QSystemTrayIcon>
#include <algorithm>

namespace velmar {

namespace {

const QString launcherUri = QStringLiteral("application://velmar.desktop");

/// Every size a tray may ask for, drawn once.
QIcon iconFor(std::int64_t count, bool failed) {
    QIcon icon;
    for (int size : {16, 22, 24, 32, 48, 64})
        icon.addPixmap(QPixmap::fromImage(TrayIcon::picture(size, count, failed)));
    return icon;
}

}  // namespace

TrayIcon::TrayIcon(const QDBusConnection& bus, Actions actions, QObject* parent)
    : QObject(parent), bus_(bus), actions_(std::move(actions)) {
    if (!bus_.isConnected()) return;
    const QString service = QString::fromLatin1(watcherService);
    auto* watcher = new QDBusServiceWatcher(service, bus_,
                                            QDBusServiceWatcher::WatchForRegistration |
                                                QDBusServiceWatcher::WatchForUnregistration,
                                            this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, [this] {
        // A tray that restarted has forgotten our icon: it registers anew.
        icon_.reset();
        setFound(true);
    });
    connect(watcher, &QDBusServiceWatcher::serviceUnregistered, this, [this] { setFound(false); });
    auto call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                               QStringLiteral("/org/freedesktop/DBus"),
                                               QStringLiteral("org.freedesktop.DBus"),
                                               QStringLiteral("NameHasOwner"));
    call << service;
    auto* pending = new QDBusPendingCallWatcher(bus_.asyncCall(call, 5000), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* w) {
        w->deleteLater();
        const QDBusPendingReply<bool> reply = *w;
        // The watcher's signal may have told us already.
        if (!reply.isError() && reply.value()) setFound(true);
    });
}

TrayIcon::~TrayIcon() = default;

void TrayIcon::setFound(bool found) {
    const bool changed = found != found_;
    found_ = found;
    apply();
    if (changed) emit trayFoundChanged(found);
}

void TrayIcon::follow(const Model& model) {
    const bool wanted = model.trayOn();
    const std::int64_t count = model.reviewWaiting();
    const bool failed = model.myAttentionCount() > 0;
    const QString tooltip = QString::fromStdString(model.trayTooltip());
    if (wanted == wanted_ && count == count_ && failed == failed_ && tooltip == tooltip_) return;
    const bool picture = count != count_ || failed != failed_;
    wanted_ = wanted;
    count_ = count;
    failed_ = failed;
    tooltip_ = tooltip;
    if (icon_ && wanted_ && picture) icon_->setIcon(iconFor(count_, failed_));
    if (icon_ && wanted_) icon_->setToolTip(tooltip_);
    apply();
    publishCount();
}

void TrayIcon::apply() {
    const bool show = wanted_ && found_;
    if (!show) {
        icon_.reset();
        menu_.reset();
        return;
    }
    if (icon_) return;
    menu_ = std::make_unique<QMenu>();
    menu_->addAction(QStringLiteral("Show Velmar"), this, [this] { actions_.show(); });
    menu_->addAction(QStringLiteral("Refresh"), this, [this] { actions_.refresh(); });
    menu_->addAction(QStringLiteral("Check for Updates\u2026"))->setEnabled(false);
    menu_->addSeparator();
    menu_->addAction(QStringLiteral("Quit"), this, [this] { actions_.quit(); });
    icon_ = std::make_unique<QSystemTrayIcon>();
    icon_->setIcon(iconFor(count_, failed_));
    icon_->setToolTip(tooltip_);
    icon_->setContextMenu(menu_.get());
    connect(icon_.get(), &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick)
                    actions_.show();
            });
    icon_->show();
}

void TrayIcon::publishCount() {
    // The launcher shows the count while the switch is on; turned off, it is
    // taken back once, and never sent by a panel that never showed one.
    const std::optional<std::int64_t> count =
        wanted_ ? std::optional<std::int64_t>(count_) : std::nullopt;
    if (count == published_ || (!count && !published_) || !bus_.isConnected()) return;
    published_ = count;
    auto signal = QDBusMessage::createSignal(QStringLiteral("/com/canonical/unity/launcherentry/velmar"),
                                             QStringLiteral("com.canonical.Unity.LauncherEntry"),
                                             QStringLiteral("Update"));
    QVariantMap properties;
    properties.insert(QStringLiteral("count"), qint64(count.value_or(0)));
    properties.insert(QStringLiteral("count-visible"), count.value_or(0) > 0);
    signal << launcherUri << properties;
    bus_.send(signal);
}

QImage TrayIcon::picture(int size, std::int64_t count, bool failed) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QIcon(QStringLiteral(":/velmar/velmar.svg")).paint(&painter, image.rect());
    if (count > 0) {
        // The number on a dark disc in the lower right corner, ringed in white
        // to stand off the blue icon, as large as legibility at 16 pixels allows.
        const QString text = count > 99 ? QStringLiteral("99+") : QString::number(count);
        QFont font;
        font.setBold(true);
        font.setPixelSize(std::max(7, size * 2 / 5));
        painter.setFont(font);
        const int textWidth = painter.fontMetrics().horizontalAdvance(text);
        const int height = std::max(9, size / 2);
        const int width = std::min(size, std::max(height, textWidth + size / 6));
        const QRectF badge(size - width, size - height, width, height);
        painter.setPen(QPen(Qt::white, std::max(1.0, size / 24.0)));
        painter.setBrush(QColor(0x1c, 0x21, 0x28));
        painter.drawRoundedRect(badge.adjusted(0.5, 0.5, -0.5, -0.5), height / 2.0, height / 2.0);
        painter.setPen(Qt::white);
        painter.drawText(badge, Qt::AlignCenter, text);
    }
    if (failed) {
        const qreal d = std::max(5.0, size * 0.38);
        painter.setPen(QPen(Qt::white, std::max(1.0, size / 16.0)));
        painter.setBrush(QColor(0xe5, 0x39, 0x35));
        painter.drawEllipse(QRectF(size - d - 0.5, 0.5, d, d));
    }
    painter.end();
    return image;
}

}  // namespace velmar
