// The one-panel guard. A lock file says who serves a home; the local socket
// beside it carries "activate TOKEN\n" to the server, which answers "ok\n".
// The lock is what decides: QLockFile knows a lock whose process has died is
// stale, so a crash never blocks the next start, and the socket a killed
// process left behind is removed by whoever takes the lock next.
#include "SingleInstance.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLocalServer>
#include <QLocalSocket>
#include <QLockFile>
#include <QThread>
#include <QWindow>
#include <unistd.h>

namespace velmar {

namespace {

// How long a start waits for a server that holds the lock but does not answer
// yet: another start half-way through, or a panel still building its window.
constexpr int claimWaitMs = 5000;
constexpr int answerWaitMs = 5000;
// A request is one short line; anything longer is not ours.
constexpr qint64 maxRequest = 4096;

const QByteArray activateVerb = QByteArrayLiteral("activate");

}  // namespace

SingleInstance::SingleInstance(const QString& runtimeFolder, const QString& home, QObject* parent)
    : QObject(parent) {
    const QString stem = QDir(runtimeFolder).filePath(keyFor(home));
    lockPath_ = stem + QStringLiteral(".lock");
    socketPath_ = stem + QStringLiteral(".socket");
    lock_ = std::make_unique<QLockFile>(lockPath_);
    // Only a dead owner makes a lock stale: a panel may run for weeks.
    lock_->setStaleLockTime(0);
}

SingleInstance::~SingleInstance() = default;

QString SingleInstance::defaultRuntimeFolder() {
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return runtime.isEmpty() ? QDir::tempPath() : runtime;
}

QString SingleInstance::activationTokenFromEnvironment() {
    const QString wayland = qEnvironmentVariable("XDG_ACTIVATION_TOKEN");
    return wayland.isEmpty() ? qEnvironmentVariable("DESKTOP_STARTUP_ID") : wayland;
}

QString SingleInstance::keyFor(const QString& home) {
    // The same folder by another spelling ("a/../b", a trailing slash, a
    // symbolic link) is the same instance; the user id keeps users apart in
    // a shared temporary folder.
    const QFileInfo info(home);
    QString path = info.canonicalFilePath();
    if (path.isEmpty()) path = QDir::cleanPath(info.absoluteFilePath());
    const QByteArray input = QByteArray::number(qulonglong(::getuid())) + '\0' + path.toUtf8();
    const QByteArray hash = QCryptographicHash::hash(input, QCryptographicHash::Sha256).toHex();
    return QStringLiteral("velmar-") + QString::fromLatin1(hash.left(16));
}

SingleInstance::Role SingleInstance::claim(const QString& activationToken) {
    const QDeadlineTimer deadline(claimWaitMs);
    do {
        if (askRunning(activationToken)) return Role::secondary;
        if (lock_->tryLock(0)) {
            if (serve()) return Role::primary;
            lock_->unlock();
            return Role::alone;
        }
        // A folder that is missing, read-only or not a folder at all.
        if (lock_->error() != QLockFile::LockFailedError) return Role::alone;
        QThread::msleep(50);
    } while (!deadline.hasExpired());
    // The lock's owner lives but never answered: better a second panel than none.
    return Role::alone;
}

bool SingleInstance::askRunning(const QString& token) {
    QLocalSocket socket;
    socket.connectToServer(socketPath_);
    if (!socket.waitForConnected(1000)) return false;
    socket.write(activateVerb + ' ' + token.toUtf8() + '\n');
    socket.flush();
    // The server answers from its event loop, which may still be busy
    // building its window; a connection that stays open means it lives.
    const QDeadlineTimer deadline(answerWaitMs);
    while (!socket.canReadLine()) {
        if (deadline.hasExpired()) return true;
        if (!socket.waitForReadyRead(int(deadline.remainingTime())) &&
            socket.state() != QLocalSocket::ConnectedState)
            return false;  // it died before answering: take over
    }
    return socket.readLine().trimmed() == "ok";
}

bool SingleInstance::serve() {
    // Whatever socket is there was left by a process that no longer holds the lock.
    QLocalServer::removeServer(socketPath_);
    server_ = new QLocalServer(this);
    server_->setSocketOptions(QLocalServer::UserAccessOption);
    if (!server_->listen(socketPath_)) {
        delete server_;
        server_ = nullptr;
        return false;
    }
    connect(server_, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket* client = server_->nextPendingConnection()) {
            connect(client, &QLocalSocket::disconnected, client, &QObject::deleteLater);
            connect(client, &QLocalSocket::readyRead, this, [this, client] {
                if (!client->canReadLine()) {
                    if (client->bytesAvailable() > maxRequest) client->abort();
                    return;
                }
                const QList<QByteArray> words = client->readLine(maxRequest).trimmed().split(' ');
                if (words.value(0) != activateVerb) return client->abort();
                client->write("ok\n");
                client->disconnectFromServer();
                emit activationRequested(QString::fromUtf8(words.value(1)));
            });
        }
    });
    return true;
}

void SingleInstance::bringForward(QWindow* window, const QString& token) {
    if (window == nullptr) return;
    // Qt's Wayland plugin activates with the token it finds in the
    // environment; without one a compositor may only mark the panel urgent.
    if (!token.isEmpty() && QGuiApplication::platformName().startsWith(QLatin1String("wayland")))
        qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
    window->setWindowStates(window->windowStates() & ~Qt::WindowMinimized);
    window->show();
    // The offscreen platform has no stacking and says so on stderr.
    if (QGuiApplication::platformName() != QLatin1String("offscreen")) window->raise();
    window->requestActivate();
}

}  // namespace velmar
