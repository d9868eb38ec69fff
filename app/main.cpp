// The program's entry: the headless driver when "--headless" is among the
// arguments after the program's own path, else the windowed application.
#include <QGuiApplication>
#include <QIcon>
#include <QQuickView>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "AppDelegate.h"
#include "Env.h"
#include "Headless.h"
#include "SingleInstance.h"

namespace {

// Reads standard input to its end as raw bytes: no newline translation, and
// NUL or invalid UTF-8 reach the decoder as they are.
std::string readAll(std::FILE* in) {
    std::string data;
    char buffer[1 << 16];
    std::size_t n;
    while ((n = std::fread(buffer, 1, sizeof buffer, in)) > 0) data.append(buffer, n);
    return data;
}

// Lines end at "\n"; a last line without one still counts, and a trailing
// "\n" does not start an empty line. "\r" is left to the driver's trimming.
std::vector<std::string> splitLines(std::string_view data) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < data.size()) {
        std::size_t end = data.find('\n', start);
        if (end == std::string_view::npos) end = data.size();
        lines.emplace_back(data.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

int runHeadless() {
    // Nothing is printed before the whole input has been read.
    auto lines = splitLines(readAll(stdin));
    // Written line by line through one large buffer: the transcript can be tens
    // of megabytes, and a second copy of it would only cost page faults.
    static char buffer[1 << 20];
    std::setvbuf(stdout, buffer, _IOFBF, sizeof buffer);
    for (const auto& line : velmar::Headless::run(lines)) {
        std::fwrite(line.data(), 1, line.size(), stdout);
        std::fputc('\n', stdout);
    }
    std::fflush(stdout);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i)
        if (std::strcmp(argv[i], "--headless") == 0) return runHeadless();

    // Read before the platform plugin starts: it takes the X11 startup id out
    // of the environment.
    const QString activationToken = velmar::SingleInstance::activationTokenFromEnvironment();

    QGuiApplication app(argc, argv);
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
    return app.exec();
}
