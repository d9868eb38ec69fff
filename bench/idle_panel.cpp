// What the panel costs while nothing happens, and what it holds in memory:
// the real core and screens with `repos` watched repositories of 40 pull
// requests each, every one fetched in turn while the panel is shown (as at a
// start), then left alone. Counts the frames rendered and the CPU time of the
// whole process (every thread) over the idle period, and reads the resident
// memory after it.
//   build/bench/idle_panel [repos] [idle seconds]    (20, 15)
//   build/bench/idle_panel --baseline [idle seconds]  a bare Qt Quick window
// The platform is QT_QPA_PLATFORM's, offscreen when unset.
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>
#include <QFile>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>
#include <cstdio>
#include <string>
#include <unistd.h>

#include "PanelBench.h"

using namespace velmar;

namespace {

std::string base64(const std::string& text) { return QByteArray::fromStdString(text).toBase64().toStdString(); }

std::string slug(int i) { return "acme/repo-" + std::to_string(100 + i); }

// A gh answer of 40 pull requests for `slug`, each with a bot comment.
std::string answer(const std::string& slug) {
    std::string out = slug + "\n";
    for (int n = 1; n <= 40; ++n) {
        const std::string body = "[Web](https://web-pr-" + std::to_string(n) + ".up.railway.app)";
        out += std::to_string(n) + "\tChange " + std::to_string(n) + " with a title long enough to be cut\tsomeone\t" +
               "feature/" + std::to_string(n) + "\t" + (n % 5 == 0 ? "true" : "false") + "\thttps://github.com/" +
               slug + "/pull/" + std::to_string(n) + "\t" + base64(body) + "\n";
    }
    return out;
}

// User plus system time of every thread of this process, in seconds.
double cpuSeconds() {
    QFile file("/proc/self/stat");
    if (!file.open(QIODevice::ReadOnly)) return 0;
    const QByteArray stat = file.readAll();
    // Fields after the command's closing parenthesis; utime and stime are the
    // 14th and 15th of the line.
    const QList<QByteArray> fields = stat.mid(stat.lastIndexOf(')') + 2).split(' ');
    return double(fields.value(11).toLongLong() + fields.value(12).toLongLong()) / double(sysconf(_SC_CLK_TCK));
}

QByteArray status(const char* key) {
    QFile file("/proc/self/status");
    if (!file.open(QIODevice::ReadOnly)) return {};
    for (const QByteArray& line : file.readAll().split('\n'))
        if (line.startsWith(key)) return line.mid(qsizetype(strlen(key)) + 1).simplified();
    return {};
}

void idle(QQuickWindow& window, int seconds) {
    int frames = 0;
    QObject::connect(&window, &QQuickWindow::frameSwapped, [&] { ++frames; });
    const double cpu0 = cpuSeconds();
    QElapsedTimer clock;
    clock.start();
    // An event loop that sleeps until something happens (QTest::qWait would
    // wake every few milliseconds and be measured itself).
    QEventLoop loop;
    QTimer::singleShot(seconds * 1000, &loop, &QEventLoop::quit);
    loop.exec();
    const double wall = double(clock.elapsed()) / 1000;
    const double cpu = cpuSeconds() - cpu0;
    std::printf("platform %s  idle %.1f s  frames %d  cpu %.3f s = %.2f%% of a core\n",
                qPrintable(QGuiApplication::platformName()), wall, frames, cpu, 100 * cpu / wall);
    std::printf("VmRSS %s  RssAnon %s  RssFile %s\n", status("VmRSS:").constData(), status("RssAnon:").constData(),
                status("RssFile:").constData());
}

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const bool baseline = argc > 1 && std::string(argv[1]) == "--baseline";
    const int repos = argc > 1 && !baseline ? std::atoi(argv[1]) : 20;
    const int seconds = argc > 2 ? std::atoi(argv[2]) : 15;

    if (baseline) {
        QQuickView view;
        QQmlComponent component(view.engine());
        component.setData("import QtQuick\nRectangle { color: \"#202020\"; Text { text: \"Hello\" } }", {});
        view.setContent({}, &component, component.create());
        view.resize(420, 700);
        view.show();
        QTest::qWaitForWindowExposed(&view);
        QTest::qWait(500);
        std::printf("a bare Qt Quick window\n");
        idle(view, seconds);
        return 0;
    }

    std::string file;
    for (int i = 0; i < repos; ++i) file += slug(i) + "\t\n";
    bench::PanelBench bench(file);
    bench.show(200);
    // Each answer as a refresh brings it, a moment apart, while the panel is shown.
    for (int i = 0; i < repos; ++i) {
        bench.store.send(msg::PrsFetched{answer(slug(i)), true});
        QTest::qWait(50);
    }
    QTest::qWait(1000);
    std::printf("%d repositories of 40 pull requests\n", repos);
    idle(bench.view, seconds);
    return 0;
}
