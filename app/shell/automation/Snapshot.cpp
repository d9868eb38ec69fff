// Capture of the windows to PNG files and the quit that follows.
#include "Snapshot.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QImageWriter>
#include <QPointer>
#include <QQuickWindow>
#include <QTimer>
#include <cstdio>
#include <cstdlib>

#include "DebugEnv.h"

namespace velmar::Snapshot {

namespace {

void fail(const QString& text) {
    std::fprintf(stderr, "velmar: snapshot failed: %s\n", text.toUtf8().constData());
    std::fflush(stderr);
}

void captureAll(QQuickWindow* window, const QString& path) {
    if (auto error = capture(window, path)) return fail(*error);
    int n = 0;
    for (QWindow* other : QGuiApplication::topLevelWindows()) {
        auto* quick = qobject_cast<QQuickWindow*>(other);
        if (quick == nullptr || quick == window || !quick->isVisible()) continue;
        if (auto error = capture(quick, numberedPath(path, ++n))) return fail(*error);
    }
}

}  // namespace

QString numberedPath(const QString& path, int n) {
    const QFileInfo info(path);
    const QString suffix = info.suffix();
    const QString stem = suffix.isEmpty() ? path : path.left(path.size() - suffix.size() - 1);
    return QStringLiteral("%1-%2.png").arg(stem).arg(n);
}

std::optional<QString> capture(QQuickWindow* window, const QString& path) {
    if (window == nullptr || window->contentItem() == nullptr)
        return QStringLiteral("window has no content view");
    const QImage image = window->grabWindow();
    if (image.isNull()) return QStringLiteral("could not allocate bitmap");
    QImageWriter writer(path, "png");
    if (!writer.write(image)) return writer.errorString();
    return std::nullopt;
}

void scheduleIfRequested(QQuickWindow* window) {
    const char* target = std::getenv("VELMAR_SNAPSHOT");
    if (target == nullptr || *target == '\0') return;
    const QString path = QString::fromUtf8(target);
    const double delay = DebugEnv::seconds(std::getenv("VELMAR_SNAPSHOT_DELAY")).value_or(9.0);

    QPointer<QQuickWindow> weak(window);
    QTimer::singleShot(DebugEnv::timerMilliseconds(delay - 0.5), qApp, [weak] {
        if (!weak) return;
        weak->show();
        // The offscreen platform has no stacking and says so on stderr.
        if (QGuiApplication::platformName() != QLatin1String("offscreen")) weak->raise();
        weak->requestActivate();
    });
    QTimer::singleShot(DebugEnv::timerMilliseconds(delay), qApp, [weak, path] {
        if (weak) captureAll(weak, path);
        QCoreApplication::quit();
    });
}

}  // namespace velmar::Snapshot
