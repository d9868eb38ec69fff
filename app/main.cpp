// The program's entry: the headless driver when "--headless" is among the
// arguments after the program's own path, else the windowed application.
#include <QApplication>
#include <QIcon>
#include <QQuickView>
#include <cstring>

#include "AppDelegate.h"
#include "Env.h"
#include "HeadlessEntry.h"
#include "QuitSignals.h"
#include "SingleInstance.h"

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i)
        if (std::strcmp(argv[i], "--headless") == 0) return velmar::HeadlessEntry::run();

    // Read before the platform plugin starts: it takes the X11 startup id out
    // of the environment.
    const QString activationToken = velmar::SingleInstance::activationTokenFromEnvironment();

    // A QApplication, not a QGuiApplication: the tray icon's menu is a widget.
    QApplication app(argc, argv);
    // The session ending, Ctrl+C and a closed terminal quit like "Quit Velmar".
    velmar::QuitSignals quitSignals;
    QObject::connect(&quitSignals, &velmar::QuitSignals::received, &app,
                     &QCoreApplication::quit, Qt::QueuedConnection);
    QGuiApplication::setApplicationName(QStringLiteral("Velmar"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Velmar"));
    // The desktop entry's id and, on X11, the window class "Velmar" that its
    // StartupWMClass names: docks group the window under the launcher.
    QGuiApplication::setDesktopFileName(QStringLiteral("velmar"));
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/velmar/velmar.svg")));
    // Closing the one window ends the process; nothing is saved at that moment.
    QGuiApplication::setQuitOnLastWindowClosed(true);

    // One panel per configuration folder: a second start brings the first
    // one forward and leaves.
    velmar::SingleInstance instance(velmar::SingleInstance::defaultRuntimeFolder(),
                                    QString::fromStdString(velmar::Env::home()));
    if (instance.claim(activationToken) == velmar::SingleInstance::Role::secondary) return 0;

    velmar::AppDelegate delegate;
    QObject::connect(&instance, &velmar::SingleInstance::activationRequested, &delegate,
                     [&delegate](const QString& token) {
                         velmar::SingleInstance::bringForward(delegate.window(), token);
                     });
    delegate.start();
    const int status = app.exec();
    // Saves get two seconds to reach the disk; a second signal cuts that short.
    delegate.shutdown(2.0, [] { return velmar::QuitSignals::count() >= 2; });
    return status;
}
