// The one-panel guard. A lock file says who serves a home; the local socket
// beside it carries "activate TOKEN\n" to the server, which answers "ok\n".
// The lock is what decides: QLockFile knows a lock whose process has died is
// stale, so a crash never blocks the next start, and the socket a killed
// process left behind is removed by whoever takes the lock next.
#include "SingleInstance.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLocalServer>
#include <QLocalSocket>
#include <QLockFile>
#include <QThread>
#include <QTimer>
#include <QWindow>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace velmar {

namespace {

// How long a start waits for a server that holds the lock but does not answer
// yet: another start half-way through, or a panel still building its window.
constexpr int claimWaitMs = 5000;
constexpr int answerWaitMs = 5000;
// A request is one short line; anything longer is not ours.
constexpr qint64 maxRequest = 4096;

const QByteArray activateVerb = QByteArrayLiteral("activate");
// A client has this long to say what it wants; a start asks at once.
constexpr int idleClientMs = 3000;
// More clients at once than any burst of starts makes: the rest are refused.
constexpr int maxClients = 4;

// Whether the other end of a connected local socket runs as our user.
bool peerIsUs(qintptr descriptor) {
    ucred credentials{};
    socklen_t size = sizeof credentials;
    return ::getsockopt(int(descriptor), SOL_SOCKET, SO_PEERCRED, &credentials, &size) == 0 &&
           credentials.uid == ::getuid();
}

}  // namespace

bool SingleInstance::isPrivateFolder(const QString& folder) {
    struct stat info {};
    return ::lstat(QFile::encodeName(folder).constData(), &info) == 0 && S_ISDIR(info.st_mode) &&
           info.st_uid == ::getuid() && (info.st_mode & 077) == 0;
}

SingleInstance::SingleInstance(const QString& runtimeFolder, const QString& home, QObject* parent)
    : QObject(parent) {
    const QString stem = QDir(runtimeFolder).filePath(keyFor(home));
    lockPath_ = stem + QStringLiteral(".lock");
    socketPath_ = stem + QStringLiteral(".socket");
    usable_ = !runtimeFolder.isEmpty();
    lock_ = std::make_unique<QLockFile>(lockPath_);
    // Only a dead owner makes a lock stale: a panel may run for weeks.
    lock_->setStaleLockTime(0);
}

SingleInstance::~SingleInstance() = default;

QString SingleInstance::defaultRuntimeFolder() {
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!runtime.isEmpty()) return runtime;
    // The shared temporary folder: anyone may create any name there, so the
    // socket lives in a folder of our own, checked rather than trusted.
    const QString own = QDir(QDir::tempPath()).filePath(QStringLiteral("velmar-%1").arg(::getuid()));
    ::mkdir(QFile::encodeName(own).constData(), 0700);
    return isPrivateFolder(own) ? own : QString();
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
    if (!usable_) return Role::alone;
    const QDeadlineTimer deadline(claimWaitMs);
    do {
        if (askRunning(activationToken)) return Role::secondary;
        if (lock_->tryLock(0)) {
            // Private whatever the umask: it names our process and host.
            QFile::setPermissions(lockPath_, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
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
    // Someone else listening at our name gets neither our token nor our exit.
    if (!peerIsUs(socket.socketDescriptor())) return false;
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
            if (clients_ >= maxClients || !peerIsUs(client->socketDescriptor())) {
                client->abort();
                client->deleteLater();
                continue;
            }
            ++clients_;
            connect(client, &QObject::destroyed, this, [this] { --clients_; });
            QTimer::singleShot(idleClientMs, client, [client] { client->abort(); });
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
