// The status icon in the desktop's tray, and the count on the launcher icon.
// The icon is the StatusNotifierItem that QSystemTrayIcon registers; it is made
// only while a org.kde.StatusNotifierWatcher is on the bus, so a desktop that
// starts its tray after the panel still gets it, and one without a tray leaves
// the panel as it was.
#pragma once

#include <QDBusConnection>
#include <QImage>
#include <QObject>
#include <QString>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "Model.h"

class QMenu;
class QSystemTrayIcon;

namespace velmar {

class TrayIcon : public QObject {
    Q_OBJECT
public:
    struct Actions {
        std::function<void()> show;
        std::function<void()> refresh;
        std::function<void()> quit;
    };

    TrayIcon(const QDBusConnection& bus, Actions actions, QObject* parent = nullptr);
    ~TrayIcon() override;

    /// Shows, updates or removes the icon as the model says.
    void follow(const Model& model);
    /// A tray watcher is on the bus.
    bool trayFound() const { return found_; }
    /// Whether the icon is up.
    bool shown() const { return icon_ != nullptr; }

    /// The icon at `size` pixels square: the pull requests waiting for the
    /// viewer's review as a number (none for zero, "99+" past 99), and a red
    /// mark when a check of the viewer's failed.
    static QImage picture(int size, std::int64_t count, bool failed);

    static constexpr const char* watcherService = "org.kde.StatusNotifierWatcher";

signals:
    void trayFoundChanged(bool found);

private:
    void setFound(bool found);
    void apply();
    void publishCount();

    QDBusConnection bus_;
    Actions actions_;
    bool found_ = false;
    bool wanted_ = false;
    std::int64_t count_ = 0;
    bool failed_ = false;
    QString tooltip_;
    // The count last published on the launcher; absent until one was.
    std::optional<std::int64_t> published_;
    std::unique_ptr<QMenu> menu_;
    std::unique_ptr<QSystemTrayIcon> icon_;
};

}  // namespace velmar
