// Start-up order, keys, window placement, appearance tracking and timers.
#include "AppDelegate.h"

#include "DesktopIcons.h"

#include <QGuiApplication>
#include <QKeySequence>
#include <QMoveEvent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QScreen>
#include <QKeyEvent>
#include <QTimer>
#include <QVariantMap>
#include <algorithm>
#include <chrono>
#include <cstdlib>

#include "Appearance.h"
#include "DebugClick.h"
#include "DebugSend.h"
#include "EffectRunner.h"
#include "Env.h"
#include "FileStore.h"
#include "Formats.h"
#include "SingleInstance.h"
#include "Snapshot.h"
#include "PanelView.h"
#include "Subprocess.h"
#include "WindowFit.h"
#include "WindowPlacement.h"

namespace velmar {

namespace {

// A stored file read synchronously at start-up; one that is missing,
// unreadable or not UTF-8 counts as no file at all.
std::optional<std::string> readConfig(ConfigFile file) {
    return FileStore::readText(configPath(file, Env::home()));
}

// Stored coordinates have their origin at the top left of the primary
// display; Qt's virtual desktop may put that display elsewhere.
QPoint primaryOrigin() {
    const QScreen* primary = QGuiApplication::primaryScreen();
    return primary ? primary->geometry().topLeft() : QPoint();
}

std::vector<WindowPlacement::Rect> displays() {
    const QPoint origin = primaryOrigin();
    std::vector<WindowPlacement::Rect> out;
    // screens() lists the primary display first.
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect g = screen->geometry().translated(-origin);
        out.push_back({double(g.x()), double(g.y()), double(g.width()), double(g.height())});
    }
    return out;
}

// Every display together, in stored coordinates.
QRect desktop() {
    QRect all;
    for (const WindowPlacement::Rect& d : displays())
        all |= QRect(int(d.x), int(d.y), int(d.width), int(d.height));
    return all;
}

QSize raisedToMinimum(double width, double height) { return WindowFit::size(width, height); }

// The panel's header strip lies inside the content, under the system title
// bar; nothing of ours needs clearing at its leading edge.
constexpr double headerHeight = 38;
constexpr double headerLeadingInset = 12;

}  // namespace

AppDelegate::AppDelegate(QObject* parent)
    : QObject(parent),
      theme_(ui::parseMaterial(std::getenv("VELMAR_MATERIAL"))),
      icons_(browserIcon),
      panel_(store_.model(), [this](const Msg& msg) { store_.send(msg); }, icons_) {
    connect(&store_, &Store::changed, this, [this] { panel_.show(store_.model()); });
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::start() {
    // Effects go to the runner, which is made on first use.
    store_.setPerform([this](const Effect& effect) { performEffect(effect); });

    // The saved frame, read synchronously: the window needs it before it
    // can exist, and the core remembers it so it is not written back at once.
    std::optional<WindowFrame> saved;
    if (auto text = readConfig(ConfigFile::window))
        saved = Formats::parseWindow(*text);
    store_.send(msg::WindowRestored{saved});

    // The appearance to use until the core has read the settings itself.
    if (auto text = readConfig(ConfigFile::settings))
        bootAppearance_ = Formats::parseSettings(*text).appearance;

    // The extras switch is handed in only when its file exists, so without
    // the file the core sees exactly the messages it always did.
    if (auto text = readConfig(ConfigFile::extras))
        store_.send(msg::FileRead{ConfigFile::extras, *text});

    // From here on the forced value, the boot value or the model decides.
    forcedAppearance_ = PanelAppearance::parseForced(std::getenv("VELMAR_APPEARANCE"));
    trackAppearance();
    connect(&store_, &Store::changed, this, &AppDelegate::trackAppearance);
    connect(&portal_, &PortalSettings::changed, this, &AppDelegate::trackAppearance);

    // The window, with the panel and its keys, placed where it was left.
    createWindow(saved);
    window_->show();
    window_->requestActivate();

    // Two seconds without a change: what the rows left behind is collected.
    cleanup_ = std::make_unique<SettledCleanup>(*window_->engine(), std::chrono::seconds(2));
    connect(&store_, &Store::changed, cleanup_.get(), &SettledCleanup::changed);

    // The second placement waits until the window has been laid out; only
    // after it do moves count as the user's.
    QTimer::singleShot(0, this, [this, saved] {
        applyPlacement(saved);
        reportFrames_ = true;
        placementEcho_ = currentFrame();
    });

    // The tray icon follows the model, and the settings say whether a tray is there.
    tray_ = std::make_unique<TrayIcon>(
        QDBusConnection::sessionBus(),
        TrayIcon::Actions{[this] { SingleInstance::bringForward(window_.get(), QString()); },
                          [this] { store_.send(msg::Refresh{}); },
                          [] { QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection); }});
    connect(tray_.get(), &TrayIcon::trayFoundChanged, &panel_, &ui::PanelModel::setTrayFound);
    connect(&store_, &Store::changed, this, [this] { tray_->follow(store_.model()); });
    tray_->follow(store_.model());

    // Only now the core starts its work, the ticks begin and the automation, if
    // asked for, gets the window it acts on.
    store_.send(msg::Boot{});
    startTimers();
    Snapshot::scheduleIfRequested(window_.get());
    DebugClick::scheduleIfRequested(window_.get());
    DebugSend::scheduleIfRequested(store_, window_.get());
}

void AppDelegate::shutdown(double fileGrace, const std::function<bool()>& giveUp) {
    // Nothing new starts from here: the timers and the window stop feeding
    // the store.
    store_.setPerform([](const Effect&) {});
    if (runner_ != nullptr) {
        const auto deadline = std::chrono::steady_clock::now() +
                              std::chrono::duration_cast<std::chrono::steady_clock::duration>(
                                  std::chrono::duration<double>(fileGrace));
        runner_->finishFiles(deadline, giveUp);
    }
    Subprocess::endAll(giveUp && giveUp() ? 0.0 : 0.5);
    // A save cut short leaves its file as it was; only its temporary goes.
    FileStore::removeTemporaries();
}

void AppDelegate::performEffect(const Effect& effect) {
    if (runner_ == nullptr) {
        runner_ = new EffectRunner(this, [this](Msg msg) { store_.send(msg); }, this);
        connect(runner_, &EffectRunner::unreadableKept, this, [this](const QString& name) {
            panel_.showNotice(QStringLiteral("Could not read %1; kept it as %1.unreadable").arg(name));
        });
    }
    runner_->perform(effect);
}

// ---- Window ----

void AppDelegate::createWindow(const std::optional<WindowFrame>& saved) {
    window_ = std::make_unique<QQuickView>();
    window_->setTitle(panel_.windowTitle());
    window_->setColor(theme_.backdropBase());
    // The minimum size keeps every resize, the user's too, at 200 by 320 or more.
    window_->setMinimumSize(raisedToMinimum(0, 0));
    const QSize size = saved ? raisedToMinimum(saved->width, saved->height)
                             : raisedToMinimum(WindowFrame::defaultWidth, WindowFrame::defaultHeight);
    window_->resize(size);

    for (const QString& error : ui::loadPanel(*window_, panel_, theme_, icons_,
                                              {headerHeight, headerLeadingInset}))
        std::fprintf(stderr, "velmar: %s\n", error.toUtf8().constData());

    connect(&panel_, &ui::PanelModel::windowTitleChanged, this,
            [this] { window_->setTitle(panel_.windowTitle()); });
    connect(&theme_, &ui::Theme::changed, this,
            [this] { window_->setColor(theme_.backdropBase()); });
    // A Qt Quick window has no menu bar to carry keys, so the window's own
    // filter takes them, whatever has focus (see `takeShortcut`).
    shortcuts_ = shortcuts();
    window_->installEventFilter(this);
    applyPlacement(saved);
}

void AppDelegate::applyPlacement(const std::optional<WindowFrame>& saved) {
    // On Wayland a window cannot place itself: the size is kept and the
    // compositor picks the place.
    const bool canPlace = QGuiApplication::platformName() != QLatin1String("wayland");
    if (saved) {
        window_->resize(raisedToMinimum(saved->width, saved->height));
        if (!canPlace) return;
        double titleBar = window_->frameGeometry().height() - window_->geometry().height();
        if (!(titleBar > 0)) titleBar = 28;
        // Placed with the size the window really has, so a size held to the
        // displays is centred as such.
        WindowFrame fitted = *saved;
        fitted.width = std::min(saved->width, double(window_->width()));
        fitted.height = std::min(saved->height, double(window_->height()));
        const WindowFrame placed = WindowPlacement::restore(fitted, displays(), titleBar);
        window_->setFramePosition(
            WindowFit::position(placed.x, placed.y, window_->frameGeometry().size(), desktop()) +
            primaryOrigin());
        return;
    }
    if (reportFrames_ || !canPlace) return;
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (screen == nullptr) return;
    const QRect area = screen->availableGeometry();
    const QSize outer = window_->frameGeometry().size();
    window_->setFramePosition(QPoint(area.x() + (area.width() - outer.width()) / 2,
                                     area.y() + (area.height() - outer.height()) / 2));
}

WindowFrame AppDelegate::currentFrame() const {
    const QPoint corner = window_->frameGeometry().topLeft() - primaryOrigin();
    const QSize inner = window_->geometry().size();
    return {double(corner.x()), double(corner.y()), double(inner.width()), double(inner.height())};
}

void AppDelegate::reportFrame() {
    if (!reportFrames_) return;
    const WindowFrame frame = currentFrame();
    if (placementEcho_) {
        if (frame == *placementEcho_) return;
        placementEcho_.reset();
    }
    store_.send(msg::WindowMoved{frame});
}

bool AppDelegate::takeShortcut(const QKeyEvent& key) {
    const QKeySequence pressed(QKeyCombination(key.modifiers() & ~Qt::KeypadModifier, Qt::Key(key.key())));
    const auto entry = std::find_if(shortcuts_.begin(), shortcuts_.end(),
                                    [&](const WindowShortcut& s) { return s.key == pressed; });
    if (entry == shortcuts_.end()) return false;
    // A focused control that claims the key for itself (a text field's own
    // editing keys) keeps it, as it would from a shortcut.
    QKeyEvent claim(QEvent::ShortcutOverride, key.key(), key.modifiers(), key.text());
    claim.ignore();
    if (QObject* focus = window_->focusObject()) QCoreApplication::sendEvent(focus, &claim);
    if (claim.isAccepted()) return false;
    entry->run();
    return true;
}

bool AppDelegate::eventFilter(QObject* watched, QEvent* event) {
    if (watched == window_.get()) {
        switch (event->type()) {
            // QShortcut would be the usual way, but under a QApplication (which
            // the tray's menu needs) its matcher only ever finds widget
            // windows, so a shortcut of this Qt Quick window never fires.
            case QEvent::KeyPress:
                if (takeShortcut(*static_cast<QKeyEvent*>(event))) return true;
                break;
            case QEvent::Move:
            case QEvent::Resize: reportFrame(); break;
            case QEvent::ApplicationPaletteChange:
            case QEvent::ThemeChange: trackAppearance(); break;
            default: break;
        }
    }
    return QObject::eventFilter(watched, event);
}

// ---- Appearance ----

void AppDelegate::trackAppearance() {
    const Appearance wanted =
        PanelAppearance::effective(forcedAppearance_, store_.model(), bootAppearance_);
    theme_.setDark(
        PanelAppearance::isDark(wanted, PanelAppearance::desktopPrefersDark(portal_.scheme())));
    theme_.setIncreasedContrast(portal_.highContrast());
}

// ---- Keys ----

std::vector<WindowShortcut> AppDelegate::shortcuts() {
    // The edit keys (Ctrl+C, Ctrl+V, ...) belong to whichever text field has
    // focus, which handles them itself; taking them here would steal them.
    return {
        {QKeySequence(QStringLiteral("Ctrl+R")), [this] { store_.send(msg::Refresh{}); }},
        {QKeySequence(QStringLiteral("Ctrl+,")), [this] { store_.send(msg::Navigate{Screen::manage}); }},
        {QKeySequence(QStringLiteral("Ctrl+H")), [this] { window_->showMinimized(); }},
        {QKeySequence(QStringLiteral("Ctrl+M")), [this] { window_->showMinimized(); }},
        {QKeySequence(QStringLiteral("Ctrl+W")), [this] { window_->close(); }},
        {QKeySequence(QStringLiteral("Ctrl+Q")), [] { QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection); }},
    };
}

// ---- Timers ----

void AppDelegate::startTimers() {
    auto every = [this](double seconds, Msg msg) {
        auto* timer = new QTimer(this);
        timer->setInterval(int(seconds * 1000));
        // Ticks must keep their period whatever the window is doing; whether a
        // tick does anything is the core's decision.
        timer->setTimerType(Qt::CoarseTimer);
        connect(timer, &QTimer::timeout, this, [this, msg] { store_.send(msg); });
        timer->start();
    };
    every(Constants::autoRefreshInterval, msg::AutoTick{});
    every(Constants::browserPollInterval, msg::DetectTick{});
    every(Constants::onboardingInterval, msg::OnboardingTick{});
}

}  // namespace velmar
