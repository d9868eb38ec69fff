// One panel per configuration folder: the first start serves a local socket,
// and a later start with the same folder asks it to come forward and exits.
#pragma once

#include <QObject>
#include <QString>
#include <memory>

class QLocalServer;
class QLockFile;
class QWindow;

namespace velmar {

class SingleInstance : public QObject {
    Q_OBJECT
public:
    enum class Role {
        primary,    ///< this process serves the folder; activations arrive as signals
        secondary,  ///< another process serves it and was asked to come forward
        alone,      ///< the runtime folder is unusable: run without the guard
    };

    /// The lock and the socket live in `runtimeFolder`, named after a hash of
    /// `home`, so another home is another instance. Nothing happens until `claim`.
    SingleInstance(const QString& runtimeFolder, const QString& home, QObject* parent = nullptr);
    ~SingleInstance() override;

    /// Decides this process's role. Waits (a few seconds at most) while
    /// another start holds the lock but does not answer yet, so two starts at
    /// the same moment end with one primary. A lock or socket left by a
    /// killed process is taken over. `activationToken` is handed to the
    /// primary so the window system lets it take the focus.
    Role claim(const QString& activationToken = {});

    /// XDG_RUNTIME_DIR when set, else "velmar-<uid>" in the temporary
    /// folder, made 0700; empty (no guard) when that folder is not ours
    /// alone. An empty folder makes `claim` answer `alone`.
    static QString defaultRuntimeFolder();
    /// A real folder (not a link), owned by us, that no one else may enter.
    static bool isPrivateFolder(const QString& folder);
    /// The desktop's token for this start: XDG_ACTIVATION_TOKEN, else DESKTOP_STARTUP_ID.
    static QString activationTokenFromEnvironment();
    /// The file name stem of the lock and socket for `home`.
    static QString keyFor(const QString& home);
    QString socketPath() const { return socketPath_; }

    /// Un-minimises, raises and activates `window`, with the token of the start
    /// that asked for it when the platform can use one.
    static void bringForward(QWindow* window, const QString& token);

signals:
    /// A later start with the same home asked the panel to come forward.
    void activationRequested(const QString& token);

private:
    /// Whether a live server answered for this home (and was asked to come forward).
    bool askRunning(const QString& token);
    /// Listens on the socket; call with the lock held.
    bool serve();

    QString lockPath_;
    QString socketPath_;
    std::unique_ptr<QLockFile> lock_;
    QLocalServer* server_ = nullptr;
    bool usable_ = true;
    int clients_ = 0;
};

}  // namespace velmar
