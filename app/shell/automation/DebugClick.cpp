// Scheduling and posting of the synthetic clicks, key and drag.
#include "DebugClick.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTimer>
#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "DebugEnv.h"
#include "HitTest.h"

// QtGui's own entry for offering a key to the shortcuts before it is
// delivered, as the window system's keys are (QtTest uses it the same way).
bool qt_sendShortcutOverrideEvent(QObject* o, ulong timestamp, int k, Qt::KeyboardModifiers mods,
                                  const QString& text, bool autorep, ushort count);

namespace velmar::DebugClick {

namespace {

QString integer(double v) { return QString::fromStdString(DebugEnv::logInteger(v)); }

QString point(QPointF p) { return QStringLiteral("(%1, %2)").arg(integer(p.x()), integer(p.y())); }

// The events' time stamp: milliseconds of the monotonic clock, like uptime.
ulong uptime() {
    using namespace std::chrono;
    return ulong(duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

void bringForward(QQuickWindow* window) {
    window->show();
    // The offscreen platform has no stacking and says so on stderr.
    if (QGuiApplication::platformName() != QLatin1String("offscreen")) window->raise();
    window->requestActivate();
}

QMouseEvent* mouseEvent(QQuickWindow* window, QEvent::Type type, QPointF at, Qt::MouseButton button,
                        Qt::MouseButtons buttons) {
    auto* e = new QMouseEvent(type, at, at, window->mapToGlobal(at), button, buttons, Qt::NoModifier);
    e->setTimestamp(uptime());
    return e;
}

void postMouse(QQuickWindow* window, QEvent::Type type, QPointF at, Qt::MouseButtons buttons) {
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QCoreApplication::postEvent(window, mouseEvent(window, type, at, button, buttons));
}

// `fn` on the main thread after `seconds`, unless the window is gone.
template <class Fn>
void after(double seconds, QQuickWindow* window, Fn fn) {
    QPointer<QQuickWindow> weak(window);
    QTimer::singleShot(DebugEnv::timerMilliseconds(seconds), window, [weak, fn] {
        if (weak) fn(weak.data());
    });
}

}  // namespace

void log(const QString& text) {
    std::fprintf(stderr, "velmar: %s\n", text.toUtf8().constData());
    std::fflush(stderr);
}

QString clickLine(QQuickWindow* window, QPointF at) {
    QQuickItem* hit = ui::HitTest::itemAt(window, at);
    QString rect;
    if (hit != nullptr) {
        const QRectF r = hit->mapRectToScene(QRectF(0, 0, hit->width(), hit->height()));
        rect = QStringLiteral("(%1, %2, %3\u00d7%4)")
                   .arg(integer(r.x()), integer(r.y()), integer(r.width()), integer(r.height()));
    }
    return QStringLiteral("click %1 \u2192 %2 %3").arg(point(at), ui::HitTest::typeName(hit), rect);
}

QString dragLine(QQuickWindow* window, QPointF from, QPointF to) {
    const QStringList types = ui::HitTest::typeChain(ui::HitTest::itemAt(window, from), 8);
    return QStringLiteral("drag %1 \u2192 %2 hit %3").arg(point(from), point(to), types.join(QStringLiteral(" < ")));
}

void click(QQuickWindow* window, QPointF at) {
    bringForward(window);
    log(clickLine(window, at));
    // The release waits in the queue behind whatever the press sets going.
    postMouse(window, QEvent::MouseButtonRelease, at, Qt::NoButton);
    QMouseEvent* press = mouseEvent(window, QEvent::MouseButtonPress, at, Qt::LeftButton, Qt::LeftButton);
    QCoreApplication::sendEvent(window, press);
    delete press;
}

int qtKey(int code) {
    switch (code) {
        case 36: return Qt::Key_Return;
        case 76: return Qt::Key_Enter;
        case 48: return Qt::Key_Tab;
        case 49: return Qt::Key_Space;
        case 51: return Qt::Key_Backspace;
        case 117: return Qt::Key_Delete;
        case 53: return Qt::Key_Escape;
        case 110: return Qt::Key_Menu;
        case 115: return Qt::Key_Home;
        case 119: return Qt::Key_End;
        case 116: return Qt::Key_PageUp;
        case 121: return Qt::Key_PageDown;
        case 123: return Qt::Key_Left;
        case 124: return Qt::Key_Right;
        case 125: return Qt::Key_Down;
        case 126: return Qt::Key_Up;
        default: return Qt::Key_unknown;
    }
}

void key(QQuickWindow* window, int code) {
    bringForward(window);
    log(QStringLiteral("key %1").arg(code));
    const int k = qtKey(code);
    const QString text = code == 53 ? QStringLiteral("\x1b") : QString();
    QPointer<QQuickWindow> weak(window);
    QMetaObject::invokeMethod(
        window,
        [weak, k, code, text] {
            if (!weak) return;
            const ulong now = uptime();
            if (qt_sendShortcutOverrideEvent(weak, now, k, Qt::NoModifier, text, false, 1)) return;
            QKeyEvent press(QEvent::KeyPress, k, Qt::NoModifier, quint32(code), quint32(code), 0, text);
            press.setTimestamp(now);
            QCoreApplication::sendEvent(weak, &press);
        },
        Qt::QueuedConnection);
    auto* release = new QKeyEvent(QEvent::KeyRelease, k, Qt::NoModifier, quint32(code), quint32(code), 0, text);
    release->setTimestamp(uptime());
    QCoreApplication::postEvent(window, release);
}

void scheduleIfRequested(QQuickWindow* window) {
    const auto clicks = DebugEnv::clickPoints(std::getenv("VELMAR_DEBUG_CLICK"));
    const auto code = DebugEnv::keyCode(std::getenv("VELMAR_DEBUG_KEY"));
    const auto drag = DebugEnv::dragPoints(std::getenv("VELMAR_DEBUG_DRAG"));
    if (clicks.empty() && !code && !drag) return;
    const double start =
        DebugEnv::startDelay(std::getenv("VELMAR_DEBUG_CLICK_DELAY"), std::getenv("VELMAR_DEBUG_SEND_DELAY"));

    if (drag) {
        const QPointF from((*drag)[0], (*drag)[1]);
        const QPointF to((*drag)[2], (*drag)[3]);
        const double moves = start + DebugEnv::seconds(std::getenv("VELMAR_DEBUG_DRAG_PRESS")).value_or(0);
        const double hold = DebugEnv::seconds(std::getenv("VELMAR_DEBUG_DRAG_HOLD")).value_or(0);
        after(start, window, [from, to](QQuickWindow* w) {
            bringForward(w);
            log(dragLine(w, from, to));
            postMouse(w, QEvent::MouseButtonPress, from, Qt::LeftButton);
        });
        for (int i = 1; i <= 12; ++i) {
            const QPointF at = from + (to - from) * (i / 12.0);
            after(moves + 0.05 + i / 12.0 * 0.6, window,
                  [at](QQuickWindow* w) { postMouse(w, QEvent::MouseMove, at, Qt::LeftButton); });
        }
        after(moves + 0.7 + hold, window,
              [to](QQuickWindow* w) { postMouse(w, QEvent::MouseButtonRelease, to, Qt::NoButton); });
    }
    if (code) after(start, window, [code = *code](QQuickWindow* w) { key(w, code); });
    for (std::size_t i = 0; i < clicks.size(); ++i) {
        const QPointF at(clicks[i].first, clicks[i].second);
        after(start + 0.8 * double(i), window, [at](QQuickWindow* w) { click(w, at); });
    }
}

}  // namespace velmar::DebugClick
