// The program's entry: the headless driver when "--headless" is among the
// arguments after the program's own path, else the windowed application.
#include <QGuiApplication>
#include <cstring>

#include "AppDelegate.h"
#include "HeadlessEntry.h"

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i)
        if (std::strcmp(argv[i], "--headless") == 0) return velmar::HeadlessEntry::run();

    QGuiApplication app(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("Velmar"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Velmar"));
    // Closing the one window ends the process; nothing is saved at that moment.
    QGuiApplication::setQuitOnLastWindowClosed(true);

    velmar::AppDelegate delegate;
    delegate.start();
    return app.exec();
}
