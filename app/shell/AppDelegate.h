// The windowed life of the application: builds the Store, the effect runner,
// the menu, the one window and the timers, and brings the core up in a fixed
// order. Everything it learns goes into the Store as a Msg.
#pragma once

#include <QKeyEvent>
#include <QKeySequence>
#include <QObject>
#include <functional>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "PortalSettings.h"
#include "SettledCleanup.h"
#include "TrayIcon.h"
#include "Records.h"
#include "Store.h"
#include "BrowserIcons.h"
#include "PanelModel.h"
#include "Theme.h"

class QAction;
class QQuickView;

namespace velmar {

class EffectRunner;


/// One of the window's keys: what it does wherever focus is.
struct WindowShortcut {
    QKeySequence key;
    std::function<void()> run;
};

class AppDelegate : public QObject {
    Q_OBJECT
public:
    explicit AppDelegate(QObject* parent = nullptr);
    ~AppDelegate() override;

    /// The start-up sequence; call once, on the main thread, before the event
    /// loop runs. Nothing else reaches `send` until it returns.
    void start();

    /// The end of every quit, after the event loop has returned: the saves
    /// already queued get up to `fileGrace` seconds (less if `giveUp` comes to
    /// hold), children started for us are ended with their groups, and no
    /// temporary file of ours is left behind. Call once, on the main thread.
    void shutdown(double fileGrace, const std::function<bool()>& giveUp);

    Store& store() { return store_; }
    QQuickView* window() const { return window_.get(); }
    /// The keys that work from anywhere in the window.
    std::vector<WindowShortcut> shortcuts();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    /// Runs the window key `key` names, unless the focused control claims it.
    bool takeShortcut(const QKeyEvent& key);

private:
    void performEffect(const Effect& effect);
    void createWindow(const std::optional<WindowFrame>& saved);
    void applyPlacement(const std::optional<WindowFrame>& saved);
    void trackAppearance();
    void startTimers();
    void reportFrame();
    /// The window's outer corner and inner size, in stored coordinates.
    WindowFrame currentFrame() const;

    Store store_;
    EffectRunner* runner_ = nullptr;  // a child, made on the first effect
    ui::Theme theme_;
    ui::BrowserIcons icons_;
    ui::PanelModel panel_;
    std::unique_ptr<QQuickView> window_;
    std::vector<WindowShortcut> shortcuts_;
    bool reportFrames_ = false;
    Appearance bootAppearance_ = Appearance::dark;
    std::optional<Appearance> forcedAppearance_;
    PortalSettings portal_{QDBusConnection::sessionBus()};
    std::unique_ptr<TrayIcon> tray_;
    std::unique_ptr<SettledCleanup> cleanup_;
    // The frame our own second placement produced: the window system may echo
    // it back as a move after start-up, which is not the user's doing.
    std::optional<WindowFrame> placementEcho_;
};

}  // namespace velmar
